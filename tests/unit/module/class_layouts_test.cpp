// What holds for the instance layout of every class, and for the forms of those that have some.
#include "module/class_layouts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "framework/instance_codec.h"
#include "framework/string_table.h"
#include "framework/web_forms.h"
#include "mail/smtp_mail_layout.h"
#include "modem/beeper_layout.h"
#include "modem/pager_layout.h"
#include "popup/win_popup_layout.h"
#include "tests/unit/framework/browser_form.h"
#include "tests/unit/framework/fake_instance_files.h"

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

const std::vector<const WebFormSpec*>& WebFormSpecs() {
  static const std::vector<const WebFormSpec*> specs = {&kSmtpMailWebForm, &kWinPopupWebForm,
                                                        &kBeeperWebForm, &kPagerWebForm};
  return specs;
}

bool NoLeadByte(char) {
  return false;
}

// An operator who opens the forms of a class in a browser and sends them back.
class ClassWebForm : public ::testing::TestWithParam<const WebFormSpec*> {
 protected:
  [[nodiscard]] static const InstanceLayout& layout() { return GetParam()->layout; }
  [[nodiscard]] static FormInput InputOf(std::size_t field) {
    return layout().fields[field].form.input;
  }

  // An instance with this value wherever a row takes any text, a choice other than the first, and
  // the profile 7.
  [[nodiscard]] static Instance WithEveryText(const std::string& value) {
    Instance instance(layout().fields.size());
    for (std::size_t i = 0; i < layout().fields.size(); ++i) {
      if (layout().fields[i].kind == FieldKind::kInteger) {
        instance.set_integer(i, 7);
      } else if (InputOf(i) == FormInput::kChoice) {
        instance.set_text(i, LoadText(layout().fields[i].form.choices.first_id + 2));
      } else {
        instance.set_text(i, value);
      }
    }
    return instance;
  }

  // What the forms make of that when each row's value comes back as these: fields that no row
  // carries keep what they hold, but the one that is posted without a row comes back empty.
  [[nodiscard]] static Instance Returned(const std::string& value, const std::string& line,
                                         const std::string& lines) {
    Instance instance = WithEveryText(value);
    for (std::size_t i = 0; i < layout().fields.size(); ++i) {
      if (InputOf(i) == FormInput::kSingleLine) instance.set_text(i, line);
      if (InputOf(i) == FormInput::kMultiLine) instance.set_text(i, lines);
      if (InputOf(i) == FormInput::kUnshown) instance.set_text(i, "");
    }
    return instance;
  }
  [[nodiscard]] static Instance Returned(const std::string& value) {
    return Returned(value, value, value);
  }

  void Store(const std::string& name, const Instance& instance) {
    files_.files[PathOf(name)] = EncodeInstance(layout(), instance);
  }
  [[nodiscard]] std::optional<Instance> Stored(const std::string& name) const {
    const auto file = files_.files.find(PathOf(name));
    if (file == files_.files.end()) return std::nullopt;
    return DecodeInstance(layout(), file->second);
  }

  Result SubmitEditPage(const std::string& name) {
    const std::string path = PathOf(name);
    const auto page =
        forms_.EditPage({std::u16string(path.begin(), path.end()), path}, name, nullptr);
    return page ? forms_.SubmitForm(kDirectory, PostedForm(page->view())) : kFail;
  }
  Result SubmitAddPage(const std::string& name) {
    const HtmlText page = forms_.AddPage(kDirectory, nullptr);
    return forms_.SubmitForm(kDirectory, PostedForm(page.view(), {{"instancename", name}}));
  }

  [[nodiscard]] static std::string PathOf(const std::string& name) {
    return std::string(kDirectory) + "\\" + name;
  }

  static constexpr const char* kDirectory = "C:\\alerts";
  FakeInstanceFiles files_;
  WebForms forms_{files_, *GetParam(), NoLeadByte};
};

INSTANTIATE_TEST_SUITE_P(Walk, ClassWebForm, ::testing::ValuesIn(WebFormSpecs()),
                         [](const auto& walk) {
                           return std::string(walk.param->layout.class_name);
                         });

TEST(ClassWebForms, AreThoseOfAllClassesWithRows) {
  std::vector<const InstanceLayout*> with_rows;
  for (const InstanceLayout* layout : ClassLayouts()) {
    const auto has_row = [](const InstanceField& field) {
      return field.form.input != FormInput::kNone;
    };
    if (std::ranges::any_of(layout->fields, has_row)) with_rows.push_back(layout);
  }
  std::vector<const InstanceLayout*> with_form;
  for (const WebFormSpec* spec : WebFormSpecs())
    with_form.push_back(&spec->layout);
  EXPECT_EQ(with_form, with_rows);
}

