// What holds for the instance layout of every class.
#include "module/class_layouts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>

#include "framework/instance_codec.h"
#include "framework/string_table.h"

namespace brantel {
namespace {

using ::testing::AnyOf;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

constexpr std::size_t kMagicSize = 16;

std::string Number(std::uint32_t number) {
  std::string bytes;
  for (unsigned shift = 0; shift < 32; shift += 8) {
    bytes.push_back(static_cast<char>(static_cast<std::uint8_t>(number >> shift)));
  }
  return bytes;
}

class ClassLayout : public ::testing::TestWithParam<const InstanceLayout*> {
 protected:
  [[nodiscard]] static const InstanceLayout& layout() { return *GetParam(); }

  // A text of its own in every text field, and 7 in every number, which all ranges hold.
  [[nodiscard]] static Instance Sample() {
    Instance instance(layout().fields.size());
    for (std::size_t i = 0; i < layout().fields.size(); ++i) {
      if (layout().fields[i].kind == FieldKind::kText) {
        instance.set_text(i, "value of " + std::string(layout().fields[i].name));
      } else {
        instance.set_integer(i, 7);
      }
    }
    return instance;
  }

  // Where the lengths of the texts stand in the file of `instance`.
  [[nodiscard]] static std::vector<std::size_t> LengthOffsets(const Instance& instance) {
    std::vector<std::size_t> offsets;
    std::size_t offset = kMagicSize;
    for (std::size_t i = 0; i < layout().fields.size(); ++i) {
      if (layout().fields[i].kind == FieldKind::kText) {
        offsets.push_back(offset);
        offset += instance.text(i).size() + 1;
      }
      offset += 4;
    }
    return offsets;
  }
};

INSTANTIATE_TEST_SUITE_P(Walk, ClassLayout, ::testing::ValuesIn(ClassLayouts()),
                         [](const auto& walk) { return std::string(walk.param->class_name); });

TEST_P(ClassLayout, NamesItsFieldsAndControlsOnce) {
  std::set<std::string_view> names;
  std::set<std::string_view> form_names;
  std::set<int> controls;
  for (const InstanceField& field : layout().fields) {
    EXPECT_TRUE(names.insert(field.name).second) << field.name;
    if (field.form.input != FormInput::kNone) {
      EXPECT_TRUE(form_names.insert(field.form.name).second) << field.form.name;
    }
    if (field.control.kind != ControlKind::kNone) {
      EXPECT_TRUE(controls.insert(field.control.id).second) << field.control.id;
    }
  }
}

// The form's fields are found by a plain search for "name=", so a name that ends like one before it
// would be found inside that.
TEST_P(ClassLayout, HasNoFormNameThatIsTheTailOfAnEarlierOne) {
  std::vector<std::string> earlier = {"origname", "instancename"};
  for (const InstanceField& field : layout().fields) {
    if (field.form.input == FormInput::kNone) continue;
    for (const std::string& name : earlier) {
      EXPECT_FALSE(name.ends_with(field.form.name)) << field.form.name << " in " << name;
    }
    earlier.emplace_back(field.form.name);
  }
}

TEST_P(ClassLayout, HasATableRowOnBothPagesForEveryInput) {
  for (const InstanceField& field : layout().fields) {
    if (field.form.input == FormInput::kNone || field.form.input == FormInput::kUnshown) continue;
    for (const RowText& row : {field.form.add_row, field.form.edit_row}) {
      EXPECT_THAT(std::string(row.before()), AnyOf(StartsWith("<tr><td>"), StartsWith("<TR><TD>")))
          << field.name;
      EXPECT_THAT(std::string(row.after()), AnyOf(HasSubstr("</td></tr>"), HasSubstr("</TD></TR>")))
          << field.name;
    }
  }
}

TEST_P(ClassLayout, HasItsTexts) {
  EXPECT_THAT(LoadText(layout().default_name_id), HasSubstr("Default"));
  for (const InstanceField& field : layout().fields) {
    if (field.control.missing_text_id == 0) continue;
    EXPECT_THAT(LoadText(field.control.missing_text_id), HasSubstr("Invalid value - The '"));
  }
}

TEST_P(ClassLayout, ReadsBackWhatItWrites) {
  const Instance empty(layout().fields.size());
  EXPECT_EQ(DecodeInstance(layout(), EncodeInstance(layout(), empty)), empty);
  EXPECT_EQ(DecodeInstance(layout(), EncodeInstance(layout(), Sample())), Sample());
}

TEST_P(ClassLayout, ReadsAFileThatEndsAtAnyByte) {
  const std::string whole = EncodeInstance(layout(), Sample());
  for (std::size_t size = 0; size < whole.size(); ++size) {
    const auto instance = DecodeInstance(layout(), std::string_view(whole).substr(0, size));
    const bool readable = size >= kMagicSize && layout().short_file == ShortFile::kTolerated;
    EXPECT_EQ(instance.has_value(), readable) << size;
  }
}

TEST_P(ClassLayout, JudgesEveryStoredLength) {
  const std::string whole = EncodeInstance(layout(), Sample());
  const bool limited = layout().text_reader == TextReader::kLimited;
  std::size_t text_field = 0;
  for (const std::size_t offset : LengthOffsets(Sample())) {
    while (layout().fields[text_field].kind != FieldKind::kText)
      ++text_field;
    const bool mandatory = layout().fields[text_field].presence == FieldPresence::kMandatory;
    for (const std::uint32_t length : {0U, 1U, 1022U, 1023U, 1024U, 0x7FFFFFFFU, 0xFFFFFFFFU}) {
      std::string file = whole;
      file.replace(offset, 4, Number(length));
      const auto instance = DecodeInstance(layout(), file);
      if (limited && mandatory && length >= 1024) {
        EXPECT_FALSE(instance) << offset << " " << length;
      } else if (instance && length == 0) {
        EXPECT_EQ(instance->text(text_field), "") << offset;
      }
    }
    ++text_field;
  }
}

TEST_P(ClassLayout, IsFoundByNameAndByMagic) {
  EXPECT_EQ(FindClassLayout(layout().class_name), &layout());
  EXPECT_EQ(FindLayoutOfFile(EncodeInstance(layout(), Sample())), &layout());
}

TEST(ClassLayouts, AreInTheOrderOfTheClassTable) {
  std::vector<std::string_view> names;
  for (const InstanceLayout* layout : ClassLayouts()) {
    names.push_back(layout->class_name);
  }
  EXPECT_THAT(names, ElementsAre("SMTPMail", "Sound", "WinPopup", "LaunchProgram", "Beeper",
                                 "Pager", "Voice"));
}

TEST(ClassLayouts, HaveDifferentMagics) {
  std::set<std::array<std::uint8_t, 16>> magics;
  for (const InstanceLayout* layout : ClassLayouts()) {
    EXPECT_TRUE(magics.insert(GuidBytes(layout->magic)).second) << layout->class_name;
  }
}

TEST(ClassLayouts, KnowNoOtherNameOrFile) {
  EXPECT_EQ(FindClassLayout("beeper"), nullptr);
  EXPECT_EQ(FindClassLayout(""), nullptr);
  EXPECT_EQ(FindLayoutOfFile(""), nullptr);
  EXPECT_EQ(FindLayoutOfFile(std::string(64, 'x')), nullptr);
}

}  // namespace
}  // namespace brantel
