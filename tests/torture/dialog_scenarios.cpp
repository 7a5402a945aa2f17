// Dialogs in which an operator adds and edits instances. Where memory runs out while one handles
// something, it ends as if it had been cancelled.
#include <array>
#include <optional>

#include "beeper/beeper_description.h"
#include "beeper/beeper_dialog.h"
#include "launch_program/launch_program_description.h"
#include "launch_program/launch_program_dialog.h"
#include "pager/pager_description.h"
#include "pager/pager_dialog.h"
#include "smtp_mail/smtp_mail_description.h"
#include "smtp_mail/smtp_mail_dialog.h"
#include "sound/sound_description.h"
#include "sound/sound_dialog.h"
#include "system/exception_guard.h"
#include "tests/torture/scenario.h"
#include "tests/torture/stored_instances.h"
#include "tests/torture/strained_dialog.h"
#include "voice/voice_description.h"
#include "voice/voice_dialog.h"
#include "win_popup/win_popup_description.h"
#include "win_popup/win_popup_dialog.h"

namespace brantel {
namespace {

struct DialogClass {
  const ClassDescription& description;
  std::unique_ptr<InstanceDialog> (*make)(Machine& machine, DialogView& view,
                                          InstanceDialogCall call);
};

template <typename DialogType>
std::unique_ptr<InstanceDialog> MakeWithRecorder(Machine& machine, DialogView& view,
                                                 InstanceDialogCall call) {
  return std::make_unique<DialogType>(view, machine.files, std::move(call), machine.recorder);
}

const std::array kDialogClasses = {
    DialogClass{kBeeper,
                [](Machine& machine, DialogView& view,
                   InstanceDialogCall call) -> std::unique_ptr<InstanceDialog> {
                  return std::make_unique<BeeperDialog>(view, machine.files, std::move(call),
                                                        machine.settings);
                }},
    DialogClass{kPager,
                [](Machine& machine, DialogView& view,
                   InstanceDialogCall call) -> std::unique_ptr<InstanceDialog> {
                  return std::make_unique<ModemInstanceDialog>(kPagerDialog, view, machine.files,
                                                               std::move(call), machine.settings);
                }},
    DialogClass{kSMTPMail,
                [](Machine& machine, DialogView& view,
                   InstanceDialogCall call) -> std::unique_ptr<InstanceDialog> {
                  return std::make_unique<SmtpMailDialog>(view, machine.files, std::move(call),
                                                          machine.mail_network,
                                                          machine.name_resolver);
                }},
    DialogClass{kWinPopup,
                [](Machine& machine, DialogView& view,
                   InstanceDialogCall call) -> std::unique_ptr<InstanceDialog> {
                  return std::make_unique<WinPopupDialog>(
                      view, machine.files, std::move(call),
                      DestinationSources{machine.network_system, machine.neighbourhood,
                                         machine.workers});
                }},
    DialogClass{kLaunchProgram,
                [](Machine& machine, DialogView& view,
                   InstanceDialogCall call) -> std::unique_ptr<InstanceDialog> {
                  return std::make_unique<LaunchProgramDialog>(view, machine.files, std::move(call),
                                                               machine.starter);
                }},
    DialogClass{kSound, MakeWithRecorder<SoundDialog>},
    DialogClass{kVoice, MakeWithRecorder<VoiceDialog>},
};

class DialogScenario final : public Scenario {
 public:
  DialogScenario(const char* what, const DialogClass& dialog_class, bool edits,
                 const char* new_name)
      : Scenario(what + std::string(dialog_class.description.instances.class_name)),
        class_(dialog_class),
        edits_(edits),
        new_name_(new_name) {}

  void Begin(Machine& machine) const override {
    machine.BeginAlert();
    StoreInstances(machine, class_.description);
  }

  Result Run(Machine& machine) const override {
    const auto screen = MakeScreen();
    StrainedDialogView& view = *screen;
    return GuardExceptions([&]() -> Result {
      const std::string name(kInstanceName);
      InstanceDialogCall call{.directory = std::string(kDirectory), .host = machine.host.get()};
      if (edits_) call.edited = {std::u16string(name.begin(), name.end()), name};
      const auto dialog = class_.make(machine, view, std::move(call));
      dialog->Open();
      machine.workers.Work();
      view.screen.tasks->Do();
      Enter(view.screen);
      dialog->Press(STANDARD_OK);
      return dialog->saved_name() ? kOk : kFail;
    });
  }

  [[nodiscard]] std::string Judge(const Machine& machine, Result result,
                                  const Machine& whole) const override {
    return Saved{machine, whole, class_.description, IsShown}.Judge(result, false);
  }

 private:
  static bool IsShown(const InstanceField& field) {
    return field.control.kind == ControlKind::kEdit;
  }

  void Enter(FakeDialogView& screen) const {
    const MemoryOfOthers others;
    screen.texts[class_.description.dialog.name_control] = new_name_;
    for (const InstanceField& field : class_.description.instances.fields) {
      if (!IsShown(field)) continue;
      screen.texts[field.control.id] = field.kind == FieldKind::kInteger
                                           ? std::to_string(kEnteredNumber)
                                           : ValueOf(field, "new");
    }
  }

  const DialogClass& class_;
  const bool edits_;
  const std::string new_name_;
};

}  // namespace

void AddDialogs(std::vector<std::unique_ptr<Scenario>>& scenarios) {
  for (const DialogClass& dialog_class : kDialogClasses) {
    const auto add = [&](const char* what, bool edits, const char* new_name) {
      scenarios.push_back(std::make_unique<DialogScenario>(what, dialog_class, edits, new_name));
    };
    add("add_dialog_", false, "an instance with a new name");
    add("edit_dialog_", true, kInstanceName.data());
    add("rename_dialog_", true, "an instance with a new name");
  }
}

}  // namespace brantel