TEST_P(ClassWebForm, GivesPlainValuesBackAsTheyWere) {
  for (const std::string value : {"", "x", "555 0199", " two  blanks ", "*-._", "0", "value"}) {
    Store("Night shift", WithEveryText(value));
    EXPECT_EQ(SubmitEditPage("Night shift"), kOk);
    EXPECT_EQ(Stored("Night shift"), Returned(value)) << value;
  }
  EXPECT_EQ(files_.files.size(), 1U);
}

// Percent escapes deliberately stay as the browser made them. So no value can name another field.
TEST_P(ClassWebForm, GivesOtherCharactersBackAsPercentEscapes) {
  const std::vector<std::pair<std::string, std::string>> values = {
      {"\"><script>alert(1)</script>", "%22%3E%3Cscript%3Ealert%281%29%3C%2Fscript%3E"},
      {"</textarea></form><input name=a>", "%3C%2Ftextarea%3E%3C%2Fform%3E%3Cinput name%3Da%3E"},
      {"' onfocus=x", "%27 onfocus%3Dx"},
      {"&amp;&lt;&#34;", "%26amp%3B%26lt%3B%26%2334%3B"},
      {"a+b%20c", "a%2Bb%2520c"},
      {"%s%n%1!s!", "%25s%25n%251%21s%21"},
      {"origname=x&instancename=y&message=z", "origname%3Dx%26instancename%3Dy%26message%3Dz"},
      {"St\xF6rung \x81\xFF", "St%F6rung %81%FF"},
      {"a\tb", "a%09b"},
      {"+44 (0)20", "%2B44 %280%2920"},
  };
  for (const auto& [value, returned] : values) {
    Store("Day", WithEveryText(value));
    EXPECT_EQ(SubmitEditPage("Day"), kOk);
    EXPECT_EQ(Stored("Day"), Returned(value, returned, returned)) << value;
  }
}

TEST_P(ClassWebForm, TakesLineBreaksOutOfAllButTextAreas) {
  Store("Day", WithEveryText("one\r\ntwo\nthree"));
  EXPECT_EQ(SubmitEditPage("Day"), kOk);
  EXPECT_EQ(Stored("Day"), Returned("one\r\ntwo\nthree", "onetwothree", "one%0D%0Atwo%0D%0Athree"));
}

// The inputs' length limits what is typed, not what stands there already.
TEST_P(ClassWebForm, GivesTheLongestTextsBackWhole) {
  const std::string longest(1022, 'x');
  Store("Day", WithEveryText(longest));
  EXPECT_EQ(SubmitEditPage("Day"), kOk);
  EXPECT_EQ(Stored("Day"), Returned(longest));
}

TEST_P(ClassWebForm, RefusesEscapesThatItsReaderCouldNotTake) {
  const Instance before = WithEveryText(std::string(341, '"'));
  Store("Day", before);
  std::string escapes;
  for (int i = 0; i < 341; ++i)
    escapes += "%22";
  if (layout().text_reader == TextReader::kLimited) {
    EXPECT_EQ(SubmitEditPage("Day"), kFail);
    EXPECT_EQ(Stored("Day"), before);
  } else {
    EXPECT_EQ(SubmitEditPage("Day"), kOk);
    EXPECT_EQ(Stored("Day"), Returned(before.text(0), escapes, escapes));
  }
}

TEST_P(ClassWebForm, SavesUnderTheNameAsTheBrowserWritesIt) {
  const Instance before = WithEveryText("x");
  Store("St\xF6rung", before);
  EXPECT_EQ(SubmitEditPage("St\xF6rung"), kOk);
  EXPECT_EQ(Stored("St\xF6rung"), before);
  EXPECT_TRUE(Stored("St%F6rung"));
}

TEST_P(ClassWebForm, TurnsDefaultIntoANewInstance) {
  Store("Default", WithEveryText("555 0199"));
  EXPECT_EQ(SubmitAddPage("Night shift"), kOk);
  EXPECT_EQ(Stored("Night shift"), Returned("555 0199"));
}

// The add page deliberately has the values as they are stored, so a quote ends an input's.
TEST_P(ClassWebForm, TakesValuesOfDefaultUpToTheirFirstQuote) {
  Store("Default", WithEveryText("1\"2"));
  EXPECT_EQ(SubmitAddPage("Day"), kOk);
  EXPECT_EQ(Stored("Day"), Returned("1\"2", "1", "1%222"));
}

}  // namespace
}  // namespace brantel
