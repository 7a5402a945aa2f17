#include "host/preview/preview.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "beeper/beeper_description.h"
#include "launch_program/launch_program_description.h"
#include "pager/pager_description.h"
#include "smtp_mail/smtp_mail_description.h"
#include "sound/sound_description.h"
#include "tests/unit/host/preview/previewed_machine.h"
#include "tests/unit/project_file.h"
#include "voice/voice_description.h"
#include "win_popup/win_popup_description.h"

namespace brantel::host {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::StartsWith;
using namespace std::string_literals;

std::vector<std::string> NamesOfParts(const Preview& preview) {
  std::vector<std::string> names;
  for (const PreviewPart& part : preview.parts)
    names.push_back(part.what);
  return names;
}

const PreviewPart& PartOf(const Preview& preview, std::string_view what) {
  static const PreviewPart kNone{.what = "none"};
  for (const PreviewPart& part : preview.parts) {
    if (part.what == what) return part;
  }
  return kNone;
}

std::string AllBytes(const Preview& preview) {
  std::string bytes;
  for (const PreviewPart& part : preview.parts)
    bytes += part.bytes;
  return bytes;
}

class PreviewTest : public ::testing::Test {
 protected:
  void StoreBeeper() {
    using namespace beeper_field;
    machine_.Store(kBeeper, {{kBeeperNumber, "5551234"},
                             {kUpCode, "1"},
                             {kDownCode, "2"},
                             {kTrapCode, "3"},
                             {kReportMessage, "*9*"}});
    machine_.variables.Assign("C=17");
  }

  void StorePager(const std::string& protocol, const std::string& message,
                  const std::string& pager_id = "12345") {
    using namespace pager_field;
    machine_.Store(kPager, {{kPagerNumber, "5550200"},
                            {kTerminalPassword, "geheim"},
                            {kPagerId, pager_id},
                            {kMessage, message},
                            {kProtocol, protocol}});
  }

  void StoreMail(const std::string& message, const std::string& to = "ann@example.org") {
    using namespace smtp_mail_field;
    machine_.Store(kSMTPMail, {{kGateway, "192.0.2.25"},
                               {kTo, to},
                               {kFrom, "ops@example.org"},
                               {kSubject, "%n is down"},
                               {kMessage, message}});
    machine_.variables.Assign("n=router7");
  }

  void StoreVoice(std::int32_t count, std::int32_t button) {
    using namespace voice_field;
    machine_.Store(kVoice,
                   {{kPhoneNumber, "5550100"},
                    {kRepeatMessage, "repeat.wav"},
                    {voice_field::kItemDown, "down.wav"},
                    {voice_field::kServiceDown, "service.wav"}},
                   {{kCount, count}, {kButton, button}});
    machine_.variables.Assign("C=device.wav");
    for (const char* file : {"repeat.wav", "down.wav", "service.wav", "device.wav"})
      machine_.waves.files[file] = WaveBytes(std::string(8000, '\x80'));
  }

