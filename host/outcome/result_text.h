#pragma once

#include <cstdint>
#include <string>

namespace brantel::host {

// A COM status code as "0x80004005 (E_FAIL)", or its number alone when it has no name here.
std::string ResultText(std::int32_t result);

}  // namespace brantel::host
