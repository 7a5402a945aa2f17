#include "module/class_table.h"

#include <array>

#include "framework/ansi_text_win32.h"
#include "framework/instance_files_win32.h"
#include "local/launch_program.h"
#include "local/process_starter_win32.h"
#include "mail/smtp_mail_layout.h"
#include "modem/beeper_layout.h"
#include "modem/pager_layout.h"
#include "popup/win_popup_layout.h"

namespace brantel {
namespace {

// The system behind the notifiers. Stateless, so all objects share them.
constinit DiskInstanceFiles instance_files;
constinit SystemProcessStarter process_starter;

// A class whose delivery is still to be built.
class UnbuiltNotifier final : public Notifier {
 public:
  Result Send(const InstanceArgument&, NotifierHost*) override { return kFail; }
};

std::unique_ptr<Notifier> MakeUnbuilt() {
  return std::make_unique<UnbuiltNotifier>();
}

std::unique_ptr<Notifier> MakeLaunchProgram() {
  return std::make_unique<LaunchProgram>(instance_files, process_starter);
}

constexpr auto MakeSMTPMail = MakeUnbuilt;
constexpr auto MakeSound = MakeUnbuilt;
constexpr auto MakeWinPopup = MakeUnbuilt;
constexpr auto MakeBeeper = MakeUnbuilt;
constexpr auto MakePager = MakeUnbuilt;
constexpr auto MakeVoice = MakeUnbuilt;

#define NOTIFIER_CLASS(name, clsid, script_id, icon_id, stem, web_form, programmable) \
  NotifierClass{#name, ParseGuid(clsid), script_id, icon_id, web_form, Make##name},
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
