#include "host/instances/class_fields.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "host/outcome/command_failure.h"
#include "module/class_descriptions.h"
#include "tests/unit/host/report/kept_text.h"

namespace brantel::host {
namespace {

// A code page of ASCII and "ü", one byte long.
std::optional<std::string> Encode(std::string_view text) {
  std::string encoded;
  while (!text.empty()) {
    if (text.starts_with("ü")) {
      encoded += '\xFC';
      text.remove_prefix(2);
    } else if (static_cast<unsigned char>(text[0]) < 0x80) {
      encoded += text[0];
      text.remove_prefix(1);
    } else {
      return std::nullopt;
    }
  }
  return encoded;
}

Instance Make(const std::string& class_name, const std::vector<FieldValue>& values) {
  return MakeInstance(FindDescription(class_name).instances, values, Encode);
}

// The message with which these values are refused as wrong usage.
std::string Refusal(const std::string& class_name, const std::vector<FieldValue>& values) {
  try {
    Make(class_name, values);
  } catch (const CommandFailure& failure) {
    EXPECT_EQ(failure.exit_code(), ExitCode::kWrongUsage);
    return failure.what();
  }
  return "none";
}

TEST(FindDescription, TakesAClassNameInAnyLetterCase) {
  for (const ClassDescription* notifier_class : ClassDescriptions()) {
    EXPECT_EQ(&FindDescription(std::string(notifier_class->instances.class_name)), notifier_class);
  }
  EXPECT_EQ(FindDescription("smtpmail").instances.class_name, "SMTPMail");
  EXPECT_EQ(FindDescription("BEEPER").instances.class_name, "Beeper");
}

std::string UnknownClass(const std::string& name) {
  try {
    FindDescription(name);
  } catch (const CommandFailure& failure) {
    EXPECT_EQ(failure.exit_code(), ExitCode::kWrongUsage);
    return failure.what();
  }
  return "none";
}

TEST(FindDescription, TellsWhichClassesThereAre) {
  for (const std::string name : {"Fax", "", "Notification"}) {
    EXPECT_EQ(UnknownClass(name),
              "CLASS: '" + name +
                  "' is not a notifier class; the classes are SMTPMail, Sound, WinPopup, "
                  "LaunchProgram, Beeper, Pager and Voice");
  }
  EXPECT_EQ(UnknownClass("Beepe"),
            "CLASS: 'Beepe' is not a notifier class; did you mean 'Beeper'?");
  EXPECT_EQ(UnknownClass("Pager "),
            "CLASS: 'Pager ' is not a notifier class; did you mean 'Pager'?");
}

std::string FieldsOf(const std::string& class_name, ReportForm form) {
  const KeptText table;
  WriteFieldTable(ReportWriter(table, form, false), FindDescription(class_name));
  return table.text();
}

TEST(WriteFieldTable, TellsWhatEachFieldIsFor) {
  EXPECT_EQ(FieldsOf("Sound", ReportForm::kText),
            "Field            Needed  Values                    Default  Meaning\n"
            "wave filename    yes     full path of a wave file  none     what is played\n"
            "continuous play  no      0 once, 1 over and over   0        how often it is played\n");
}

TEST(WriteFieldTable, NamesTheProtocols) {
  EXPECT_NE(FieldsOf("Pager", ReportForm::kText).find("TAP, SMS-TAP, NTT or UCP-SMS"),
            std::string::npos);
}

TEST(WriteFieldTable, TellsProgramsMore) {
  const std::string lines = FieldsOf("WinPopup", ReportForm::kJson);
  EXPECT_EQ(lines.substr(0, lines.find('\n')),
            R"({"class":"WinPopup","field":"destination","needed":true,)"
            R"("kind":"text","stored":"text",)"
            R"("values":"name of a computer, user or domain","default":"none",)"
            R"("variables":false,"secret":false,"meaning":"where the message pops up"})");
}

TEST(FieldValue, IsSplitAtTheFirstEqualsSign) {
  EXPECT_EQ(FieldValue::Parse("up code=911"), (FieldValue{"up code", "911"}));
  EXPECT_EQ(FieldValue::Parse("up code="), (FieldValue{"up code", ""}));
  EXPECT_EQ(FieldValue::Parse("message=a=b="), (FieldValue{"message", "a=b="}));
  EXPECT_EQ(FieldValue::Parse("=911"), std::nullopt);
  EXPECT_EQ(FieldValue::Parse("="), std::nullopt);
  EXPECT_EQ(FieldValue::Parse("up code"), std::nullopt);
  EXPECT_EQ(FieldValue::Parse(""), std::nullopt);
}

TEST(MakeInstance, LeavesFieldsWithoutAValueEmptyOr0) {
  for (const ClassDescription* notifier_class : ClassDescriptions()) {
    const InstanceLayout* const layout = &notifier_class->instances;
    EXPECT_EQ(MakeInstance(*layout, {}, Encode), Instance(layout->fields.size()))
        << layout->class_name;
  }
}

TEST(MakeInstance, FindsFieldsOfAnySpelling) {
  for (const std::string name :
       {"SNMP trap code", "snmp trap code", "SNMP-TRAP-CODE", "snmp_trap_code", "Snmp-trap_Code"}) {
    EXPECT_EQ(Make("Beeper", {{name, "7"}}).text(4), "7") << name;
  }
}

TEST(MakeInstance, StoresTextsInTheCodePage) {
  const Instance instance = Make("SMTPMail", {{"subject", "für %n"}, {"message", "1\r\n\t2\n"}});
  EXPECT_EQ(instance.text(3), "f\xFCr %n");
  EXPECT_EQ(instance.text(4), "1\r\n\t2\n");
}

TEST(MakeInstance, StoresNumbersUpToTheirLimits) {
  EXPECT_EQ(Make("Beeper", {{"settings-profile", "0"}}).integer(6), 0);
  EXPECT_EQ(Make("Beeper", {{"settings-profile", "10"}}).integer(6), 10);
  const Instance voice = Make("Voice", {{"count", "-2147483648"}, {"button", "2147483647"}});
  EXPECT_EQ(voice.integer(2), std::numeric_limits<std::int32_t>::min());
  EXPECT_EQ(voice.integer(3), std::numeric_limits<std::int32_t>::max());
}

TEST(MakeInstance, RefusesAFieldThatTheClassHasNot) {
  EXPECT_EQ(Refusal("Sound", {{"continuous play", "1"}, {"wave", "x"}}),
            "'wave' is not a field of Sound; the fields are wave filename and continuous play");
  EXPECT_EQ(Refusal("Sound", {{"wavefilename", "x"}}),
            "'wavefilename' is not a field of Sound; did you mean 'wave filename'?");
}

TEST(ChangeInstance, KeepsWhatIsNotGiven) {
  const InstanceLayout& layout = FindDescription("Beeper").instances;
  const Instance before = Make("Beeper", {{"beeper number", "555"}, {"up code", "1"}});
  const Instance after =
      ChangeInstance(layout, before, std::vector<FieldValue>{{"up-code", "f\u00FCr"}}, Encode);
  EXPECT_EQ(after.text(0), "555");
  EXPECT_EQ(after.text(2), "f\xFCr");
}

TEST(MakeInstance, RefusesAFieldThatIsGivenTwice) {
  EXPECT_EQ(Refusal("Beeper", {{"up-code", "1"}, {"down code", "2"}, {"Up Code", "1"}}),
            "up code is given more than once");
}

TEST(MakeInstance, RefusesWhatIsNoNumberInTheFieldsRange) {
  for (const std::string value : {"", "x", "1x", " 1", "1 ", "+1", "0x1", "1.0", "-1", "11",
                                  "4294967296", "99999999999999999999"}) {
    EXPECT_EQ(Refusal("Beeper", {{"settings profile", value}}),
              "settings profile: '" + value + "' is not a number from 0 to 10");
  }
  EXPECT_EQ(Refusal("Voice", {{"Count", "2147483648"}}),
            "count: '2147483648' is not a number from -2147483648 to 2147483647");
}

TEST(MakeInstance, RefusesATextThatTheClassCouldNotRead) {
  const std::string longest = std::string(1020, 'x') + "üü";
  EXPECT_EQ(Make("Beeper", {{"up code", longest}}).text(2), std::string(1020, 'x') + "\xFC\xFC");
  EXPECT_EQ(Refusal("Beeper", {{"up code", longest + "x"}}),
            "up code: the text is longer than 1022 bytes, so that Beeper could not read it");
  EXPECT_EQ(Refusal("Beeper", {{"report message", longest + "x"}}),
            "report message: the text is longer than 1022 bytes, so that Beeper could not read it");
  const std::string any_length(5000, 'x');
  EXPECT_EQ(Make("WinPopup", {{"message", any_length}}).text(1), any_length);
}

TEST(MakeInstance, RefusesCharactersThatTheCodePageLacks) {
  EXPECT_EQ(Refusal("WinPopup", {{"Destination", "für ☎"}}),
            "destination: the text has characters that the system's code page lacks");
}

}  // namespace
}  // namespace brantel::host
