#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

#include "description/instance_layout.h"
#include "description/standard_buttons.h"
#include "text/guid.h"
#include "text/string_table.h"

namespace brantel {

// What a class's web forms have of their own; the rows stand with the fields.
struct WebFormDescription {
  unsigned add_title_id = 0;
  unsigned edit_title_id = 0;
  std::string_view add_name_size = "40";  // of the input for the new instance's name
};

// A button that is drawn as a picture.
struct BitmapButton {
  int control = 0;
  int bitmap_id = 0;
};

// When OK asks whether the name is already used.
enum class NameTakenCheck { kBeforeFields, kAfterFields };

// The dialog of a class's instances, beside its fields.
struct DialogDescription {
  int template_id = 0;
  unsigned add_title_id = 0;
  unsigned edit_title_id = 0;
  int name_control = 0;
  // Where the focus goes when the name will not do.
  int name_error_focus = 0;
  unsigned name_missing_text_id = text_id::kNameMissing;
  NameTakenCheck name_taken_check = NameTakenCheck::kBeforeFields;
  // Whether the dialog has its title when the instance to edit cannot be loaded.
  bool titled_after_failed_load = true;
  // Whether a new instance begins as the one that is named "Default".
  bool prefilled = true;
  int help_button = STANDARD_HELP;
  // None: the help file opens at its contents.
  std::optional<unsigned> help_context{};
  std::span<const BitmapButton> bitmap_buttons{};
};

// One setting of a class and the text that stands for it when it is missing or empty.
struct SettingRow {
  std::size_t index = 0;  // the setting's enumerator
  std::string_view name;
  std::string_view default_text;
};

// Ties a class's rows to the enumerators of its settings: rows that are out of order or too few do
// not compile.
template <std::size_t kCount>
consteval std::array<SettingRow, kCount> SettingsInOrder(const SettingRow (&rows)[kCount]) {
  std::array<SettingRow, kCount> table{};
  for (std::size_t i = 0; i < kCount; ++i) {
    if (rows[i].index != i || rows[i].name.empty())
      throw "a setting is missing or out of its order";
    table[i] = rows[i];
  }
  return table;
}

// The settings of a class's device, in the order in which they are read and written.
struct SettingsDescription {
  unsigned key_text_id = 0;  // of the class's key below HKEY_LOCAL_MACHINE
  std::span<const SettingRow> rows{};
};

// What a notifier class is: how hosts know it, what its instances hold, and how operators see that.
// Everything else that lists classes, fields or settings follows from these.
struct ClassDescription {
  Guid clsid{};
  unsigned registry_script_id = 0;
  unsigned icon_id = 0;
  InstanceLayout instances{};
  DialogDescription dialog{};
  std::optional<WebFormDescription> web_form{};  // none: the class offers no INotifierWebConfig
  // The number field that says which settings profile an instance uses, if the class has profiles.
  // No row of a form carries it.
  std::optional<std::size_t> profile_field{};
  SettingsDescription settings{};
};

}  // namespace brantel
