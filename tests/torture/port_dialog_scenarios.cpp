// Dialogs in which an operator changes the port settings of a modem class. Whatever fails, each
// setting is the old or the new one, and the dialog stays unless all are the new ones.
#include <algorithm>
#include <map>
#include <string>

#include "beeper/beeper_dialog.h"
#include "pager/pager_dialog.h"
#include "port/modem_instance_dialog.h"
#include "port/port_setting_buttons.h"
#include "system/exception_guard.h"
#include "tests/torture/scenario.h"
#include "tests/torture/strained_dialog.h"
#include "text/string_table.h"

namespace brantel {
namespace {

constexpr std::int32_t kProfile = 7;

using Texts = std::map<std::string, std::string>;

class PortDialogScenario final : public Scenario {
 public:
  PortDialogScenario(const char* name, const ModemDialogDescription& dialog)
      : Scenario(name), dialog_(dialog) {}

  void Begin(Machine& machine) const override {
    machine.BeginAlert();
    FakeSettingsStore::Values& values = machine.settings.registry.keys[Path()];
    for (const SettingRow& row : dialog_.notifier_class.settings.rows)
      values[std::string(row.name)] = {SettingType::kText, "old " + std::string(row.name)};
  }

  Result Run(Machine& machine) const override {
    const auto screen = MakeScreen();
    StrainedDialogView& view = *screen;
    return GuardExceptions([&]() -> Result {
      PortSettingsDialog dialog(dialog_.port_settings, dialog_.notifier_class.settings, view,
                                machine.settings, kProfile);
      dialog.Open();
      Enter(view.screen);
      dialog.Press(STANDARD_OK);
      return std::ranges::count(view.screen.events, "close") == 1 ? kOk : kFail;
    });
  }

  [[nodiscard]] std::string Judge(const Machine& machine, Result result,
                                  const Machine& whole) const override {
    Machine untouched;
    Begin(untouched);
    const Texts before = Stored(untouched);
    const Texts after = Stored(whole);
    const Texts found = Stored(machine);
    if (!Failed(result) && found != after) return "success, though not all settings are saved";
    for (const auto& [name, text] : found) {
      if (text != before.at(name) && text != after.at(name))
        return name + " is neither the old nor the new one";
    }
    return found.size() == before.size() ? "" : "a setting is lost";
  }

 private:
  [[nodiscard]] std::string Path() const {
    return ProfileKeyPath(LoadText(dialog_.notifier_class.settings.key_text_id), kProfile);
  }

  [[nodiscard]] Texts Stored(const Machine& machine) const {
    Texts texts;
    for (const auto& [name, setting] : machine.settings.registry.keys.at(Path()))
      texts[name] = setting.data;
    return texts;
  }

  void Enter(FakeDialogView& screen) const {
    const MemoryOfOthers others;
    for (const SettingEdit& edit : dialog_.port_settings.edits)
      screen.texts[edit.control] = "the new text of the control " + std::to_string(edit.control);
    CheckSetting(screen, kComPortButtons, "COM3");
    CheckSetting(screen, kBaudButtons, "1200");
    for (const SettingCheckBox& box : dialog_.port_settings.check_boxes)
      screen.checks[box.control] = true;
  }

  const ModemDialogDescription& dialog_;
};

}  // namespace

void AddPortDialogs(std::vector<std::unique_ptr<Scenario>>& scenarios) {
  scenarios.push_back(std::make_unique<PortDialogScenario>("port_dialog_Beeper", kBeeperDialog));
  scenarios.push_back(std::make_unique<PortDialogScenario>("port_dialog_Pager", kPagerDialog));
}

}  // namespace brantel
