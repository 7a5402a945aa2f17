#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <string_view>

#include "framework/guid.h"

namespace brantel {

enum class FieldKind {
  kText,     // 32-bit length counting the NUL, then the ANSI text with its NUL
  kInteger,  // a bare 32-bit little-endian number without a length
};

enum class FieldPresence {
  kMandatory,
  kOptional,  // older versions wrote files that end before it
};

enum class FormInput {
  kNone,        // the web forms do not carry the field; saving a form keeps what is stored
  kUnshown,     // no row either, but a posted value is taken, and a missing one counts as empty
  kSingleLine,  // a text input
  kMultiLine,   // a text area: line breaks belong to the value
  kChoice,      // a radio button for each value that the field may have
};

// Texts with consecutive numbers in the string table.
struct TextRange {
  unsigned first_id = 0;
  unsigned count = 0;
};

// The text of a form's row around the value. Given as one literal with "%s" in the value's place; a
// literal without it does not compile.
class RowText {
 public:
  constexpr RowText() = default;
  consteval RowText(const char* row) : RowText(row, std::string_view(row).find("%s")) {}

  [[nodiscard]] constexpr std::string_view before() const { return before_; }
  [[nodiscard]] constexpr std::string_view after() const { return after_; }

 private:
  constexpr RowText(std::string_view row, std::size_t place)
      : before_(row.substr(0, place)), after_(row.substr(place + 2)) {}

  std::string_view before_;
  std::string_view after_;
};

// How the web forms show a field: the row's exact text on each page, around the value or the radio
// buttons of a choice. Browsers of the time were not particular about letter case, but what reads
// these pages besides browsers is.
struct FormRow {
  FormInput input = FormInput::kNone;
  std::string_view name{};  // of the posted field
  RowText add_row{};        // value inserted as stored
  RowText edit_row{};       // value escaped
  // The values of a choice, which are their labels too. The first stands for every other value.
  TextRange choices{};
};

// A row that both pages show in the same words.
constexpr FormRow SameRowOnBothPages(FormInput input, std::string_view name, RowText row,
                                     TextRange choices = {}) {
  return {input, name, row, row, choices};
}

enum class ControlKind {
  kNone,      // the dialog does not show the field, or the class's dialog handles it itself
  kEdit,      // a text, or a signed number for a number field
  kCheckBox,  // a number field: 1 when checked, else 0
  kList,      // a number field: a position in a list; kept while none is selected
  // A text field: a group of radio buttons, one for each choice that the form offers. The first
  // stands for every other text, and is the choice of a new instance; the text is kept while none
  // is checked.
  kChoice,
};

// How the dialog shows a field.
struct DialogControl {
  ControlKind kind = ControlKind::kNone;
  int id = 0;
  unsigned missing_text_id = 0;  // the message when the field is empty; 0: it may be empty
  // How many bytes can be entered in an edit, if that is less than can be stored.
  std::size_t longest = std::numeric_limits<std::size_t>::max();
  std::span<const int> choice_buttons{};  // of kChoice, which has no other number
};

// One field of a class's instances: how it is stored, posted and edited. A layout lists the fields
// in file order, which is also the order of the form's rows and of the dialog's checks.
struct InstanceField {
  std::string_view name{};
  FieldKind kind = FieldKind::kText;
  FieldPresence presence = FieldPresence::kMandatory;
  // A stored number outside this range is ignored and the field keeps 0.
  std::int32_t minimum = std::numeric_limits<std::int32_t>::min();
  std::int32_t maximum = std::numeric_limits<std::int32_t>::max();
  FormRow form{};
  DialogControl control{};
};

enum class TextReader {
  kLimited,  // refuses a text whose stored length is 1024 or more
  kChunked,  // takes any length
};

enum class ShortFile {
  kTolerated,  // what is missing stays empty
  kRefused,
};

// What the instances of a class are: the magic that names the class in their files, and their
// fields.
struct InstanceLayout {
  std::string_view class_name{};
  Guid magic{};
  std::span<const InstanceField> fields{};
  TextReader text_reader = TextReader::kLimited;
  ShortFile short_file = ShortFile::kTolerated;
  // What the log calls the instance "Default" when it cannot be loaded.
  unsigned default_name_id = 0;
  // The last of the three log lines of an instance that cannot be loaded.
  std::string_view load_failure_end = "\r";
};

}  // namespace brantel
