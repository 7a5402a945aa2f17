#include "instance/instance_name.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace brantel {
namespace {

constexpr std::size_t kLongestFileName = 255;
constexpr std::u16string_view kForbidden = u"\\/:*?\"<>|";
constexpr std::array<std::u16string_view, 7> kDevices = {u"CON",    u"PRN",     u"AUX",   u"NUL",
                                                         u"CONIN$", u"CONOUT$", u"CLOCK$"};
constexpr std::array<std::u16string_view, 2> kNumberedDevices = {u"COM", u"LPT"};
// Superscripts count, too.
constexpr std::u16string_view kDeviceNumbers = u"123456789\u00B9\u00B2\u00B3";

char16_t ToUpper(char16_t c) {
  return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - u'a' + u'A') : c;
}

bool EqualIgnoringCase(std::u16string_view one, std::u16string_view other) {
  return std::ranges::equal(one, other, {}, ToUpper, ToUpper);
}

bool IsForbidden(char16_t c) {
  return c < 0x20 || kForbidden.find(c) != std::u16string_view::npos;
}

// A device keeps its name with any extension, and with blanks before that.
std::u16string_view Stem(std::u16string_view name) {
  const std::u16string_view stem = name.substr(0, name.find(u'.'));
  return stem.substr(0, stem.find_last_not_of(u' ') + 1);
}

}  // namespace

bool IsDeviceName(std::u16string_view name) {
  const std::u16string_view stem = Stem(name);
  const auto is_one_of = [](const auto& devices, std::u16string_view candidate) {
    return std::ranges::any_of(devices,
                               [&](auto device) { return EqualIgnoringCase(candidate, device); });
  };
  if (is_one_of(kDevices, stem)) return true;
  return stem.size() == 4 && kDeviceNumbers.find(stem[3]) != std::u16string_view::npos &&
         is_one_of(kNumberedDevices, stem.substr(0, 3));
}

bool IsValidInstanceName(std::u16string_view name) {
  return !name.empty() && name.size() <= kLongestFileName && name.back() != u'.' &&
         name.back() != u' ' && !IsDeviceName(name) && std::ranges::none_of(name, IsForbidden);
}

}  // namespace brantel
