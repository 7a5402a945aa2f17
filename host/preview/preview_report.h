#pragma once

#include <string>
#include <vector>

#include "host/preview/preview.h"
#include "host/report/report_writer.h"

namespace brantel::host {

// Puts stars into the place of these passwords, which are as instances store them: in the bytes and
// all that is said of them, and in the log. The parts of which bytes are hidden are marked.
void HideSecrets(Preview& preview, const std::vector<std::string>& stored_passwords,
                 const TextConversions& texts);

// Tells of each part in its order, and then of the time. For people control characters are shown by
// their numbers and a line ends behind each line feed; programs get the bytes in hexadecimal.
void WritePreview(const ReportWriter& report, const Preview& preview);

// Why an alert that fails although all far ends are willing does not go out, or what else its log
// says, for people.
std::string LogWords(const Preview& preview);

}  // namespace brantel::host
