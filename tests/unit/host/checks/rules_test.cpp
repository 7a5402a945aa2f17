#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <set>
#include <string>
#include <tuple>
#include <vector>

#include "host/checks/diagnosis.h"
#include "module/class_descriptions.h"
#include "tests/unit/host/checks/fake_checked_system.h"

namespace brantel::host {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

using Values = std::map<std::string, std::string>;

// Values that nothing is wrong with, on the computer of HealthySystem.
const std::map<std::string, Values> kSoundValues = {
    {"SMTPMail",
     {{"gateway", "192.0.2.25"},
      {"to", "a@example.com, b@example.com"},
      {"from", "host@example.com"},
      {"subject", "%n: 100%%"},
      {"message", "%C\r\n..\r\n"}}},
    {"Sound", {{"wave filename", "C:\\Waves\\alarm.wav"}, {"continuous play", "1"}}},
    {"WinPopup", {{"destination", "OPERATOR"}, {"message", "%n: %C"}}},
    {"LaunchProgram",
     {{"program filename", R"("C:\Program Files\restart.exe")"},
      {"working path", "C:\\Waves"},
      {"program arguments", "\"%n\""}}},
    {"Beeper",
     {{"beeper number", "5551234"},
      {"dialing options", "ATDT%s,,,,%s#"},
      {"up code", "1"},
      {"down code", "2"},
      {"SNMP trap code", "3"}}},
    {"Pager",
     {{"pager number", "0,5551234"},
      {"terminal password", "1234"},
      {"pager ID", "007"},
      {"message", "%n %C"},
      {"protocol", "TAP"}}},
    {"Voice",
     {{"phone number", "+41 44 555 12 34"},
      {"repeat message", "C:\\Waves\\alarm.wav"},
      {"count", "3"},
      {"button", "11"},
      {"item down", "C:\\Waves\\alarm.wav"}}},
};

FakeCheckedSystem HealthySystem() {
  FakeCheckedSystem system;
  system.AddFile("C:\\module.dll");
  system.AddWave("C:\\Waves\\alarm.wav");
  system.AddFile("C:\\Waves\\notes.wav", "just some notes");
  system.AddFile("C:\\Program Files\\restart.exe");
  system.AddFile("C:\\restart.bat");
  system.directories.insert(FakeCheckedSystem::FileSystemName("C:\\Waves"));
  system.programs.insert("notepad.exe");
  return system;
}

InstanceFile FileWith(const std::string& class_name, const Values& values) {
  const ClassDescription& notifier_class = *FindClassDescription(class_name);
  const InstanceLayout& layout = notifier_class.instances;
  Instance stored(layout.fields.size());
  for (const auto& [name, value] : values) {
    for (std::size_t i = 0; i < layout.fields.size(); ++i) {
      if (layout.fields[i].name != name) continue;
      if (layout.fields[i].kind == FieldKind::kInteger) {
        stored.set_integer(i, std::stoi(value));
      } else {
        stored.set_text(i, value);
      }
    }
  }
  return {.name = "Night", .layout = &layout, .instance = stored, .stored = stored};
}

// A configuration that breaks one rule, and no other.
struct BrokenConfiguration {
  std::string rule;
  Severity severity;
  std::string class_name;
  Values values{};                                  // in place of the sound ones
  std::function<void(FakeCheckedSystem&)> spoil{};  // what is wrong with the computer
  Reach reach = Reach::kOffline;
};

std::function<void(FakeCheckedSystem&)> Setting(const std::string& class_name,
                                                const std::string& name, const std::string& text) {
  return [=](FakeCheckedSystem& system) { system.Set(class_name, name, text); };
}

constexpr Severity kF = Severity::kFailure;
constexpr Severity kW = Severity::kWarning;

const std::vector<BrokenConfiguration>& Configurations() {
  using System = FakeCheckedSystem;
  static const std::vector<BrokenConfiguration> kConfigurations = {
      {"registered", kF, "Sound", {}, [](System& s) { s.registration = {}; }},
      {"registered-file",
       kF,
       "Sound",
       {},
       [](System& s) { s.registration.module_file = "D:\\old.dll"; }},
      {"registered-bitness",
       kF,
       "Voice",
       {},
       [](System& s) { s.registration.has_fitting_bits = false; }},
      {"registered-copy", kW, "Pager", {}, [](System& s) { s.registration.is_own_copy = false; }},
      {"code-page", kF, "WinPopup", {{"message", "f\x81r"}}},
      {"unknown-variable", kW, "SMTPMail", {{"message", "%n %x"}}},
      {"unknown-variable", kW, "LaunchProgram", {{"program arguments", "%%%N"}}},
      {"variable-stays", kW, "WinPopup", {{"destination", "%n"}}},
      {"setting-code-page", kF, "Beeper", {}, Setting("Beeper", "Settings_ModemString", "AT\x81")},
      {"setting-number",
       kW,
       "Beeper",
       {},
       [](System& s) {
         s.Set("Beeper", "Settings_Timeout", "");
         s.store.keys.begin()->second["Settings_Timeout"] = {SettingType::kNumber,
                                                             std::string("\x07\1\0\0", 4)};
       }},

      {"mail-gateway", kF, "SMTPMail", {{"gateway", ""}}},
      {"mail-gateway-address", kF, "SMTPMail", {{"gateway", "mail.example.com"}}},
      {"mail-gateway-address", kF, "SMTPMail", {{"gateway", "192.0.2.256"}}},
      {"mail-gateway-address", kF, "SMTPMail", {{"gateway", "192.0.2.25 "}}},
      {"mail-gateway-address", kF, "SMTPMail", {{"gateway", "255.255.255.255"}}},
      {"mail-gateway-address", kF, "SMTPMail", {{"gateway", "1.2.3.4.5"}}},
      {"mail-gateway-form", kW, "SMTPMail", {{"gateway", "010.0.0.1"}}},
      {"mail-gateway-form", kW, "SMTPMail", {{"gateway", "10.1"}}},
      {"mail-gateway-greeting",
       kF,
       "SMTPMail",
       {},
       [](System& s) { s.greeting = ""; },
       Reach::kOnline},
      {"mail-gateway-greeting",
       kF,
       "SMTPMail",
       {},
       [](System& s) { s.greeting = "554 no"; },
       Reach::kOnline},
      {"mail-to", kF, "SMTPMail", {{"to", ""}}},
      {"mail-to-length", kF, "SMTPMail", {{"to", "a@" + std::string(510, 'b')}}},
      {"mail-to-separator", kW, "SMTPMail", {{"to", "a@example.com;b@example.com"}}},
      {"mail-to-empty", kW, "SMTPMail", {{"to", "a@example.com, ,b@example.com"}}},
      {"mail-to-empty", kW, "SMTPMail", {{"to", "a@example.com,"}}},
      {"mail-to-at", kW, "SMTPMail", {{"to", "a@example.com,root"}}},
      {"mail-to-line", kF, "SMTPMail", {{"to", "a@example.com,\r\nb@example.com"}}},
      {"mail-from", kF, "SMTPMail", {{"from", ""}}},
      {"mail-from-at", kW, "SMTPMail", {{"from", "host"}}},
      {"mail-from-line", kW, "SMTPMail", {{"from", "a@example.com\n"}}},
      {"mail-subject-line", kW, "SMTPMail", {{"subject", "a\rb"}}},
      {"mail-subject-length", kW, "SMTPMail", {{"subject", std::string(480, 'x')}}},
      {"mail-message", kW, "SMTPMail", {{"message", ""}}},
      {"mail-message-full-stop", kF, "SMTPMail", {{"message", "a\r\n.\r\nb"}}},
      {"mail-message-full-stop", kF, "SMTPMail", {{"message", "."}}},
      {"mail-message-full-stop", kF, "SMTPMail", {{"message", "a\r\n."}}},
      {"mail-message-line-end", kW, "SMTPMail", {{"message", "a\nb"}}},
      {"mail-message-line-end", kW, "SMTPMail", {{"message", "a\rb"}}},
      {"mail-message-line-end", kW, "SMTPMail", {{"message", "a\r"}}},
      {"mail-message-line-length", kW, "SMTPMail", {{"message", std::string(999, 'x')}}},
      {"mail-timeout", kW, "SMTPMail", {}, Setting("SMTPMail", "Settings_Timeout", "99")},
      {"mail-timeout", kW, "SMTPMail", {}, Setting("SMTPMail", "Settings_Timeout", "ten")},
      {"mail-timeout-long", kW, "SMTPMail", {}, Setting("SMTPMail", "Settings_Timeout", "60001")},

      {"sound-wave", kF, "Sound", {{"wave filename", ""}}},
      {"sound-wave-file", kF, "Sound", {{"wave filename", "C:\\Waves\\alarm.mp3"}}},
      {"sound-wave-file", kF, "Sound", {{"wave filename", "C:\\Waves"}}},
      {"sound-wave-form", kF, "Sound", {{"wave filename", "c:/waves/NOTES.WAV"}}},
      {"sound-wave-relative",
       kW,
       "Sound",
       {{"wave filename", "alarm.wav"}},
       [](System& s) { s.AddWave("alarm.wav"); }},
      {"sound-wave-relative",
       kW,
       "Sound",
       {{"wave filename", "C:alarm.wav"}},
       [](System& s) { s.AddWave("C:alarm.wav"); }},
      {"sound-wave-remote", kW, "Sound", {{"wave filename", "//server/alarm.wav"}}},
      {"sound-device", kF, "Sound", {}, [](System& s) { s.has_sound_device = false; }},

      {"popup-destination", kF, "WinPopup", {{"destination", ""}}},
      {"popup-destination-length", kW, "WinPopup", {{"destination", "OPERATORSCOMPUTER"}}},
      {"popup-message", kF, "WinPopup", {{"message", ""}}},
      {"popup-message-length", kW, "WinPopup", {{"message", std::string(1025, 'x')}}},
      {"popup-library",
       kF,
       "WinPopup",
       {},
       [](System& s) { s.messenger = MessengerState::kNoLibrary; }},
      {"popup-service",
       kF,
       "WinPopup",
       {},
       [](System& s) { s.messenger = MessengerState::kNotInstalled; }},
      {"popup-service-runs",
       kF,
       "WinPopup",
       {},
       [](System& s) { s.messenger = MessengerState::kStopped; }},

      {"program", kF, "LaunchProgram", {{"program filename", ""}}},
      {"program-file", kF, "LaunchProgram", {{"program filename", "C:\\nowhere.exe"}}},
      {"program-file", kF, "LaunchProgram", {{"program filename", R"("C:\restart.bat x")"}}},
      {"program-other",
       kF,
       "LaunchProgram",
       {{"program filename", "C:\\Program Files\\restart.exe"}},
       [](System& s) { s.AddFile("c:\\program.exe"); }},
      {"program-blanks",
       kW,
       "LaunchProgram",
       {{"program filename", "C:\\Program Files\\restart.exe"}}},
      {"program-folder", kW, "LaunchProgram", {{"program filename", "notepad.exe"}}},
      {"program-working-path", kF, "LaunchProgram", {{"working path", "C:\\restart.bat"}}},
      {"program-working-path", kF, "LaunchProgram", {{"working path", "D:\\"}}},
      {"program-working-path-missing", kW, "LaunchProgram", {{"working path", ""}}},
      {"program-working-path-relative",
       kW,
       "LaunchProgram",
       {{"working path", "here"}},
       [](System& s) { s.directories.insert("here"); }},
      {"program-batch", kW, "LaunchProgram", {{"program filename", "C:\\Restart.BAT"}}},

      {"beeper-number", kF, "Beeper", {{"beeper number", ""}}},
      {"beeper-number-digits", kF, "Beeper", {{"beeper number", "W,"}}},
      {"beeper-number-command", kF, "Beeper", {{"beeper number", "5551234;"}}},
      {"beeper-number-characters", kW, "Beeper", {{"beeper number", "555x1234"}}},
      {"beeper-dialing-options", kW, "Beeper", {{"dialing options", ""}}},
      {"beeper-code", kW, "Beeper", {{"up code", ""}}},
      {"beeper-code", kW, "Beeper", {{"down code", ""}}},
      {"beeper-code", kW, "Beeper", {{"SNMP trap code", ""}}},
      {"beeper-code-command", kF, "Beeper", {{"up code", "1;"}}},
      {"beeper-code-command", kF, "Beeper", {{"down code", ";"}}},
      {"beeper-code-command", kF, "Beeper", {{"SNMP trap code", "1;2"}}},
      {"beeper-code-characters", kW, "Beeper", {{"up code", "up"}}},
      {"beeper-code-characters", kW, "Beeper", {{"down code", "1_"}}},
      {"beeper-code-characters", kW, "Beeper", {{"SNMP trap code", "&"}}},
      {"port", kF, "Beeper", {}, Setting("Beeper", "Settings_COMPort", "com1")},
      {"port", kF, "Beeper", {}, Setting("Beeper", "Settings_COMPort", "COM")},
      {"port-there", kF, "Beeper", {}, Setting("Beeper", "Settings_COMPort", "COM3")},
      {"port-there",
       kF,
       "Beeper",
       {{"settings profile", "7"}},
       Setting("Beeper\\07", "Settings_COMPort", "COM4294967296")},
      {"port-open", kF, "Beeper", {}, [](System& s) { s.modem_answer.reset(); }, Reach::kOnline},
      {"modem", kF, "Beeper", {}, [](System& s) { s.modem_answer = ""; }, Reach::kOnline},
      {"rate", kW, "Beeper", {}, Setting("Beeper", "Settings_Baud", "fast")},
      {"rate-usual", kW, "Beeper", {}, Setting("Beeper", "Settings_Baud", "10")},
      {"beeper-dial-command", kF, "Beeper", {}, Setting("Beeper", "Settings_DialString", "%s,%s")},
      {"beeper-dial-number", kF, "Beeper", {}, Setting("Beeper", "Settings_DialString", "ATDT911")},
      {"beeper-dial-message", kW, "Beeper", {}, Setting("Beeper", "Settings_DialString", "ATDT%s")},
      {"beeper-dial-directive",
       kW,
       "Beeper",
       {},
       Setting("Beeper", "Settings_DialString", "ATDT%s,%s%d")},
      {"modem-command", kF, "Beeper", {}, Setting("Beeper", "Settings_ModemString", "E0")},
      {"modem-results", kF, "Beeper", {}, Setting("Beeper", "Settings_ModemString", "ATE0q1")},
      {"modem-results", kF, "Beeper", {}, Setting("Beeper", "Settings_ModemString", "ATV")},
      {"beeper-timeout", kW, "Beeper", {}, Setting("Beeper", "Settings_Timeout", "-5")},
      {"beeper-timeout-long",
       kW,
       "Beeper",
       {},
       Setting("Beeper", "Settings_Timeout", "99999999999")},

      {"pager-number", kF, "Pager", {{"pager number", ""}}},
      {"pager-number-length", kF, "Pager", {{"pager number", "12"}}},
      {"pager-number-command", kF, "Pager", {{"pager number", "123;"}}},
      {"pager-number-characters", kW, "Pager", {{"pager number", "0=123"}}},
      {"pager-id", kF, "Pager", {{"pager ID", ""}}},
      {"pager-id-length", kF, "Pager", {{"pager ID", "12"}}},
      {"pager-id-digits", kF, "Pager", {{"pager ID", "smith"}}},
      {"pager-message", kF, "Pager", {{"message", ""}}},
      {"pager-message-length", kW, "Pager", {{"message", std::string(247, 'x')}}},
      {"pager-message-length",
       kW,
       "Pager",
       {{"message", std::string(157, 'x')}, {"protocol", "SMS-TAP"}}},
      {"pager-message-length",
       kW,
       "Pager",
       {{"message", std::string(81, '\xFC')}, {"protocol", "UCP-SMS"}, {"terminal password", ""}}},
      {"pager-message-length",
       kW,
       "Pager",
       {{"message", std::string(101, 'x')}, {"protocol", "NTT"}},
       Setting("Pager", "Settings_8N1", "1")},
      {"pager-message-characters", kW, "Pager", {{"message", "f\xFCr"}}},
      {"pager-protocol-missing", kF, "Pager", {{"protocol", ""}}},
      {"pager-protocol", kF, "Pager", {{"protocol", "UCP"}}},
      {"pager-protocol", kF, "Pager", {{"protocol", "tap"}}},
      {"pager-protocol", kF, "Pager", {{"protocol", "TAP "}}},
      {"pager-password-length",
       kW,
       "Pager",
       {{"terminal password", "12345"}, {"protocol", "NTT"}},
       Setting("Pager", "Settings_8N1", "1")},
      {"pager-password-unused", kW, "Pager", {{"protocol", "UCP-SMS"}}},
      {"port", kF, "Pager", {}, Setting("Pager", "Settings_COMPort", "2")},
      {"port-there", kF, "Pager", {}, Setting("Pager", "Settings_COMPort", "COM12")},
      {"port-open", kF, "Pager", {}, [](System& s) { s.modem_answer.reset(); }, Reach::kOnline},
      {"modem", kF, "Pager", {}, [](System& s) { s.modem_answer = "ERROR"; }, Reach::kOnline},
      {"rate", kW, "Pager", {}, Setting("Pager", "Settings_Baud", " 9600")},
      {"rate-usual", kW, "Pager", {}, Setting("Pager", "Settings_Baud", "9601")},
      {"modem-command", kF, "Pager", {}, Setting("Pager", "Settings_ModemString", "E0AT")},
      {"modem-results", kF, "Pager", {}, Setting("Pager", "Settings_ModemString", "ATE0Q1V1")},
      {"pager-modem-echo", kW, "Pager", {}, Setting("Pager", "Settings_ModemString", "ATE1&E0")},
      {"pager-framing", kW, "Pager", {}, Setting("Pager", "Settings_8N1", "yes")},
      {"pager-framing-japanese", kW, "Pager", {{"protocol", "NTT"}}},

      {"voice-number", kF, "Voice", {{"phone number", ""}}},
      {"voice-number-digits", kF, "Voice", {{"phone number", "smith"}}},
      {"voice-number-length", kF, "Voice", {{"phone number", std::string(64, '1')}}},
      {"voice-button", kF, "Voice", {{"button", "12"}}},
      {"voice-button", kF, "Voice", {{"button", "-1"}}},
      {"voice-count", kF, "Voice", {{"count", "-2"}}},
      {"voice-repeat-missing", kF, "Voice", {{"repeat message", ""}}},
      {"voice-repeat-file", kF, "Voice", {{"repeat message", "C:\\Waves\\"}}},
      {"voice-repeat-form", kF, "Voice", {{"repeat message", "C:\\Waves\\notes.wav"}}},
      {"voice-repeat-relative",
       kW,
       "Voice",
       {{"repeat message", "alarm.wav"}},
       [](System& s) { s.AddWave("alarm.wav"); }},
      {"voice-item-down-file", kF, "Voice", {{"item down", "C:\\x.wav"}}},
      {"voice-item-down-form", kF, "Voice", {{"item down", "C:\\Waves\\notes.wav"}}},
      {"voice-item-up-file", kF, "Voice", {{"item up", "C:\\x.wav"}}},
      {"voice-item-up-form", kF, "Voice", {{"item up", "C:\\Waves\\notes.wav"}}},
      {"voice-service-down-file", kF, "Voice", {{"service down", "C:\\x.wav"}}},
      {"voice-service-down-form", kF, "Voice", {{"service down", "C:\\Waves\\notes.wav"}}},
      {"voice-service-up-file", kF, "Voice", {{"service up", "C:\\x.wav"}}},
      {"voice-service-up-form", kF, "Voice", {{"service up", "C:\\Waves\\notes.wav"}}},
      {"voice-telephony",
       kF,
       "Voice",
       {},
       [](System& s) { s.voice_line = VoiceLineState::kNoTelephony; }},
      {"voice-line",
       kF,
       "Voice",
       {},
       [](System& s) { s.voice_line = VoiceLineState::kNoVoiceLine; }},
      {"voice-line-opens",
       kF,
       "Voice",
       {},
       [](System& s) { s.voice_line_opens = false; },
       Reach::kOnline},
  };
  return kConfigurations;
}

// What is found of the class and of an instance of it.
std::vector<Finding> FindingsOf(const std::string& class_name, const Values& changed,
                                FakeCheckedSystem& system, Reach reach) {
  Values values = kSoundValues.at(class_name);
  for (const auto& [name, value] : changed)
    values[name] = value;
  auto findings = DiagnoseClass(*FindClassDescription(class_name), system, reach).findings;
  const auto of_instance = DiagnoseInstance(FileWith(class_name, values), system, reach).findings;
  findings.insert(findings.end(), of_instance.begin(), of_instance.end());
  return findings;
}

TEST(Rules, FindNothingWrongWithWhatIsSound) {
  for (const ClassDescription* notifier_class : ClassDescriptions()) {
    FakeCheckedSystem system = HealthySystem();
    const std::string name(notifier_class->instances.class_name);
    const auto findings = FindingsOf(name, {}, system, Reach::kOnline);
    for (const Finding& finding : findings)
      ADD_FAILURE() << name << ": " << FindingText(finding);
  }
}

TEST(Rules, FindEachConfigurationsOneFault) {
  for (const BrokenConfiguration& broken : Configurations()) {
    FakeCheckedSystem system = HealthySystem();
    if (broken.spoil) broken.spoil(system);
    const auto findings = FindingsOf(broken.class_name, broken.values, system, broken.reach);
    std::vector<std::string> rules;
    for (const Finding& finding : findings) {
      rules.push_back(finding.rule);
      if (finding.rule != broken.rule) continue;
      EXPECT_EQ(finding.severity, broken.severity) << broken.rule;
    }
    // What was looked at without the spoiled system's help may be found twice, of class and
    // instance.
    EXPECT_THAT(rules, Contains(broken.rule));
    for (const std::string& rule : rules)
      EXPECT_EQ(rule, broken.rule) << "beside " << broken.rule;
  }
}

// What a rule is about, as its findings say; empty where it is about whatever is wrong.
std::string SubjectOf(const Rule& rule) {
  if (rule.about == About::kClass || rule.place == kEveryPlace) return "";
  return std::string(rule.about == About::kField
                         ? rule.notifier_class->instances.fields[rule.place].name
                         : SettingsOf(*rule.notifier_class)[rule.place].name);
}

TEST(Rules, AreAllBrokenByAConfiguration) {
  std::set<std::tuple<std::string, std::string, std::string>> broken;  // rule, class, subject
  for (const BrokenConfiguration& configuration : Configurations()) {
    FakeCheckedSystem system = HealthySystem();
    if (configuration.spoil) configuration.spoil(system);
    for (const Finding& finding :
         FindingsOf(configuration.class_name, configuration.values, system, configuration.reach)) {
      broken.emplace(finding.rule, configuration.class_name, finding.subject);
      broken.emplace(finding.rule, configuration.class_name, "");
      broken.emplace(finding.rule, "", "");
    }
  }
  std::set<std::tuple<std::string, std::string, std::string>> rules;
  for (const Rule& rule : Rules()) {
    const std::string name(rule.name);
    const std::string class_name(
        rule.notifier_class != nullptr ? rule.notifier_class->instances.class_name : "");
    const auto key = std::tuple(name, class_name, SubjectOf(rule));
    EXPECT_TRUE(rules.insert(key).second) << name << " is there twice";
    EXPECT_TRUE(broken.contains(key)) << name << " of " << class_name << " is broken by none";
  }
}

TEST(Rules, SayWhatToDo) {
  for (const Rule& rule : Rules()) {
    EXPECT_FALSE(rule.complaint.empty()) << rule.name;
    EXPECT_FALSE(rule.remedy.empty()) << rule.name;
    EXPECT_NE(rule.severity, Severity::kOk) << rule.name;
  }
}

TEST(Rules, TouchNoDeviceOffline) {
  for (const BrokenConfiguration& broken : Configurations()) {
    FakeCheckedSystem system = HealthySystem();
    if (broken.spoil) broken.spoil(system);
    FindingsOf(broken.class_name, broken.values, system, Reach::kOffline);
    EXPECT_THAT(system.tried, IsEmpty()) << broken.rule;
  }
}

TEST(Rules, TryOnlineWhatHasNotFailedYet) {
  FakeCheckedSystem system = HealthySystem();
  FindingsOf("SMTPMail", {{"gateway", "mail.example.com"}}, system, Reach::kOnline);
  system.Set("Pager", "Settings_COMPort", "COM9");
  FindingsOf("Pager", {}, system, Reach::kOnline);
  system.voice_line = VoiceLineState::kNoVoiceLine;
  FindingsOf("Voice", {}, system, Reach::kOnline);
  EXPECT_THAT(system.tried, IsEmpty());
}

TEST(Rules, SetThePortUpAsTheClassWould) {
  FakeCheckedSystem system = HealthySystem();
  system.modem_answer.reset();
  system.Set("Pager", "Settings_Baud", "5");
  FindingsOf("Pager", {}, system, Reach::kOnline);
  system.Set("Beeper", "Settings_COMPort", "COM2");
  FindingsOf("Beeper", {}, system, Reach::kOnline);
  EXPECT_THAT(system.tried, ElementsAre("modem COM1 14400 7E1", "modem COM2 300 8N1"));
}

TEST(Rules, DoNotTellSecrets) {
  FakeCheckedSystem system = HealthySystem();
  system.Set("Pager", "Settings_8N1", "1");
  const auto findings = FindingsOf("Pager", {{"terminal password", "sesame"}, {"protocol", "NTT"}},
                                   system, Reach::kOffline);
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(FindingText(findings[0]),
            "terminal password is longer than the 4 characters that NTT sends of it; shorten it");
}

}  // namespace
}  // namespace brantel::host
