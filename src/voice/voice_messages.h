#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "text/code_page.h"

namespace brantel {

// Which field of a Voice instance names the sound for what a trigger word announces.
std::size_t EventField(std::uint32_t trigger_word);

// Whether the sound for the event comes before that for the device, as it deliberately does for one
// kind of event alone.
bool EventComesFirst(std::uint32_t trigger_word);

// The sound for the device: the file that the host's text names. Where the host left its variable
// as it was, or says nothing or "[auto]", the file named after the device, with ".wav" for the
// extension of its name; a common one where that does not exist. Names that would lead to another
// computer or to a device of this one are no file's and not asked for.
std::string DeviceWave(std::string_view host_text, std::string_view device_name,
                       const CodePage& code_page,
                       const std::function<bool(const std::string&)>& exists);

}  // namespace brantel
