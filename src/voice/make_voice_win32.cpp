// Makes the class of its parts and of the system's things.
#include <memory>
#include <utility>

#include "dialog/sound_recorder_win32.h"
#include "instance/instance_files_win32.h"
#include "system/clock_win32.h"
#include "system/windows/code_page_win32.h"
#include "telephone/memory_blocks.h"
#include "telephone/message_pump_win32.h"
#include "telephone/riff_files_win32.h"
#include "telephone/telephony_win32.h"
#include "telephone/wave_output_win32.h"
#include "voice/voice.h"
#include "voice/voice_dialog.h"

namespace brantel {
namespace {

constinit SystemTelephony telephony;
constinit SystemRiffFiles riff_files;
constinit SystemWaveOutput wave_output;
constinit ThreadMessagePump message_pump;
constinit SystemMemoryBlocks memory_blocks;

// A value whose destructor does not run when the process ends.
template <typename Value>
union NeverDestroyed {
  constexpr NeverDestroyed() : value() {}
  NeverDestroyed(const NeverDestroyed&) = delete;
  NeverDestroyed& operator=(const NeverDestroyed&) = delete;
  ~NeverDestroyed() {}  // NOLINT(modernize-use-equals-default): a default one would be deleted

  Value value;
};

// What all calls share. It may hold a host that never says goodbye, and that is then no longer
// there when the process ends; before the module is unloaded, all have let go of theirs.
constinit NeverDestroyed<VoiceState> voice_state;

}  // namespace

std::unique_ptr<Notifier> MakeVoice() {
  return std::make_unique<Voice>(disk_instance_files,
                                 VoiceSystem{telephony, riff_files, wave_output, message_pump,
                                             system_clock, memory_blocks, system_code_page},
                                 voice_state.value);
}

std::unique_ptr<InstanceDialog> MakeVoiceDialog(DialogView& view, InstanceDialogCall call) {
  return std::make_unique<VoiceDialog>(view, disk_instance_files, std::move(call), system_recorder);
}

}  // namespace brantel
