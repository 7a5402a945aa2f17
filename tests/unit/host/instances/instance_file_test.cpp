#include "host/instances/instance_file.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "host/outcome/command_failure.h"
#include "instance/instance_codec.h"
#include "module/class_descriptions.h"

namespace brantel::host {
namespace {

// A code page in which everything reads differently.
std::string Decode(std::string_view text) {
  return "<" + std::string(text) + ">";
}

// Enough of UTF-8 for these names.
std::u16string ToUtf16(std::string_view text) {
  std::u16string wide;
  for (const char c : text) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80 || byte >= 0xC0) {
      wide.push_back(byte < 0x80 ? byte : byte & 0x1F);
    } else {
      wide.back() = static_cast<char16_t>(wide.back() << 6 | (byte & 0x3F));
    }
  }
  return wide;
}

InstanceFile Examine(std::string_view content) {
  MemorySource source(content);
  return ExamineInstanceFile("Night", source, Decode);
}

Instance SampleOf(const InstanceLayout& layout) {
  Instance instance(layout.fields.size());
  for (std::size_t i = 0; i < layout.fields.size(); ++i) {
    const bool is_text = layout.fields[i].kind == FieldKind::kText;
    if (is_text) instance.set_text(i, "text " + std::to_string(i));
    if (!is_text) instance.set_integer(i, static_cast<std::int32_t>(i));
  }
  return instance;
}

TEST(InstanceFile, HoldsTheInstanceOfItsMagic) {
  for (const ClassDescription* notifier_class : ClassDescriptions()) {
    const InstanceLayout* const layout = &notifier_class->instances;
    const Instance sample = SampleOf(*layout);
    const InstanceFile file = Examine(EncodeInstance(*layout, sample));
    EXPECT_EQ(file.name, "Night");
    EXPECT_EQ(file.layout, layout);
    EXPECT_EQ(file.fault, "");
    ASSERT_TRUE(file.instance) << layout->class_name;
    for (std::size_t i = 0; i < layout->fields.size(); ++i) {
      EXPECT_EQ(file.instance->text(i), Decode(sample.text(i)));
      EXPECT_EQ(file.instance->integer(i), sample.integer(i));
    }
  }
}

TEST(InstanceFile, MayBeNoInstance) {
  const InstanceLayout& layout = FindClassDescription("Beeper")->instances;
  const std::string beeper = EncodeInstance(layout, Instance(layout.fields.size()));
  for (const std::string& content :
       {std::string(), std::string("text\n"), std::string(64, '\0'), beeper.substr(0, 15)}) {
    const InstanceFile file = Examine(content);
    EXPECT_EQ(file.name, "Night");
    EXPECT_EQ(file.layout, nullptr);
    EXPECT_FALSE(file.instance);
    EXPECT_EQ(file.fault, "is no instance");
  }
}

TEST(InstanceFile, MayBeDamagedAndStillRead) {
  const InstanceLayout& layout = FindClassDescription("Beeper")->instances;
  Instance instance(layout.fields.size());
  instance.set_text(0, "5551234");
  const std::string content = EncodeInstance(layout, instance);
  const InstanceFile file = Examine(content.substr(0, 16 + 4 + 8 + 2));
  EXPECT_EQ(file.layout, &layout);
  EXPECT_EQ(file.fault, "is damaged: it ends before the end of its field 'dialing options'");
  ASSERT_TRUE(file.instance);
  EXPECT_EQ(file.instance->text(0), "<5551234>");
}

TEST(InstanceFile, IsWholeWithoutItsOptionalFields) {
  const InstanceLayout& layout = FindClassDescription("Beeper")->instances;
  const std::string content = EncodeInstance(layout, Instance(layout.fields.size()));
  const InstanceFile file = Examine(content.substr(0, content.size() - 4 - 5));
  EXPECT_EQ(file.fault, "");
  EXPECT_TRUE(file.instance);
}

TEST(InstanceFile, MayBeRefusedByItsClass) {
  const InstanceLayout& mail = FindClassDescription("SMTPMail")->instances;
  const std::string content = EncodeInstance(mail, Instance(mail.fields.size()));
  const InstanceFile cut = Examine(content.substr(0, content.size() - 1));
  EXPECT_EQ(cut.layout, &mail);
  EXPECT_FALSE(cut.instance);
  EXPECT_EQ(cut.fault, "is refused by SMTPMail: it ends before the end of its field 'message'");

  const InstanceLayout& sound = FindClassDescription("Sound")->instances;
  Instance too_long(sound.fields.size());
  too_long.set_text(0, std::string(1023, 'x'));
  const InstanceFile refused = Examine(EncodeInstance(sound, too_long));
  EXPECT_EQ(refused.layout, &sound);
  EXPECT_FALSE(refused.instance);
  EXPECT_EQ(refused.fault,
            "is refused by Sound: its field 'wave filename' is longer than 1022 bytes");
}

TEST(InstanceFileName, IsTheLastPartOfThePath) {
  for (const char* file :
       {"Night", "C:\\Instances\\Night", "../Night 2", "a/b\\Zürich ☎.ins", "m²"}) {
    EXPECT_NO_THROW(CheckInstanceFileName(file, ToUtf16)) << file;
  }
}

TEST(InstanceFileName, CannotLeadElsewhere) {
  const std::vector<std::array<std::string, 2>> cases = {
      {"", ""},         {"C:\\Instances\\", ""}, {"a/..", ".."},
      {".", "."},       {"Night.", "Night."},    {"a/Night ", "Night "},
      {"*", "*"},       {"a\\b:c", "b:c"},       {"C:Night", "C:Night"},
      {"nul", "nul"},   {"a/COM1.x", "COM1.x"},  {"a\nb", "a\nb"},
      {"COM²", "COM²"}, {"a/Clock$", "Clock$"},
  };
  for (const auto& [file, name] : cases) {
    try {
      CheckInstanceFileName(file, ToUtf16);
      ADD_FAILURE() << file;
    } catch (const CommandFailure& failure) {
      EXPECT_EQ(failure.exit_code(), ExitCode::kWrongUsage);
      EXPECT_EQ(failure.what(), "FILE: '" + name + "' cannot be the name of an instance");
    }
  }
}

}  // namespace
}  // namespace brantel::host
