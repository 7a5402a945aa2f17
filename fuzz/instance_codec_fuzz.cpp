// Instance files of every class: whatever a file holds, reading it is harmless, and what was read
// and can be written again is read back the same.
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "framework/instance_codec.h"
#include "local/launch_program_layout.h"
#include "local/sound_layout.h"
#include "mail/smtp_mail_layout.h"
#include "modem/beeper_layout.h"
#include "modem/pager_layout.h"
#include "popup/win_popup_layout.h"
#include "voice/voice_layout.h"

namespace {

const std::array kLayouts = {&brantel::kSmtpMailLayout, &brantel::kSoundLayout,
                             &brantel::kWinPopupLayout, &brantel::kLaunchProgramLayout,
                             &brantel::kBeeperLayout,   &brantel::kPagerLayout,
                             &brantel::kVoiceLayout};

}  // namespace

// The first byte chooses the class, whose magic then stands before the rest.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const brantel::InstanceLayout& layout = *kLayouts[data[0] % kLayouts.size()];
  const auto magic = brantel::GuidBytes(layout.magic);
  std::string file(magic.begin(), magic.end());
  file.append(data + 1, data + size);

  const auto instance = brantel::DecodeInstance(layout, file);
  if (!instance) return 0;
  const auto again = brantel::DecodeInstance(layout, brantel::EncodeInstance(layout, *instance));
  // A text that filled its 1023 bytes without a NUL is the one thing that cannot be written again.
  if (again && !(*again == *instance)) std::abort();
  return 0;
}
