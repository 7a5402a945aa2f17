// What holds for the instance layout of every class, and for the forms of those that have some.
#include "module/class_descriptions.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <memory>
#include <new>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "instance/instance_codec.h"
#include "tests/unit/allocation_counter.h"
#include "tests/unit/instance/fake_instance_files.h"
#include "tests/unit/text/few_code_pages.h"
#include "tests/unit/web/browser_form.h"
#include "text/string_table.h"
#include "web/web_forms.h"

namespace brantel {
namespace {

using ::testing::AnyOf;
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

class ClassLayout : public ::testing::TestWithParam<const ClassDescription*> {
 protected:
  [[nodiscard]] static const InstanceLayout& layout() { return GetParam()->instances; }

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

INSTANTIATE_TEST_SUITE_P(Walk, ClassLayout, ::testing::ValuesIn(ClassDescriptions()),
                         [](const auto& walk) {
                           return std::string(walk.param->instances.class_name);
                         });

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

// As an alert to nobody would otherwise count as delivered.
TEST(ClassDescriptionList, RefuseShortFilesWhereTextsAreOfAnyLength) {
  for (const ClassDescription* notifier_class : ClassDescriptions()) {
    const InstanceLayout* const layout = &notifier_class->instances;
    EXPECT_EQ(layout->short_file == ShortFile::kRefused,
              layout->text_reader == TextReader::kChunked)
        << layout->class_name;
  }
}

TEST(ClassDescriptionList, TakeOneReadForTheLongestInstanceOfLimitedTexts) {
  for (const ClassDescription* notifier_class : ClassDescriptions()) {
    const InstanceLayout* const layout = &notifier_class->instances;
    if (layout->text_reader != TextReader::kLimited) continue;
    Instance longest(layout->fields.size());
    for (std::size_t i = 0; i < layout->fields.size(); ++i)
      longest.set_text(i, std::string(LongestText(*layout), 'x'));
    FakeInstanceFiles files;
    files.files["longest"] = EncodeInstance(*layout, longest);
    EXPECT_TRUE(DecodeInstance(*layout, *files.Open("longest")));
    EXPECT_EQ(files.reads, 1U) << layout->class_name;
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
  EXPECT_EQ(FindClassDescription(layout().class_name), GetParam());
  EXPECT_EQ(FindClassOfFile(EncodeInstance(layout(), Sample())), GetParam());
}

TEST(ClassDescriptionList, HaveDifferentNames) {
  std::set<std::string_view> names;
  for (const ClassDescription* notifier_class : ClassDescriptions()) {
    EXPECT_TRUE(names.insert(notifier_class->instances.class_name).second);
  }
}

TEST(ClassDescriptionList, HaveDifferentMagics) {
  std::set<std::array<std::uint8_t, 16>> magics;
  for (const ClassDescription* notifier_class : ClassDescriptions()) {
    const InstanceLayout* const layout = &notifier_class->instances;
    EXPECT_TRUE(magics.insert(GuidBytes(layout->magic)).second) << layout->class_name;
  }
}

TEST(ClassDescriptionList, KnowNoOtherNameOrFile) {
  EXPECT_EQ(FindClassDescription("beeper"), nullptr);
  EXPECT_EQ(FindClassDescription(""), nullptr);
  EXPECT_EQ(FindClassOfFile(""), nullptr);
  EXPECT_EQ(FindClassOfFile(std::string(64, 'x')), nullptr);
}

std::vector<const ClassDescription*> ClassesWithWebForms() {
  std::vector<const ClassDescription*> classes;
  std::ranges::copy_if(ClassDescriptions(), std::back_inserter(classes),
                       [](const auto* candidate) { return candidate->web_form.has_value(); });
  return classes;
}

// An operator who opens the forms of a class in a browser and sends them back.
class ClassWebForm : public ::testing::TestWithParam<const ClassDescription*> {
 protected:
  [[nodiscard]] static const InstanceLayout& layout() { return GetParam()->instances; }
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
  WebForms forms_{files_, *GetParam(), kCodePage1252};
};

INSTANTIATE_TEST_SUITE_P(Walk, ClassWebForm, ::testing::ValuesIn(ClassesWithWebForms()),
                         [](const auto& walk) {
                           return std::string(walk.param->instances.class_name);
                         });

TEST(ClassWebForms, AreThoseOfAllClassesWithRows) {
  for (const ClassDescription* notifier_class : ClassDescriptions()) {
    const InstanceLayout& layout = notifier_class->instances;
    const bool has_rows = std::ranges::any_of(layout.fields, [](const InstanceField& field) {
      return field.form.input != FormInput::kNone;
    });
    EXPECT_EQ(notifier_class->web_form.has_value(), has_rows) << layout.class_name;
  }
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

// Files that want memory for all but what a system does without: writing, deleting and renaming.
class FilesThatWantMemory final : public InstanceFiles {
 public:
  explicit FilesThatWantMemory(FakeInstanceFiles& files) : files_(files) {}

  std::unique_ptr<ByteSource> Open(const std::string& path) override { return files_.Open(path); }
  bool Write(const std::string& path, std::string_view content) override {
    const MemoryOfOthers memory;
    return files_.Write(path, content);
  }
  bool Overwrite(const std::string& path, std::string_view content) override {
    const MemoryOfOthers memory;
    return files_.Overwrite(path, content);
  }
  bool Delete(const std::string& path) override {
    const MemoryOfOthers memory;
    return files_.Delete(path);
  }
  bool Rename(const std::string& path, const std::string& new_path) override {
    const MemoryOfOthers memory;
    return files_.Rename(path, new_path);
  }
  [[nodiscard]] bool Exists(const std::string& path) const override { return files_.Exists(path); }
  [[nodiscard]] std::optional<std::string> StoredName(const std::string& path) const override {
    return files_.StoredName(path);
  }
  [[nodiscard]] bool IsValidName(const std::string& name) const override {
    return files_.IsValidName(name);
  }

 private:
  FakeInstanceFiles& files_;
};

TEST_P(ClassWebForm, LosesNothingWhicheverAllocationFails) {
  const std::string value = "a value that has to be allocated";
  std::string fields;
  for (const InstanceField& field : layout().fields) {
    if (field.form.input == FormInput::kNone) continue;
    fields.append("&").append(field.form.name).append("=").append(value);
  }
  FilesThatWantMemory files(files_);
  for (const std::string name :
       {"origname=a+new+and+longer+name/the+old+and+long+name", "origname=THE+OLD+AND+LONG+NAME",
        "origname=The+Old+And+Long+Name/the+old+and+long+name"}) {
    files_.files.clear();
    Store("the old and long name", WithEveryText("what stood here"));
    const auto before = files_.files;
    ASSERT_EQ(forms_.SubmitForm(kDirectory, name + fields), kOk);
    const auto after = files_.files;
    ASSERT_NE(after, before);

    std::size_t n = 0;
    for (bool failed = true; failed;) {
      files_.files = before;
      WebForms forms(files, *GetParam(), kCodePage1252);
      const std::string form = name + fields;
      FailAllocation(++n);
      Result result = kFail;
      try {
        result = forms.SubmitForm(kDirectory, form);
      } catch (const std::bad_alloc&) {
        result = kFail;
      }
      failed = !WillFailAllocation();
      FailAllocation(0);
      EXPECT_EQ(result, failed ? kFail : kOk) << n;
      EXPECT_EQ(files_.files, failed ? before : after) << n;
    }
    EXPECT_GT(n, 8U);
  }
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
