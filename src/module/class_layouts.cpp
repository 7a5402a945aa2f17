#include "module/class_layouts.h"

#include <algorithm>
#include <array>

#include "framework/instance_codec.h"
#include "local/launch_program_layout.h"
#include "local/sound_layout.h"
#include "mail/smtp_mail_layout.h"
#include "modem/beeper_layout.h"
#include "modem/pager_layout.h"
#include "popup/win_popup_layout.h"
#include "voice/voice_layout.h"

namespace brantel {
namespace {

constexpr std::array<const InstanceLayout*, 7> kLayouts = {
    &kSmtpMailLayout, &kSoundLayout, &kWinPopupLayout, &kLaunchProgramLayout,
    &kBeeperLayout,   &kPagerLayout, &kVoiceLayout};

template <typename Predicate>
const InstanceLayout* FindLayout(Predicate matches) {
  const auto found = std::ranges::find_if(kLayouts, matches);
  return found == kLayouts.end() ? nullptr : *found;
}

}  // namespace

std::span<const InstanceLayout* const> ClassLayouts() {
  return kLayouts;
}

const InstanceLayout* FindClassLayout(std::string_view class_name) {
  return FindLayout([&](const InstanceLayout* layout) { return layout->class_name == class_name; });
}

const InstanceLayout* FindLayoutOfFile(std::string_view file) {
  return FindLayout([&](const InstanceLayout* layout) { return HasMagic(*layout, file); });
}

}  // namespace brantel
