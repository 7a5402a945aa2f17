#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

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
  // Its place among the rows, where that is not the field's place in the file.
  std::optional<std::size_t> place{};
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
  // The message when the field is empty or lacks `required_text`; 0: it may hold anything.
  unsigned missing_text_id = 0;
  std::string_view required_text{};
  // Its place among the checks, where that is not the field's place in the file.
  std::optional<std::size_t> check_place{};
  // How many bytes can be entered in an edit, if that is less than can be stored.
  std::size_t longest = std::numeric_limits<std::size_t>::max();
  std::span<const int> choice_buttons{};  // of kChoice, which has no other number
};

// One field of a class's instances: how it is stored, posted and edited.
struct InstanceField {
  std::size_t index = 0;  // the field's enumerator
  std::string_view name{};
  FieldKind kind = FieldKind::kText;
  FieldPresence presence = FieldPresence::kMandatory;
  // A stored number outside this range is ignored and the field keeps 0.
  std::int32_t minimum = std::numeric_limits<std::int32_t>::min();
  std::int32_t maximum = std::numeric_limits<std::int32_t>::max();
  FormRow form{};
  DialogControl control{};
};

// A class's fields in file order, and the other orders that follow from them.
template <std::size_t kCount>
struct FieldTable {
  std::array<InstanceField, kCount> rows{};
  std::array<std::uint8_t, kCount> form_order{};   // of the form's rows
  std::array<std::uint8_t, kCount> check_order{};  // of the dialog's checks
};

// The positions of the rows by the places that they ask for.
template <std::size_t kCount, typename PlaceOf>
consteval std::array<std::uint8_t, kCount> OrderBy(const InstanceField (&rows)[kCount],
                                                   PlaceOf place_of) {
  std::array<std::uint8_t, kCount> order{};
  for (std::size_t i = 0; i < kCount; ++i) {
    order.at(i) = static_cast<std::uint8_t>(i);
  }
  std::ranges::sort(order, {},
                    [&](std::uint8_t i) { return std::pair(place_of(rows[i]).value_or(i), i); });
  return order;
}

// Ties a class's rows to the enumerators of its fields, `kCount` of them: rows that are out of
// order or too few do not compile.
template <std::size_t kCount>
consteval FieldTable<kCount> FieldsInFileOrder(const InstanceField (&rows)[kCount]) {
  FieldTable<kCount> table;
  for (std::size_t i = 0; i < kCount; ++i) {
    if (rows[i].index != i || rows[i].name.empty()) throw "a field is missing or out of its order";
    table.rows[i] = rows[i];
  }
  table.form_order = OrderBy(rows, [](const InstanceField& row) { return row.form.place; });
  table.check_order =
      OrderBy(rows, [](const InstanceField& row) { return row.control.check_place; });
  return table;
}

// The fields of a class, in file order, with their other orders.
class InstanceFields {
 public:
  constexpr InstanceFields() = default;
  // The table must outlive the object.
  template <std::size_t kCount>
  constexpr InstanceFields(
      const FieldTable<kCount>& table)  // NOLINT(*-explicit-*): another view of the same
      : rows_(table.rows), form_order_(table.form_order), check_order_(table.check_order) {}

  [[nodiscard]] constexpr std::size_t size() const { return rows_.size(); }
  constexpr const InstanceField& operator[](std::size_t index) const { return rows_[index]; }
  [[nodiscard]] constexpr auto begin() const { return rows_.begin(); }
  [[nodiscard]] constexpr auto end() const { return rows_.end(); }

  [[nodiscard]] constexpr std::span<const std::uint8_t> form_order() const { return form_order_; }
  [[nodiscard]] constexpr std::span<const std::uint8_t> check_order() const { return check_order_; }

 private:
  std::span<const InstanceField> rows_;
  std::span<const std::uint8_t> form_order_;
  std::span<const std::uint8_t> check_order_;
};

}  // namespace brantel
