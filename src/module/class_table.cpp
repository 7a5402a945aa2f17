#include "module/class_table.h"

#include <array>

#include "framework/ansi_text_win32.h"
#include "framework/clock_win32.h"
#include "framework/instance_files_win32.h"
#include "framework/machine_name_win32.h"
#include "framework/registry_settings_win32.h"
#include "framework/sockets_library_win32.h"
#include "framework/sound_recorder_win32.h"
#include "local/launch_program.h"
#include "local/launch_program_dialog.h"
#include "local/process_starter_win32.h"
#include "local/sound.h"
#include "local/sound_dialog.h"
#include "local/sound_player_win32.h"
#include "mail/mail_environment_win32.h"
#include "mail/mail_socket_win32.h"
#include "mail/name_resolver_win32.h"
#include "mail/smtp_mail.h"
#include "mail/smtp_mail_dialog.h"
#include "mail/smtp_mail_layout.h"
#include "modem/beeper.h"
#include "modem/beeper_dialog.h"
#include "modem/beeper_layout.h"
#include "modem/pager.h"
#include "modem/pager_dialog.h"
#include "modem/pager_layout.h"
#include "modem/serial_device_win32.h"
#include "popup/network_neighbourhood_win32.h"
#include "popup/network_system_win32.h"
#include "popup/win_popup.h"
#include "popup/win_popup_dialog.h"
#include "popup/win_popup_layout.h"
#include "popup/worker_threads_win32.h"
#include "voice/memory_blocks.h"
#include "voice/message_pump_win32.h"
#include "voice/riff_files_win32.h"
#include "voice/telephony_win32.h"
#include "voice/voice.h"
#include "voice/voice_dialog.h"
#include "voice/wave_output_win32.h"

namespace brantel {
namespace {

// The system behind the notifiers. Stateless, so all objects share them.
constinit DiskInstanceFiles instance_files;
constinit RegistrySettings settings;
constinit SystemClock system_clock;
constinit WinSock sockets_library;
constinit SystemMachineName machine_name;
constinit SystemMailEnvironment mail_environment;
constinit SystemMailNetwork mail_network;
constinit SystemNameResolver name_resolver(sockets_library);
constinit SystemProcessStarter process_starter;
constinit SystemRecorder recorder_system;
constinit SystemSoundPlayer sound_player;
constinit SystemSerialPorts serial_ports;
constinit SystemNetwork network_system;
constinit SystemNeighbourhood neighbourhood;
constinit SystemWorkerThreads worker_threads;
constinit SystemTelephony telephony;
constinit SystemRiffFiles riff_files;
constinit SystemWaveOutput wave_output;
constinit ThreadMessagePump message_pump;
constinit SystemMemoryBlocks memory_blocks;

// What mail sessions leave behind for each other, whichever object runs them.
constinit SmtpState smtp_state;

// Counts what all objects send by UCP.
constinit UcpTransactionCounter ucp_counter = 0;

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

std::unique_ptr<Notifier> MakeLaunchProgram() {
  return std::make_unique<LaunchProgram>(instance_files, process_starter);
}

std::unique_ptr<InstanceDialog> MakeBeeperDialog(DialogView& view, InstanceDialogCall call) {
  return std::make_unique<BeeperDialog>(view, instance_files, std::move(call), settings);
}

std::unique_ptr<InstanceDialog> MakePagerDialog(DialogView& view, InstanceDialogCall call) {
  return std::make_unique<PagerDialog>(view, instance_files, std::move(call), settings);
}

std::unique_ptr<InstanceDialog> MakeLaunchProgramDialog(DialogView& view, InstanceDialogCall call) {
  return std::make_unique<LaunchProgramDialog>(view, instance_files, std::move(call),
                                               process_starter);
}

std::unique_ptr<Notifier> MakeSound() {
  return std::make_unique<Sound>(instance_files, sound_player);
}

std::unique_ptr<InstanceDialog> MakeSoundDialog(DialogView& view, InstanceDialogCall call) {
  return std::make_unique<SoundDialog>(view, instance_files, std::move(call), recorder_system);
}

std::unique_ptr<Notifier> MakeBeeper() {
  return std::make_unique<Beeper>(instance_files, settings, serial_ports, system_clock);
}

std::unique_ptr<Notifier> MakePager() {
  return std::make_unique<Pager>(instance_files, settings, serial_ports, system_clock, ucp_counter);
}

std::unique_ptr<Notifier> MakeSMTPMail() {
  return std::make_unique<SmtpMail>(
      instance_files, settings, sockets_library,
      SmtpSurroundings{mail_network, mail_environment, machine_name, smtp_state});
}

std::unique_ptr<InstanceDialog> MakeSMTPMailDialog(DialogView& view, InstanceDialogCall call) {
  return std::make_unique<SmtpMailDialog>(view, instance_files, std::move(call), mail_network,
                                          name_resolver);
}

std::u16string AnsiToUtf16(std::string_view text) {
  const std::wstring wide = FromAnsi(text);
  return {wide.begin(), wide.end()};
}

std::unique_ptr<Notifier> MakeWinPopup() {
  return std::make_unique<WinPopup>(instance_files, sockets_library, network_system,
                                    PopupSurroundings{machine_name, AnsiToUtf16});
}

std::unique_ptr<InstanceDialog> MakeWinPopupDialog(DialogView& view, InstanceDialogCall call) {
  return std::make_unique<WinPopupDialog>(
      view, instance_files, std::move(call),
      DestinationSources{network_system, neighbourhood, worker_threads});
}

std::unique_ptr<Notifier> MakeVoice() {
  return std::make_unique<Voice>(instance_files,
                                 VoiceSurroundings{telephony, riff_files, wave_output, message_pump,
                                                   system_clock, memory_blocks},
                                 voice_state.value);
}

std::unique_ptr<InstanceDialog> MakeVoiceDialog(DialogView& view, InstanceDialogCall call) {
  return std::make_unique<VoiceDialog>(view, instance_files, std::move(call), recorder_system);
}

#define NOTIFIER_CLASS(name, clsid, script_id, icon_id, stem, web_form, programmable) \
  NotifierClass{#name,    ParseGuid(clsid), script_id,         icon_id,               \
                web_form, Make##name,       Make##name##Dialog},
constexpr std::array kClasses = {
#include "module/notifier_classes.def"
};
#undef NOTIFIER_CLASS

}  // namespace

std::span<const NotifierClass> NotifierClasses() {
  return kClasses;
}

std::unique_ptr<WebForms> MakeWebForms(const NotifierClass& notifier_class) {
  if (notifier_class.web_form == nullptr) return nullptr;
  return std::make_unique<WebForms>(instance_files, *notifier_class.web_form, IsLeadByte);
}

}  // namespace brantel
