#pragma once

#include "host/alert/log_secrets.h"
#include "host/preview/preview.h"
#include "host/report/report_writer.h"

namespace brantel::host {

// Puts stars into the place of what is secret, in the bytes too, and marks the parts of which that
// is true. `as_stored` hides it in the code page, `as_text` in UTF-8.
void HideSecrets(Preview& preview, const LogSecrets& as_stored, const LogSecrets& as_text);

// Tells of each part in its order, and then of the time. For people control characters are shown by
// their numbers and a line ends behind each line feed; programs get the bytes in hexadecimal.
void WritePreview(const ReportWriter& report, const Preview& preview);

// Why an alert that fails although all far ends are willing does not go out, or what else its log
// says, for people.
std::string LogWords(const Preview& preview);

}  // namespace brantel::host
