#include "framework/instance_name.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace brantel {
namespace {

constexpr std::size_t kLongestFileName = 255;  // in characters
constexpr std::string_view kForbidden = "\\/:*?\"<>|";
constexpr std::array<std::string_view, 6> kDevices = {"CON", "PRN",    "AUX",
                                                      "NUL", "CONIN$", "CONOUT$"};
constexpr std::array<std::string_view, 2> kNumberedDevices = {"COM", "LPT"};

char ToUpper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool EqualIgnoringCase(std::string_view one, std::string_view other) {
  return std::ranges::equal(one, other, {}, ToUpper, ToUpper);
}

bool IsForbidden(char c) {
  return static_cast<unsigned char>(c) < 0x20 || kForbidden.find(c) != std::string_view::npos;
}

// A device keeps its name with any extension, and with blanks before that.
std::string_view Stem(std::string_view name) {
  std::string_view stem = name.substr(0, name.find('.'));
  return stem.substr(0, stem.find_last_not_of(' ') + 1);
}

bool IsDevice(std::string_view name) {
  const std::string_view stem = Stem(name);
  if (std::ranges::any_of(kDevices, [&](auto device) { return EqualIgnoringCase(stem, device); })) {
    return true;
  }
  return stem.size() == 4 && stem[3] >= '1' && stem[3] <= '9' &&
         std::ranges::any_of(kNumberedDevices, [&](auto device) {
           return EqualIgnoringCase(stem.substr(0, 3), device);
         });
}

}  // namespace

bool IsValidInstanceName(std::string_view name, bool (*is_lead_byte)(char)) {
  if (name.empty() || name.back() == '.' || name.back() == ' ' || IsDevice(name)) return false;
  std::size_t characters = 0;
  for (std::size_t i = 0; i < name.size(); ++i, ++characters) {
    if (is_lead_byte(name[i])) {
      ++i;
    } else if (IsForbidden(name[i])) {
      return false;
    }
  }
  return characters <= kLongestFileName;
}

}  // namespace brantel
