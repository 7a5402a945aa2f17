#include "host/instances/class_fields.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

#include "host/outcome/command_failure.h"
#include "module/class_descriptions.h"

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
  return MakeInstance(FindLayout(class_name), values, Encode);
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

TEST(FindLayout, TakesAClassNameInAnyLetterCase) {
  for (const ClassDescription* notifier_class : ClassDescriptions()) {
    const InstanceLayout* const layout = &notifier_class->instances;
    EXPECT_EQ(&FindLayout(std::string(layout->class_name)), layout);
  }
  EXPECT_EQ(FindLayout("smtpmail").class_name, "SMTPMail");
  EXPECT_EQ(FindLayout("BEEPER").class_name, "Beeper");
}

TEST(FindLayout, TellsWhichClassesThereAre) {
  std::string names;
  for (const ClassDescription* notifier_class : ClassDescriptions()) {
    names.append(names.empty() ? "" : ", ").append(notifier_class->instances.class_name);
  }
  for (const std::string name : {"Fax", "", "Beepe", "Beeper "}) {
    try {
      FindLayout(name);
      ADD_FAILURE() << name;
    } catch (const CommandFailure& failure) {
      EXPECT_EQ(failure.exit_code(), ExitCode::kWrongUsage);
      EXPECT_EQ(failure.what(),
                "CLASS: '" + name + "' is not a notifier class; the classes are " + names);
    }
  }
}

TEST(FieldTable, TellsWhatEachFieldMayHold) {
  EXPECT_EQ(FieldTable(FindLayout("Pager")),
            "Field              Value\n"
            "pager number       text of at most 1022 bytes\n"
            "terminal password  text of at most 1022 bytes\n"
            "pager ID           text of at most 1022 bytes\n"
            "message            text of at most 1022 bytes\n"
            "protocol           text of at most 1022 bytes\n"
            "settings profile   number from 0 to 10\n");
  EXPECT_EQ(FieldTable(FindLayout("WinPopup")),
            "Field        Value\n"
            "destination  text\n"
            "message      text\n");
  EXPECT_EQ(FieldTable(FindLayout("Sound")),
            "Field            Value\n"
            "wave filename    text of at most 1022 bytes\n"
            "continuous play  number from -2147483648 to 2147483647\n");
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
            "'wave' is not a field of Sound; the fields are wave filename, continuous play");
  EXPECT_EQ(Refusal("Sound", {{"wavefilename", "x"}}),
            "'wavefilename' is not a field of Sound; the fields are wave filename, continuous "
            "play");
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
