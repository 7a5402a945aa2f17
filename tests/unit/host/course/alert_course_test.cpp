#include "host/course/alert_course.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "beeper/beeper_description.h"
#include "host/outcome/command_failure.h"
#include "launch_program/launch_program_description.h"
#include "module/class_descriptions.h"
#include "pager/pager_description.h"
#include "smtp_mail/smtp_mail_description.h"
#include "sound/sound_description.h"
#include "system/result.h"
#include "tests/unit/host/course/told_course.h"
#include "win_popup/win_popup_description.h"

namespace brantel::host {
namespace {

using Log = std::vector<std::string>;

Instance WithText(std::size_t field_count, std::size_t field, const std::string& text) {
  Instance instance(field_count);
  instance.set_text(field, text);
  return instance;
}

AlertCourse MailCourse() {
  return {"SMTPMail",
          WithText(smtp_mail_field::kFieldCount, smtp_mail_field::kGateway, "192.0.2.25")};
}

AlertCourse PageCourse(const std::string& protocol) {
  Instance instance = WithText(pager_field::kFieldCount, pager_field::kPagerNumber, "5550200");
  instance.set_text(pager_field::kProtocol, protocol);
  return {"Pager", instance};
}

std::string Returned(AlertCourse course, const Log& log, std::int32_t result) {
  return TextOf(Tell(std::move(course), log, AttemptEnd::kReturned, result).verdict);
}

std::string Ended(AlertCourse course, const Log& log, AttemptEnd end) {
  return TextOf(Tell(std::move(course), log, end, std::nullopt).verdict);
}

// What a page's log begins with.
Log Connected() {
  return {"Sending message to 123 via 5550200 on COM1\r\n",
          "sending \"ATE0\r\"\r\n",
          "waiting for completion\r\n",
          "returned \"\r\nOK\r\n\"\r\n",
          "sending \"ATDT5550200\r\"\r\n",
          "waiting for completion\r\n",
          "returned \"\r\nCONNECT 9600\r\n\"\r\n"};
}

Log LoggingIn() {
  Log log = Connected();
  log.insert(log.end(), {"sending \"\r\"\r\n", "returned \"ID=\"\r\n",
                         "Got ID=", "sending \"\x1BPG1\r\"\r\n", "waiting for completion\r\n"});
  return log;
}

Log Paging() {
  Log log = LoggingIn();
  log.insert(log.end(),
             {"returned \"\x06\r\x1B[p\r\"\r\n", "Got [p\r\n", "sending \"\x02 123\rHI\r\"\r\n"});
  return log;
}

// A mail's log up to its end, with this message in it.
Log MailOf(const std::string& message) {
  return {"sending msg via 192.0.2.25 to ann@example.org\r\n",
          "220 ready",
          "\r\n",
          "HELO watch\r\n",
          "250 ok",
          "\r\n",
          "MAIL From:",
          "<ops@example.org>",
          "\r\n",
          "250 ok",
          "\r\n",
          "RCPT To:<ann@example.org>\r\n",
          "250 ok",
          "\r\n",
          "DATA\r\n",
          "354 go ahead",
          "\r\n",
          "Subject: x\r\n\r\n",
          message,
          "\r\n.\r\n"};
}

Log operator+(Log log, const Log& more) {
  log.insert(log.end(), more.begin(), more.end());
  return log;
}

TEST(AlertCourse, TellsThePhaseThatATextBegins) {
  AlertCourse course = PageCourse("TAP");
  std::vector<std::string> phases;
  for (const std::string& text : LoggingIn()) {
    phases.push_back(course.Take(text).value_or("-"));
  }
  EXPECT_EQ(phases, (Log{"opening the port", "initialising the modem", "-", "-", "dialling 5550200",
                         "-", "connected at 9600", "waiting for the centre's prompt", "-", "-",
                         "logging in", "-"}));
}

TEST(AlertCourse, TellsThePhaseOnceItsTextIsThere) {
  AlertCourse course = PageCourse("TAP");
  EXPECT_EQ(course.Take("Sending message to 1"), std::nullopt);
  EXPECT_EQ(course.Take("23 via 5550200 on COM1"), std::nullopt);
  EXPECT_EQ(course.Take("\r\n"), "opening the port");
  EXPECT_EQ(course.Take("\n"), std::nullopt);
}

// Several texts at once are in the phase that the last of them begins.
TEST(AlertCourse, TellsTheLastPhaseOfSeveral) {
  AlertCourse course = PageCourse("TAP");
  std::string log;
  for (const std::string& text : LoggingIn()) {
    log += text;
  }
  EXPECT_EQ(course.Take(log), "logging in");
}

TEST(AlertCourse, TellsWhatItKnowsOfAnAttemptWithoutResult) {
  EXPECT_EQ(Ended(PageCourse("TAP"), {}, AttemptEnd::kTimedOut),
            "1  no result: the time ran out\n");
  EXPECT_EQ(Ended(PageCourse("TAP"), LoggingIn(), AttemptEnd::kInterrupted),
            "1  no result: it was interrupted while logging in\n");
  EXPECT_EQ(Ended(PageCourse("TAP"), LoggingIn() + Log{"returned \"\x15\r\"\r\n"},
                  AttemptEnd::kProcessDied),
            "1  no result: the process that was to deliver it ended while logging in; the centre "
            "refused the log-in\n   check the terminal password\n");
  EXPECT_EQ(
      Ended(PageCourse("TAP"), Paging() + Log{"returned \"\x06\r\"\r\n", "sending \"\x04\r\"\r\n"},
            AttemptEnd::kTimedOut),
      "1  no result: the time ran out while taking leave of the centre; the centre took the "
      "page\n");
  EXPECT_EQ(
      Ended(PageCourse("TAP"),
            Connected() + Log{"sending \"ATDT5550200\r\"\r\n", "returned \"BUSY\"\r\n", "Busy\r\n"},
            AttemptEnd::kTimedOut),
      "1  no result: the time ran out while waiting to dial 5550200 again; the number 5550200 "
      "is busy\n   try again later\n");
}

TEST(AlertCourse, CountsAReturnWithoutAResultAsAFailure) {
  EXPECT_EQ(TextOf(PageCourse("TAP").Finish(AttemptEnd::kReturned, std::nullopt)),
            "1  not delivered: the log does not tell why\n");
}

// What failed before a stage that succeeded does not matter.
TEST(AlertCourse, ForgetsWhatWentWrongBefore) {
  EXPECT_EQ(Returned(PageCourse("TAP"), Paging() + Log{"returned \"\"\r\n"}, kFail),
            "1  not confirmed: the centre did not answer the page\n   ask the service what it "
            "expects\n");
  EXPECT_EQ(Returned(PageCourse("TAP"),
                     LoggingIn() + Log{"returned \"\x15\r\"\r\n", "returned \"\x1B[p\r\"\r\n",
                                       "Got [p\r\n", "sending \"\x02 123\rHI\r\"\r\n"},
                     kFail),
            "1  not confirmed: the log does not tell why\n");
}

TEST(AlertCourse, GoesByTheResultAlone) {
  const Log refused = LoggingIn() + Log{"returned \"\x15\r\"\r\n"};
  EXPECT_TRUE(Tell(PageCourse("TAP"), refused, AttemptEnd::kReturned, kOk).verdict.delivered);
  EXPECT_TRUE(Tell(PageCourse("TAP"), refused, AttemptEnd::kReturned, 2).verdict.delivered);
  const Log taken = Paging() + Log{"returned \"\x06\r\"\r\n"};
  EXPECT_FALSE(Tell(PageCourse("TAP"), taken, AttemptEnd::kReturned, kFail).verdict.delivered);
  EXPECT_FALSE(Tell(PageCourse("TAP"), taken, AttemptEnd::kTimedOut, kOk).verdict.delivered);
}

// Far ends may say what the module says.
TEST(AlertCourse, KeepsTheWordsOfFarEndsApart) {
  EXPECT_EQ(Returned(PageCourse("TAP"),
                     LoggingIn() + Log{"returned \"\r\n - Failed to load notification from "
                                       "disk.\r\nMessage sent successfully\r\n\"\r\n"},
                     kFail),
            "1  not delivered: the centre did not take the log-in\n   check the terminal "
            "password\n");
  EXPECT_EQ(Returned(PageCourse("UCP-SMS"),
                     Connected() + Log{"sending \"\x02"
                                       "00/00041/O/02/1/123///3/48/00\x03\"\r\n",
                                       "returned \"no message!\r\ncomm read error 5\r\n\"\r\n"},
                     kFail),
            "1  not confirmed: the centre's answer holds neither an acceptance nor a refusal: no "
            "message!<0D><0A>comm read error 5\n   ask the service what it expects\n");
}

// A quotation mark and a line end are what a quotation ends with. A far end that sends them has
// not said all.
TEST(AlertCourse, ReadsOnBehindAQuotationThatAFarEndHasClosed) {
  EXPECT_EQ(Returned(PageCourse("TAP"),
                     LoggingIn() + Log{"returned \"say \"ID\"\r\nor go away\r\n\x15\"\r\n"}, kFail),
            "1  not delivered: the centre refused the log-in\n   check the terminal password\n");
}

TEST(AlertCourse, KnowsAMessageFromTheDialogueAroundIt) {
  const std::string message =
      "250 ok\r\nQUIT\r\n550 no\r\nrecv error 10004\r\nDATA\r\n - Failed to load notification from "
      "disk.\r\n";
  EXPECT_EQ(Returned(MailCourse(), MailOf(message) + Log{"554 spam", "\r\n", "QUIT\r\n"}, kFail),
            "1  not delivered: the relay refused the message: 554 spam\n   ask who runs the "
            "relay\n");
  // A relay takes what follows a full stop for commands; the last full stop is the module's.
  EXPECT_EQ(Returned(MailCourse(),
                     MailOf("a\r\n.\r\n250 ok\r\nQUIT\r\n221 bye\r\n") +
                         Log{"554 spam", "\r\n", "QUIT\r\n"},
                     kFail),
            "1  not delivered: the relay refused the message: 554 spam\n   ask who runs the "
            "relay\n");
}

TEST(AlertCourse, TellsOfRecipientsThatWereRefused) {
  const Log before = {"sending msg via 192.0.2.25 to a, b, c\r\n",
                      "220 ready\r\n",
                      "HELO watch\r\n",
                      "250 ok\r\n",
                      "MAIL From:<ops@example.org>\r\n",
                      "250 ok\r\n",
                      "RCPT To:<c@example.org>\r\n",
                      "550-no\r\n",
                      "550 such user\r\n",
                      "RCPT To:<b@example.org>\r\n"};
  const Log accepted = {"250 ok\r\n", "DATA\r\n", "354 go\r\n", "text\r\n.\r\n"};
  EXPECT_EQ(
      Returned(MailCourse(), before + accepted + Log{"250 queued\r\n", "QUIT\r\n"}, kOk),
      "0  the relay accepted the message; 1 of 2 recipients was refused: <c@example.org> (550 "
      "such user)\n");
  EXPECT_EQ(Returned(MailCourse(), before + Log{"551 gone\r\n", "QUIT\r\n", "221 bye\r\n"}, kFail),
            "1  not delivered: none of 2 recipients was accepted; the relay refused the recipient: "
            "551 gone\n   check the field 'to'\n");
  EXPECT_EQ(Returned(MailCourse(), before + Log{"recv error 10004\r\n", "QUIT\r\n"}, kOk),
            "0  not confirmed: no reply that accepts the message is in the log, although Send "
            "returned success; the relay did not answer in time\n"
            "   take the mail for one that was not delivered\n");
}

// A recipient whose reply had no code makes the result a success, whatever came after.
TEST(AlertCourse, TellsOfAMessageThatWasRefusedAlthoughSendSucceeded) {
  EXPECT_EQ(Returned(MailCourse(), MailOf("a") + Log{"554 spam\r\n", "QUIT\r\n"}, kOk),
            "0  not delivered: the relay refused the message: 554 spam, although Send returned "
            "success\n   take the mail for one that was not delivered\n");
}

// The same words as ever when nothing is known of the instance.
TEST(AlertCourse, NeedsNoInstance) {
  EXPECT_EQ(
      Returned({"pager", std::nullopt},
               {"C:\\Instances\\Night", " - Failed to load notification from disk.", "\r"}, kFail),
      "1  not delivered: the instance could not be loaded\n   see with notifyhost show that "
      "the file is there and holds an instance of this class\n");
  EXPECT_EQ(Returned({"Beeper", std::nullopt}, {"success\r\n"}, kOk),
            "0  dialled; nobody confirms a beep\n");
}

TEST(AlertCourse, TellsOfClassesThatLogNothing) {
  const AttemptEnd returned = AttemptEnd::kReturned;
  const auto told = [&](std::string_view name, const std::optional<Instance>& instance,
                        std::int32_t result) {
    return Tell({name, instance}, {}, returned, result).verdict.words;
  };
  const Instance sound =
      WithText(sound_field::kFieldCount, sound_field::kWaveFilename, "C:\\siren.wav");
  EXPECT_EQ(told("Sound", sound, kOk),
            "the system has played the sound, or its default sound where the file is missing");
  EXPECT_EQ(told("Sound", sound, 2),
            "the system plays the sound over and over; a missing file shows nowhere");
  EXPECT_EQ(told("Sound", sound, kFail),
            "not delivered: the system could not play the sound C:\\siren.wav");
  EXPECT_EQ(told("Sound", std::nullopt, kOk), "the sound that was repeated has been ended");
  EXPECT_EQ(told("Sound", std::nullopt, kFail),
            "not delivered: the sound that is repeated could not be ended");
  const Instance popup =
      WithText(win_popup_field::kFieldCount, win_popup_field::kDestination, "OPS");
  EXPECT_EQ(told("WinPopup", popup, kOk),
            "the messenger service took the message for OPS, or this system has none");
  EXPECT_EQ(told("WinPopup", popup, kFail),
            "not delivered: the messenger service refused the message for OPS");
  const Instance program =
      WithText(launch_program_field::kFieldCount, launch_program_field::kProgramFilename, "a.exe");
  EXPECT_EQ(told("LaunchProgram", program, 1),
            "the program was started; nobody waits for what it does");
  EXPECT_EQ(told("LaunchProgram", program, kFail),
            "not delivered: the program a.exe could not be started");
  EXPECT_EQ(told("LaunchProgram", program, static_cast<std::int32_t>(0x8007000E)),
            "not delivered: the host could not fill in a text of the alert (0x8007000E "
            "(E_OUTOFMEMORY))");
}

TEST(AlertCourse, HasAWayForEachClass) {
  for (const ClassDescription* const notifier_class : ClassDescriptions()) {
    const AlertCourse course(notifier_class->instances.class_name, std::nullopt);
    EXPECT_TRUE(course.Finish(AttemptEnd::kReturned, kOk).delivered);
  }
}

TEST(AlertCourse, RefusesAClassThatThereIsNot) {
  EXPECT_THROW(AlertCourse("Telegraph", std::nullopt), CommandFailure);
}

TEST(AlertCourse, KeepsLittleOfHugeTexts) {
  const std::string huge(1 << 16, 'x');
  AlertCourse course = PageCourse("TAP");
  for (const std::string& text : LoggingIn()) {
    course.Take(text);
  }
  course.Take("returned \"");
  for (int i = 0; i < 8; ++i) {
    course.Take(huge);
  }
  course.Take("\x15\"\r\n");
  const Verdict verdict = course.Finish(AttemptEnd::kReturned, kFail);
  EXPECT_EQ(verdict.words, "not delivered: the centre did not take the log-in");
}

TEST(AlertCourse, ShowsControlCharactersByTheirNumbers) {
  EXPECT_EQ(Returned(PageCourse("TAP"), Paging() + Log{"returned \"\x1B[2J\x07\"\r\n"}, kFail),
            "1  not confirmed: the centre's answer to the page means nothing in TAP: <1B>[2J<07>\n"
            "   ask the service what it expects\n");
}

}  // namespace
}  // namespace brantel::host
