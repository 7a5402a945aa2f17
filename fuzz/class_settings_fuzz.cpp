// Settings of every class that has some, of whatever type and content the registry holds: each
// reads as a text that can be used, numbers at its start are found as the C library finds them, and
// what was written is read back the same. A dialog of settings in which nothing is changed writes
// what it has read.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "beeper/beeper_dialog.h"
#include "description/settings_profile.h"
#include "description/standard_buttons.h"
#include "fuzz/fuzz_input.h"
#include "instance/class_settings.h"
#include "module/class_descriptions.h"
#include "pager/pager_dialog.h"
#include "port/com_port_number.h"
#include "port/port_settings_dialog.h"
#include "tests/unit/dialog/fake_dialog_view.h"
#include "tests/unit/system/fake_settings_store.h"
#include "text/digits.h"
#include "text/format_text.h"
#include "text/leading_number.h"

namespace brantel {
namespace {

// The values that a key of the registry may have for the rows: none, a text, or a number of any
// size.
FakeSettingsStore::Values MakeValues(FuzzInput& input, const SettingsDescription& settings) {
  FakeSettingsStore::Values values;
  for (const SettingRow& row : settings.rows) {
    const std::uint8_t kind = input.Byte() % 3;
    if (kind == 0) continue;
    values[std::string(row.name)] = {kind == 1 ? SettingType::kText : SettingType::kNumber,
                                     std::string(input.Field().substr(0, kSettingCapacity))};
  }
  return values;
}

// Finds the class's values under every path.
class Store final : public SettingsStore {
 public:
  explicit Store(FakeSettingsStore::Values values) : values_(std::move(values)) {}

  std::unique_ptr<SettingsKey> Open(const std::string& path, SettingsAccess access) override {
    path_ = path;
    store_.keys.try_emplace(path, values_);
    return store_.Open(path, access);
  }

  [[nodiscard]] const std::string& path() const { return path_; }

 private:
  FakeSettingsStore::Values values_;
  std::string path_;
  FakeSettingsStore store_;
};

void CheckText(const std::string& text, const SettingRow& row,
               const FakeSettingsStore::Values& values) {
  Require(!text.empty() && text.size() <= kSettingCapacity);
  Require(text.find('\0') == std::string::npos);
  const auto value = values.find(std::string(row.name));
  if (value == values.end()) {
    Require(text == row.default_text);
  } else if (value->second.type == SettingType::kNumber) {
    const long number = std::strtol(text.c_str(), nullptr, 10);
    Require(number >= -128 && number <= 127 && std::to_string(number) == text);
  } else {
    Require(text == row.default_text || value->second.data.starts_with(text));
  }
}

void CheckNumbers(const std::string& text) {
  using Limits = std::numeric_limits<std::int32_t>;
  const long long number = std::strtoll(text.c_str(), nullptr, 10);
  Require(LeadingNumber(text) == std::clamp<long long>(number, Limits::min(), Limits::max()));

  const std::size_t prefix = text.find("COM");
  const auto port = ComPortNumber(text);
  Require(port.has_value() == (prefix != std::string::npos));
  if (!port) return;
  const char* const digits = text.c_str() + prefix + 3;
  const unsigned long long expected = IsDigit(*digits) ? std::strtoull(digits, nullptr, 10) : 0;
  Require(*port == std::min<unsigned long long>(expected, 0xFFFFFFFF));
}

const ModemDialogDescription* DialogOf(const ClassDescription& description) {
  for (const ModemDialogDescription* const dialog : {&kBeeperDialog, &kPagerDialog}) {
    if (&dialog->notifier_class == &description) return dialog;
  }
  return nullptr;
}

// What the dialog writes of its settings as they were read.
std::vector<std::string> Shown(const PortSettingsDescription& dialog,
                               std::vector<std::string> texts) {
  for (const SettingEdit& edit : dialog.edits) {
    texts.at(edit.setting).resize(std::min(texts.at(edit.setting).size(), dialog.longest_text));
  }
  for (const SettingCheckBox& box : dialog.check_boxes) {
    texts.at(box.setting) = texts.at(box.setting) == box.checked ? box.checked : box.clear;
  }
  return texts;
}

void CheckDialog(const ModemDialogDescription& description, SettingsStore& store,
                 std::int32_t profile, const std::vector<std::string>& texts) {
  const SettingsDescription& settings = description.notifier_class.settings;
  FakeDialogView view;
  PortSettingsDialog dialog(description.port_settings, settings, view, store, profile);
  dialog.Open();
  dialog.Press(STANDARD_OK);
  Require(view.events.size() == 1 && view.events.back() == "close");
  Require(ReadSettings(store, settings, profile) == Shown(description.port_settings, texts));
}

void CheckPath(const std::string& path, std::int32_t profile) {
  const std::string end = "\\" + std::string(profile < 10 ? "0" : "") + std::to_string(profile);
  Require(path.ends_with(end) == (profile != 0));
}

}  // namespace
}  // namespace brantel

// A byte for the class and one for the profile, and for each setting its type and its content.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace brantel;
  const std::string bytes(data, data + size);
  FuzzInput input(bytes);
  const auto classes = ClassDescriptions();
  const ClassDescription& description = *classes[input.Byte() % classes.size()];
  const SettingsDescription& settings = description.settings;
  if (settings.rows.empty()) return 0;
  const std::int32_t profile = input.Byte() % (kLastSettingsProfile + 1);
  const FakeSettingsStore::Values values = MakeValues(input, settings);

  Store store(values);
  const std::vector<std::string> texts = ReadSettings(store, settings, profile);
  CheckPath(store.path(), profile);
  for (const SettingRow& row : settings.rows) {
    const std::string& text = texts.at(row.index);
    CheckText(text, row, values);
    CheckNumbers(text);
    Require(FormatText(text, {texts.front(), texts.back()}).size() < kFormatCapacity);
  }
  Require(WriteSettings(store, settings, profile, texts));
  Require(ReadSettings(store, settings, profile) == texts);
  const ModemDialogDescription* const dialog = DialogOf(description);
  Require(dialog != nullptr);
  CheckDialog(*dialog, store, profile, texts);
  return 0;
}