  PreviewedMachine machine_;
};

TEST_F(PreviewTest, TellsWhatABeeperIsSentInItsOrder) {
  StoreBeeper();
  const Preview preview = machine_.Look();
  EXPECT_EQ(preview.result, kOk);
  EXPECT_THAT(NamesOfParts(preview),
              ElementsAre("port", "modem initialisation", "dial command", "escape", "hang-up"));
  EXPECT_EQ(AllBytes(preview), "ATE0Q0V1X4\rATDT5551234,,,,217#\r+++ATH0\r");
  EXPECT_EQ(PartOf(preview, "port").words,
            "COM1 at 300 bits per second, 8 data bits, no parity, 1 stop bit");
  EXPECT_EQ(PartOf(preview, "dial command").words,
            "4 commas, at each of which the modem pauses for 2 s");
}

TEST_F(PreviewTest, CountsHowLongABeepTakes) {
  StoreBeeper();
  // Two reads, the pauses of the dial command and the time to dial, the time-out, the guard time.
  constexpr std::uint64_t kWaits = 2 * 2000 + 4 * 2000 + 1000 + 5 + 1000;
  // Eleven, 20, three and five bytes of ten bits each.
  constexpr std::uint64_t kOnTheLine = 366 + 666 + 100 + 166;
  const DeliveryTime time = machine_.Look().time;
  EXPECT_EQ(time.least, kWaits + kOnTheLine);
  EXPECT_THAT(time.most, StartsWith("59.4 s: "));
}

TEST_F(PreviewTest, GoesByTheSettingsOfTheInstancesProfile) {
  machine_.Store(kBeeper,
                 {{beeper_field::kBeeperNumber, "5551234"}, {beeper_field::kDownCode, "2"}},
                 {{beeper_field::kSettingsProfile, 7}});
  machine_.variables.Assign("C=17");
  auto& profile = machine_.settings.keys[R"(SOFTWARE\Brantel\Vantrel\notification\Beeper\07)"];
  profile["Settings_COMPort"] = {SettingType::kText, "COM3"};
  profile["Settings_Baud"] = {SettingType::kText, "9600"};
  profile["Settings_DialString"] = {SettingType::kText, "ATDP%s;%s"};
  const Preview preview = machine_.Look();
  EXPECT_THAT(PartOf(preview, "port").words, StartsWith("COM3 at 9600 bits per second"));
  EXPECT_EQ(PartOf(preview, "dial command").bytes, "ATDP5551234;217\r");
}

TEST_F(PreviewTest, HasTheEventChooseTheCode) {
  StoreBeeper();
  machine_.event = kServiceUp;
  EXPECT_EQ(PartOf(machine_.Look(), "dial command").bytes, "ATDT5551234,,,,117#\r");
  machine_.event = kNoEvent;
  EXPECT_EQ(PartOf(machine_.Look(), "dial command").bytes, "ATDT5551234,,,,*9*#\r");
}

TEST_F(PreviewTest, TellsOfAnEventThatABeeperDoesNotHandle) {
  StoreBeeper();
  machine_.event = AlertEvent{32};
  const Preview preview = machine_.Look();
  EXPECT_EQ(preview.result, kOk);
  EXPECT_THAT(preview.parts, IsEmpty());
  EXPECT_THAT(preview.log, HasSubstr("Currently an unhandled alert trigger"));
}

TEST_F(PreviewTest, FailsWhereNoFarEndCouldHelp) {
  StorePager("TAP", "");
  const Preview preview = machine_.Look();
  EXPECT_EQ(preview.result, kFail);
  EXPECT_THAT(NamesOfParts(preview), ElementsAre("port"));
  EXPECT_THAT(preview.log, HasSubstr("message"));
}

TEST_F(PreviewTest, TellsWhatATapCentreIsSent) {
  StorePager("TAP", "router7 is down");
  const Preview preview = machine_.Look();
  EXPECT_EQ(preview.result, kOk);
  EXPECT_THAT(NamesOfParts(preview),
              ElementsAre("port", "modem initialisation", "dial command", "wake-up", "log-in",
                          "page", "end of transmission", "escape", "hang-up"));
  EXPECT_EQ(AllBytes(preview),
            "ATE0Q0V1X4\rATDT5550200\r\r\x1BPG1geheim\r\x02"
            "12345\rrouter7 is down\r\x03"
            "6<:\r\x04\r+++ATH0\r");
  EXPECT_EQ(PartOf(preview, "page").words, "for pager 12345; checksum 6<: over 24 bytes");
  EXPECT_EQ(PartOf(preview, "port").words,
            "COM1 at 300 bits per second, 7 data bits, even parity, 1 stop bit");
}

TEST_F(PreviewTest, TellsWhereATapBlockIsCut) {
  StorePager("TAP", std::string(244, 'x') + "left over");
  const PreviewPart page = PartOf(machine_.Look(), "page");
  EXPECT_EQ(page.bytes.size(), 1 + 250 + 1 + 1 + 3 + 1);
  EXPECT_THAT(page.words, HasSubstr("; cut at 250 characters: \"left over\" left out"));
}

TEST_F(PreviewTest, CutsAPageByTheRulesOfItsProtocol) {
  StorePager("SMS-TAP", std::string(157, 'x') + "left over", "0012");
  const Preview preview = machine_.Look();
  EXPECT_EQ(preview.result, kOk);
  EXPECT_THAT(PartOf(preview, "page").words, StartsWith("for pager 12; "));
  EXPECT_THAT(PartOf(preview, "page").words,
              HasSubstr("; cut at 160 characters: \"left over\" left out"));
}

TEST_F(PreviewTest, TellsWhatTapCannotCarry) {
  StorePager("TAP",
             "\xFC"
             "ber 30\xB0");
  EXPECT_EQ(PartOf(machine_.Look(), "page").bytes,
            "\x02"
            "12345\rber 30\r\x03"
            "2=:\r");
  EXPECT_THAT(PartOf(machine_.Look(), "page").words,
              ::testing::EndsWith("; 2 bytes that are no printable ASCII left out"));
}

TEST_F(PreviewTest, TellsWhatAUcpCentreIsSent) {
  StorePager("UCP-SMS", "ALPHANUMERIC", "1234, 5678");
  const Preview preview = machine_.Look();
  EXPECT_EQ(preview.result, kOk);
  EXPECT_THAT(NamesOfParts(preview), ElementsAre("port", "attention", "modem initialisation",
                                                 "dial command", "page", "escape", "hang-up"));
  EXPECT_EQ(PartOf(preview, "page").bytes,
            "\x02"
            "00/00057/O/02/1/1234/5678///3/414C5048414E554D45524943/2B\x03");
  EXPECT_EQ(PartOf(preview, "page").words,
            "operation 02 for 1234/5678; transaction 00, the first of a process; checksum 2B over "
            "55 bytes");
}

TEST_F(PreviewTest, TellsWhereAUcpMessageIsCut) {
  StorePager("UCP-SMS", std::string(83, 'x'));
  EXPECT_THAT(PartOf(machine_.Look(), "page").words,
              ::testing::EndsWith("; cut at 80 bytes: 3 bytes left out"));
}

TEST_F(PreviewTest, TellsWhatNttIsSent) {
  // The word for telephone, in Shift_JIS.
  StorePager("NTT", "\x93\x64\x98\x62");
  const Preview preview = machine_.Look();
  EXPECT_EQ(preview.result, kOk);
  EXPECT_THAT(NamesOfParts(preview), ElementsAre("port", "modem initialisation", "dial command",
                                                 "wake-up", "page", "escape", "hang-up"));
  EXPECT_EQ(PartOf(preview, "page").bytes,
            "8000C00000********,10000,12345AAAAAAAAAA,gehe,004\x93\x64\x98\x62\r");
  EXPECT_EQ(PartOf(preview, "page").words, "4 bytes of Shift_JIS");
}

TEST_F(PreviewTest, TellsWhereAnNttMessageIsCut) {
  StorePager("NTT", std::string(103, 'x'));
  EXPECT_EQ(PartOf(machine_.Look(), "page").words,
            "100 bytes of Shift_JIS; cut at 100 bytes: 3 bytes left out");
}

// Reads of two seconds for the modem's answers and of one for the centre's, and the guard time.
TEST_F(PreviewTest, CountsHowLongAPageTakes) {
  machine_.settings.keys[R"(SOFTWARE\Brantel\Vantrel\notification\Pager)"]["Settings_Baud"] = {
      SettingType::kText, "115200"};
  constexpr std::uint64_t kMostOnTheLine = 50;
  const auto least_by = [&](const std::string& protocol) {
    StorePager(protocol, "router7 is down");
    return machine_.Look().time.least;
  };
  EXPECT_THAT(least_by("TAP"),
              ::testing::AllOf(::testing::Ge(10'000), ::testing::Le(10'000 + kMostOnTheLine)));
  EXPECT_THAT(least_by("UCP-SMS"),
              ::testing::AllOf(::testing::Ge(5'000), ::testing::Le(5'000 + kMostOnTheLine)));
  // Ten of them for a last word that the service does not say.
  EXPECT_THAT(least_by("NTT"),
              ::testing::AllOf(::testing::Ge(18'000), ::testing::Le(18'000 + kMostOnTheLine)));
}

TEST_F(PreviewTest, TellsWhatARelayIsSent) {
  StoreMail("%n does not answer.\r\n", "ann@example.org,bob@example.org");
  const Preview preview = machine_.Look();
  EXPECT_EQ(preview.result, kOk);
  EXPECT_THAT(NamesOfParts(preview),
              ElementsAre("connection", "greeting", "sender", "recipient", "recipient",
                          "announcement of the message", "headers", "body", "end of the message",
                          "farewell"));
  EXPECT_EQ(AllBytes(preview),
            "HELO watch\r\n"
            "MAIL From:ops@example.org\r\n"
            "RCPT To:<bob@example.org>\r\n"
            "RCPT To:<ann@example.org>\r\n"
            "DATA\r\n"
            "From: ops@example.org\r\n"
            "Date: Fri,  5 Mar 2004 07:08:09 +0000\r\n"
            "To: ann@example.org,bob@example.org\r\n"
            "Mime-Version: 1.0\r\n"
            "Content-Type: text/plain;charset=us-ascii\r\n"
            "Subject: router7 is down\r\n\r\n"
            "router7 does not answer.\r\n\r\n.\r\n"
            "QUIT\r\n");
  EXPECT_EQ(PartOf(preview, "body").bytes, "router7 does not answer.\r\n");
  EXPECT_EQ(PartOf(preview, "connection").words, "to 192.0.2.25, port 25");
  EXPECT_EQ(preview.time.least, 0U);
  EXPECT_THAT(preview.time.most, HasSubstr("10 s for each of 8 replies"));
}

TEST_F(PreviewTest, ShowsTheLinesThatARelayTakesForCommands) {
  StoreMail("Dear Ann,\r\n.\r\nhello\r\nRCPT To:<eve@example.org>");
  const Preview preview = machine_.Look();
  EXPECT_THAT(
      NamesOfParts(preview),
      ElementsAre("connection", "greeting", "sender", "recipient", "announcement of the message",
                  "headers", "body", "end of the message", "line that is no command", "recipient",
                  "line that is no command", "farewell"));
  EXPECT_EQ(PartOf(preview, "body").bytes, "Dear Ann,");
  EXPECT_EQ(PartOf(preview, "line that is no command").bytes, "hello\r\n");
  EXPECT_THAT(PartOf(preview, "line that is no command").words, HasSubstr("has ended above"));
}

TEST_F(PreviewTest, WritesNoSettings) {
  StoreMail("It is.\r\n");
  machine_.Look();
  EXPECT_THAT(machine_.settings.calls, ::testing::Each(::testing::Not(StartsWith("write"))));
  EXPECT_THAT(machine_.files.calls, ::testing::Each("read alert"));
}

TEST_F(PreviewTest, RefusesAGatewayThatIsNoAddress) {
  machine_.Store(kSMTPMail, {{smtp_mail_field::kGateway, "relay.example.org"},
                             {smtp_mail_field::kTo, "ann@example.org"},
                             {smtp_mail_field::kFrom, "ops@example.org"}});
  const Preview preview = machine_.Look();
  EXPECT_EQ(preview.result, kFail);
  EXPECT_THAT(preview.parts, IsEmpty());
}

TEST_F(PreviewTest, TellsWhatTheMessengerServiceGets) {
  using namespace win_popup_field;
  machine_.Store(kWinPopup, {{kDestination, "OPS"}, {kMessage, "Down: %n"}});
  machine_.variables.Assign("n=r7");
  const Preview preview = machine_.Look();
  EXPECT_EQ(preview.result, kOk);
  ASSERT_THAT(NamesOfParts(preview), ElementsAre("pop-up"));
  EXPECT_EQ(preview.parts[0].bytes, "D\0o\0w\0n\0:\0 \0r\0007\0"s);
  EXPECT_EQ(preview.parts[0].text, "Down: r7");
  EXPECT_EQ(preview.parts[0].words, "for OPS; 8 characters of UTF-16 in a buffer of 16 bytes");
}

TEST_F(PreviewTest, TellsWhereAPopupIsCut) {
  machine_.Store(kWinPopup,
                 {{win_popup_field::kDestination, "OPS"}, {win_popup_field::kMessage, "%n%n"}});
  machine_.variables.Assign("n=" + std::string(600, 'x'));
  EXPECT_THAT(PartOf(machine_.Look(), "pop-up").words,
              HasSubstr("; cut at 1024 characters: 176 characters left out"));
}

TEST_F(PreviewTest, TellsWhichProgramIsStartedWhere) {
  using namespace launch_program_field;
  machine_.Store(kLaunchProgram, {{kProgramFilename, "C:\\restart.exe"},
                                  {kWorkingPath, "C:\\work"},
                                  {kProgramArguments, "/host %n"}});
  machine_.variables.Assign("n=router7");
  const Preview preview = machine_.Look();
  ASSERT_THAT(NamesOfParts(preview), ElementsAre("command line", "folder"));
  EXPECT_EQ(preview.parts[0].bytes, "C:\\restart.exe /host router7");
  EXPECT_EQ(preview.parts[1].bytes, "C:\\work");
}

TEST_F(PreviewTest, TellsHowLongASoundIs) {
  machine_.Store(kSound, {{sound_field::kWaveFilename, "alarm.wav"}});
  machine_.waves.files["alarm.wav"] = WaveBytes(std::string(12000, '\x80'));
  const Preview preview = machine_.Look();
  ASSERT_THAT(NamesOfParts(preview), ElementsAre("sound"));
  EXPECT_EQ(preview.parts[0].bytes, "alarm.wav");
  EXPECT_EQ(preview.parts[0].words, "played once; 1.5 s long");
  EXPECT_EQ(preview.time.least, 1500U);
}

TEST_F(PreviewTest, TellsThatASoundGoesOn) {
  machine_.Store(kSound, {{sound_field::kWaveFilename, "missing.wav"}},
                 {{sound_field::kContinuousPlay, 1}});
  const Preview preview = machine_.Look();
  EXPECT_FALSE(Failed(preview.result));
  EXPECT_EQ(PartOf(preview, "sound").words,
            "played over and over, until another sound ends it or the host does; cannot be read "
            "as a wave, and the system plays its default sound");
  EXPECT_EQ(preview.time.least, 0U);
}

TEST_F(PreviewTest, LeavesWavesOfOtherComputersAlone) {
  machine_.Store(kSound, {{sound_field::kWaveFilename, R"(\\files\alarm.wav)"}});
  EXPECT_THAT(PartOf(machine_.Look(), "sound").words,
              HasSubstr("on another computer, and not looked at"));
  EXPECT_THAT(machine_.waves.calls, IsEmpty());
}

TEST_F(PreviewTest, TellsWhatACalledPersonHears) {
  StoreVoice(2, 5);
  const Preview preview = machine_.Look();
  EXPECT_EQ(preview.result, kOk);
  EXPECT_THAT(
      NamesOfParts(preview),
      ElementsAre("number", "repeat message", "message for the device", "message for the event"));
  EXPECT_EQ(AllBytes(preview), "5550100repeat.wavdevice.wavdown.wav");
  EXPECT_EQ(PartOf(preview, "repeat message").words,
            "1 s long; until the key 5 is pressed, 3 times at most");
  // Both messages: the key is pressed at once.
  EXPECT_EQ(preview.time.least, 2000U);
}

TEST_F(PreviewTest, TellsOfAServiceBeforeItsDevice) {
  StoreVoice(0, 99);
  machine_.event = kServiceDown;
  const Preview preview = machine_.Look();
  EXPECT_THAT(
      NamesOfParts(preview),
      ElementsAre("number", "repeat message", "message for the event", "message for the device"));
  EXPECT_EQ(AllBytes(preview), "5550100repeat.wavservice.wavdevice.wav");
}

TEST_F(PreviewTest, EndsACallThatNobodyCanAcknowledge) {
  StoreVoice(2'000'000'000, 42);
  const Preview preview = machine_.Look();
  EXPECT_EQ(preview.result, kFail);
  EXPECT_THAT(NamesOfParts(preview), ElementsAre("number", "repeat message"));
  EXPECT_THAT(preview.log, HasSubstr("No telephone has the key"));
}

TEST_F(PreviewTest, TellsOfAMessageThatCannotBeOpened) {
  StoreVoice(2, 5);
  machine_.waves.files.erase("device.wav");
  const Preview preview = machine_.Look();
  EXPECT_EQ(preview.result, kFail);
  EXPECT_EQ(PartOf(preview, "message for the device").words, "cannot be opened");
}

TEST(DeliveryTime, IsAsTheDocumentsTell) {
  const std::string document = ReadProjectFile("docs/delivery.md");
  for (const std::string_view most : {kMostOfTap, kMostOfSmsTap, kMostOfNtt, kMostOfUcp})
    EXPECT_THAT(document, HasSubstr("| " + std::string(most) + " |"));
}

}  // namespace
}  // namespace brantel::host
