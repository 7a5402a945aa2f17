#include "voice/voice_messages.h"

#include <algorithm>
#include <array>

#include "instance/instance_name.h"
#include "notifier/alert_trigger.h"
#include "voice/voice_description.h"

namespace brantel {
namespace {

struct EventChoice {
  std::uint32_t bits;  // all of them have to be set
  std::size_t field;
};

// The first that fits is chosen.
constexpr std::array<EventChoice, 4> kEventChoices = {{
    {trigger_bit::kTrap, voice_field::kItemDown},
    {trigger_bit::kItemUp | trigger_bit::kServiceUp, voice_field::kServiceUp},
    {trigger_bit::kItemUp, voice_field::kItemUp},
    {trigger_bit::kServiceDown, voice_field::kServiceDown},
}};

constexpr std::array<std::string_view, 4> kNoFile = {"", "[auto]", "%p", "%C"};

constexpr std::string_view kWaveExtension = ".wav";
constexpr std::string_view kCommonWave = "ahost.wav";
constexpr std::size_t kLongestDeviceName = 255;

std::string WaveNamedAfter(std::string_view device_name) {
  const std::string_view name = device_name.substr(0, kLongestDeviceName);
  return std::string(name.substr(0, name.rfind('.'))).append(kWaveExtension);
}

bool IsSeparator(char16_t c) {
  return c == u'\\' || c == u'/';
}

// To another computer, or round the rules for paths ("\\?\", "\\.\", "\??\").
bool LeadsElsewhere(std::u16string_view path) {
  return path.size() > 1 && IsSeparator(path[0]) &&
         (IsSeparator(path[1]) || path.substr(1).starts_with(u"??"));
}

// Without the drive, and without what follows a colon.
std::u16string_view LastComponent(std::u16string_view path) {
  if (path.size() > 1 && path[1] == u':') path.remove_prefix(2);
  path.remove_prefix(static_cast<std::size_t>(
      std::find_if(path.rbegin(), path.rend(), IsSeparator).base() - path.begin()));
  return path.substr(0, path.find(u':'));
}

// Only asking whether such a file exists already sends the user's credentials to the other
// computer, or speaks to the device.
bool NamesFile(std::u16string_view path) {
  return !LeadsElsewhere(path) && !IsDeviceName(LastComponent(path));
}

}  // namespace

std::size_t EventField(std::uint32_t trigger_word) {
  const auto* const choice = std::ranges::find_if(kEventChoices, [&](const EventChoice& candidate) {
    return (trigger_word & candidate.bits) == candidate.bits;
  });
  return choice == kEventChoices.end() ? std::size_t{voice_field::kItemDown} : choice->field;
}

bool EventComesFirst(std::uint32_t trigger_word) {
  return (trigger_word & trigger_bit::kServiceDown) != 0;
}

std::string DeviceWave(std::string_view host_text, std::string_view device_name,
                       const CodePage& code_page,
                       const std::function<bool(const std::string&)>& exists) {
  if (std::ranges::find(kNoFile, host_text) == kNoFile.end()) return std::string(host_text);
  std::string derived = WaveNamedAfter(device_name);
  return NamesFile(code_page.ToUtf16(derived)) && exists(derived) ? derived
                                                                  : std::string(kCommonWave);
}

}  // namespace brantel
