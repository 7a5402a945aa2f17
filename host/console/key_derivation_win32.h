#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace brantel::host {

// KeyDerivation by the system's own cryptography, which systems before Windows 7 lack.
std::optional<std::string> DeriveKey(std::string_view password, std::string_view salt,
                                     std::uint32_t iterations);

}  // namespace brantel::host
