#include "host/instances/instance_text.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "host/report/json_text.h"
#include "instance/instance_codec.h"
#include "module/class_descriptions.h"
#include "tests/unit/host/report/kept_text.h"

namespace brantel::host {
namespace {

// A file with an instance whose first texts are these, and whose numbers are all the same.
InstanceFile FileOf(const std::string& name, const std::string& class_name,
                    const std::vector<std::string>& texts, std::int32_t number = 0) {
  const InstanceLayout& layout = FindClassDescription(class_name)->instances;
  Instance instance(layout.fields.size());
  std::size_t given = 0;
  for (std::size_t i = 0; i < layout.fields.size(); ++i) {
    if (layout.fields[i].kind == FieldKind::kInteger) {
      instance.set_integer(i, number);
    } else if (given < texts.size()) {
      instance.set_text(i, texts[given++]);
    }
  }
  return {.name = name, .layout = &layout, .instance = instance, .stored = instance};
}

std::string JsonOf(const InstanceFile& file) {
  return JsonText(InstanceRecord(file)) + "\n";
}

std::string TableOf(std::vector<InstanceFile> files, ReportForm form = ReportForm::kText) {
  const KeptText table;
  SortByName(files);
  WriteInstanceTable(ReportWriter(table, form, false), files);
  return table.text();
}

TEST(InstanceText, HasALineForEachField) {
  EXPECT_EQ(InstanceText(FileOf("Night", "Voice", {"555 1234", "", "%n is down"}, -3)),
            "Instance Night of Voice\n"
            "\n"
            "phone number    555 1234\n"
            "repeat message\n"
            "count           -3\n"
            "button          -3\n"
            "item down       %n is down\n"
            "item up\n"
            "service down\n"
            "service up\n");
}

TEST(InstanceText, HasALineForEachLineOfAValue) {
  EXPECT_EQ(InstanceText(FileOf("Zürich", "WinPopup", {"\nRouter", "1\r\n\r\n☎\r4\x1B[2J\n"})),
            "Instance Zürich of WinPopup\n"
            "\n"
            "destination\n"
            "             Router\n"
            "message      1\n"
            "\n"
            "             ☎\n"
            "             4<1B>[2J\n");
}

TEST(InstanceRecord, HasTheValuesAsTheyAre) {
  EXPECT_EQ(JsonOf(FileOf("Zürich \"7\"", "Sound", {"C:\\a.wav\r\n\x1B ☎"}, -2147483647)),
            "{\n"
            "  \"class\": \"Sound\",\n"
            "  \"name\": \"Zürich \\\"7\\\"\",\n"
            "  \"fields\": {\n"
            "    \"wave filename\": \"C:\\\\a.wav\\r\\n\\u001b ☎\",\n"
            "    \"continuous play\": -2147483647\n"
            "  }\n"
            "}\n");
}

TEST(InstanceRecord, KeepsTheOrderOfTheFields) {
  EXPECT_EQ(JsonOf(FileOf("Default", "Beeper", {"1", "2", "3", "4", "5", ""}, 10)),
            "{\n"
            "  \"class\": \"Beeper\",\n"
            "  \"name\": \"Default\",\n"
            "  \"fields\": {\n"
            "    \"beeper number\": \"1\",\n"
            "    \"dialing options\": \"2\",\n"
            "    \"up code\": \"3\",\n"
            "    \"down code\": \"4\",\n"
            "    \"SNMP trap code\": \"5\",\n"
            "    \"report message\": \"\",\n"
            "    \"settings profile\": 10\n"
            "  }\n"
            "}\n");
}

TEST(InstanceTable, IsSortedByNameAndLetterCaseLast) {
  EXPECT_EQ(TableOf({FileOf("b", "Sound", {"1"}), FileOf("C", "Sound", {"2"}),
                     FileOf("a2", "Sound", {"3"}), FileOf("A", "Sound", {"4"}),
                     FileOf("B", "Sound", {"5"}), FileOf("Ä", "Sound", {"6"})}),
            "Name  Class  Summary\n"
            "A     Sound  4\n"
            "a2    Sound  3\n"
            "B     Sound  5\n"
            "b     Sound  1\n"
            "C     Sound  2\n"
            "Ä     Sound  6\n");
}

TEST(InstanceTable, ShowsTheFirstTextsInOneLine) {
  EXPECT_EQ(TableOf({FileOf("1", "SMTPMail", {"10.0.0.1", "", "a@b", "", "x\r\ny"}),
                     FileOf("2", "LaunchProgram", {}),
                     FileOf("3\n", "WinPopup", {"ü", std::string(45, 'x')}),
                     FileOf("4", "WinPopup", {"ü", std::string(46, 'x')}),
                     FileOf("5", "Sound", {"☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎"})}),
            "Name   Class          Summary\n"
            "1      SMTPMail       10.0.0.1, a@b, x<0D><0A>y\n"
            "2      LaunchProgram\n"
            "3<0A>  WinPopup       ü, xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx\n"
            "4      WinPopup       ü, xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx...\n"
            "5      Sound          ☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎☎...\n");
}

TEST(InstanceTable, TellsWhatIsWrongWithAFile) {
  InstanceFile damaged = FileOf("Night", "Beeper", {"5551234"});
  damaged.fault = "is damaged: it is short";
  const InstanceFile refused = {.name = "Office",
                                .layout = &FindClassDescription("SMTPMail")->instances,
                                .fault = "is refused by SMTPMail: it is short"};
  const InstanceFile foreign = {.name = "notes.txt", .fault = "is no instance"};
  EXPECT_EQ(TableOf({damaged, foreign, refused}),
            "Name       Class     Summary\n"
            "Night      Beeper    5551234 (is damaged: it is short)\n"
            "notes.txt  -         is no instance\n"
            "Office     SMTPMail  is refused by SMTPMail: it is short\n");
}

TEST(InstanceTable, TellsProgramsOfFaults) {
  InstanceFile damaged = FileOf("Night", "Beeper", {"5551234"});
  damaged.fault = "is damaged";
  EXPECT_EQ(TableOf({damaged, {.name = "x", .fault = "is no instance"}}, ReportForm::kJson),
            "{\"name\":\"Night\",\"class\":\"Beeper\",\"summary\":\"5551234 (is damaged)\","
            "\"fault\":\"is damaged\"}\n"
            "{\"name\":\"x\",\"class\":null,\"summary\":\"is no instance\","
            "\"fault\":\"is no instance\"}\n");
}

TEST(HideSecrets, PutsStarsIntoThePlaceOfPasswords) {
  InstanceFile file = FileOf("Night", "Pager", {"5551234", "sesame", "007"});
  EXPECT_EQ(SecretTexts(file), std::vector<std::string>{"sesame"});
  HideSecrets(file);
  EXPECT_EQ(file.instance->text(0), "5551234");
  EXPECT_EQ(file.instance->text(1), "********");
  EXPECT_EQ(file.stored->text(1), "sesame");
}

TEST(HideSecrets, LeavesWhatHasNone) {
  InstanceFile without = FileOf("Night", "Pager", {"5551234", "", "007"});
  EXPECT_TRUE(SecretTexts(without).empty());
  HideSecrets(without);
  EXPECT_EQ(without.instance->text(1), "");
  InstanceFile unreadable{.name = "x", .fault = "is no instance"};
  HideSecrets(unreadable);
  EXPECT_FALSE(unreadable.instance);
}

}  // namespace
}  // namespace brantel::host
