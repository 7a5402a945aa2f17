#include "smtp_mail/smtp_mail.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "instance/instance_codec.h"
#include "smtp_mail/smtp_mail_description.h"
#include "tests/unit/allocation_counter.h"
#include "tests/unit/failing_allocations.h"
#include "tests/unit/instance/fake_instance_files.h"
#include "tests/unit/notifier/fake_notifier_host.h"
#include "tests/unit/smtp_mail/message/fake_mail_environment.h"
#include "tests/unit/smtp_mail/network/fake_relay.h"
#include "tests/unit/system/fake_machine_name.h"
#include "tests/unit/system/fake_settings_store.h"
#include "tests/unit/system/fake_sockets_library.h"

namespace brantel {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::IsEmpty;

constexpr Result kHostFailure = static_cast<Result>(0x80070057);
constexpr const char* kKey = R"(SOFTWARE\Brantel\Vantrel\notification\SMTPMail)";
constexpr const char* kTimeout = "Settings_Timeout";

class SmtpMailTest : public ::testing::Test {
 protected:
  SmtpMailTest() {
    sockets_.calls = &binding_calls_;
    Store("192.0.2.25", "ann@example.org", "ops@example.org", "Disk full", "It is.\r\n");
  }

  void Store(const std::string& gateway, const std::string& to, const std::string& from,
             const std::string& subject, const std::string& message) {
    Instance instance(5);
    instance.set_text(smtp_mail_field::kGateway, gateway);
    instance.set_text(smtp_mail_field::kTo, to);
    instance.set_text(smtp_mail_field::kFrom, from);
    instance.set_text(smtp_mail_field::kSubject, subject);
    instance.set_text(smtp_mail_field::kMessage, message);
    files_.files["alert"] = EncodeInstance(kSMTPMail.instances, instance);
  }

  void SetTimeout(const std::string& text) {
    settings_.keys[kKey][kTimeout] = {SettingType::kText, text};
  }

  Result Send() { return notifier_.Send({u"alert", "alert"}, &host_); }

  // The time-out that the sessions of one alert used.
  std::uint32_t TimeoutOfSend() {
    EXPECT_EQ(Send(), kOk);
    return relay_.timeout;
  }

  std::vector<std::string> binding_calls_;
  FakeInstanceFiles files_;
  FakeSettingsStore settings_;
  FakeSocketsLibrary sockets_;
  FakeRelay relay_;
  FakeMailEnvironment environment_;
  FakeMachineName machine_name_;
  SmtpState state_;
  FakeNotifierHost host_;
  SmtpMail notifier_{files_,
                     settings_,
                     sockets_,
                     {.network = relay_,
                      .environment = environment_,
                      .machine_name = machine_name_,
                      .state = state_}};
};

TEST_F(SmtpMailTest, DeliversTheInstanceAsTheHostExpandsIt) {
  Store("192.0.2.25", "ann@%t", "ops@%f", "%n is down", "Since %d.\r\n");
  host_.expansions = {{kOk, "ops@example.org"}, {kOk, "router7 is down"}, {kOk, "Since noon.\r\n"}};

  EXPECT_EQ(Send(), kOk);

  EXPECT_THAT(host_.expanded_templates, ElementsAre("ops@%f", "%n is down", "Since %d.\r\n"));
  EXPECT_THAT(relay_.commands, ElementsAre("HELO watch", "MAIL From:ops@example.org",
                                           "RCPT To:<ann@%t>", "DATA", "QUIT"));
  EXPECT_EQ(relay_.content,
            "From: ops@example.org\r\n"
            "Date: Fri,  5 Mar 2004 07:08:09 +0000\r\n"
            "To: ann@%t\r\n"
            "Mime-Version: 1.0\r\n"
            "Content-Type: text/plain;charset=us-ascii\r\n"
            "Subject: router7 is down\r\n"
            "\r\n"
            "Since noon.\r\n");
  EXPECT_EQ(host_.log.front(), "sending msg via 192.0.2.25 to ann@%t\r\n");
}

TEST_F(SmtpMailTest, TakesTheMessagesFirstLineForAnEmptySubject) {
  Store("192.0.2.25", "ann@example.org", "ops@example.org", "", "%n down\r\nnow\r\n");
  host_.expansions = {{kOk, "ops@example.org"}, {kOk, ""}, {kOk, "router7 down\r\nnow\r\n"}};
  EXPECT_EQ(Send(), kOk);
  EXPECT_THAT(relay_.content, EndsWith("Subject: router7 down\r\n\r\nrouter7 down\r\nnow\r\n"));
}

TEST_F(SmtpMailTest, TakesFieldsOfAnyLength) {
  Store("192.0.2.25", "ann@example.org", "ops@example.org", "Disk full", std::string(5000, 'x'));
  EXPECT_EQ(Send(), kOk);
  EXPECT_TRUE(relay_.content.ends_with("\r\n\r\n" + std::string(5000, 'x')));
}

TEST_F(SmtpMailTest, EndsATextOfTheHostAtItsFirstNul) {
  using namespace std::string_literals;
  host_.expansions = {{kOk, "ops@example.org\0x"s}, {kOk, "Disk\0x"s}, {kOk, "It is.\0x"s}};
  EXPECT_EQ(Send(), kOk);
  EXPECT_EQ(relay_.commands.at(1), "MAIL From:ops@example.org");
  EXPECT_THAT(relay_.content, EndsWith("Subject: Disk\r\n\r\nIt is."));
}

TEST_F(SmtpMailTest, SendsUnexpandedWithoutAHost) {
  Store("192.0.2.25", "ann@example.org", "ops@example.org", "%n is down", "Since %d.\r\n");
  EXPECT_EQ(notifier_.Send({u"alert", "alert"}, nullptr), kOk);
  EXPECT_THAT(relay_.content, EndsWith("Subject: %n is down\r\n\r\nSince %d.\r\n"));
}

TEST_F(SmtpMailTest, LogsAnInstanceThatCannotBeLoaded) {
  files_.files.clear();
  EXPECT_EQ(Send(), kFail);
  EXPECT_THAT(host_.log, ElementsAre("alert", " - Failed to load notification from disk.", "\r\n"));
  EXPECT_THAT(settings_.calls, IsEmpty());
  EXPECT_EQ(notifier_.Send({u"alert", "alert"}, nullptr), kFail);
}

TEST_F(SmtpMailTest, RefusesAnInstanceThatEndsEarly) {
  files_.files["alert"].pop_back();
  EXPECT_EQ(Send(), kFail);
  EXPECT_EQ(host_.log.size(), 3U);
  EXPECT_THAT(relay_.commands, IsEmpty());
}

TEST_F(SmtpMailTest, PassesTheHostsFailureThroughAndSendsNothing) {
  for (const std::size_t succeeding : {0U, 1U, 2U}) {
    host_.expansions.assign(succeeding, {kOk, "text"});
    host_.expansions.push_back({kHostFailure, ""});
    host_.expanded_templates.clear();
    EXPECT_EQ(Send(), kHostFailure);
    EXPECT_EQ(host_.expanded_templates.size(), succeeding + 1);
  }
  EXPECT_THAT(relay_.commands, IsEmpty());
  EXPECT_THAT(host_.log, IsEmpty());
}

TEST_F(SmtpMailTest, TellsARecipientRefusedAsUnavailableFromOtherFailures) {
  EXPECT_EQ(kRecipientRefused, static_cast<Result>(0x80140001));
  relay_.replies["RCPT"] = "550 no ann";
  EXPECT_EQ(Send(), kRecipientRefused);
  relay_.replies["RCPT"] = "554 no relaying";
  EXPECT_EQ(Send(), kFail);
  relay_.replies["RCPT"] = "551 gone";
  EXPECT_EQ(Send(), kFail);
  relay_.replies = {{"MAIL", "550 no ops"}};
  EXPECT_EQ(Send(), kFail);
  relay_.replies = {{".", "550 spam"}};
  EXPECT_EQ(Send(), kFail);
}

TEST_F(SmtpMailTest, AnswersSuccessWhateverTheHostsSuccessWas) {
  host_.expansions = {{1, "ops@example.org"}, {1, "Disk full"}, {1, "It is."}};
  EXPECT_EQ(Send(), kOk);
}

TEST_F(SmtpMailTest, FailsForAGatewayThatIsNoAddress) {
  Store("relay", "ann@example.org", "ops@example.org", "Disk full", "It is.\r\n");
  EXPECT_EQ(Send(), kFail);
  EXPECT_EQ(host_.log.back(), "An IP address MUST be used for the SMTP gateway.\r\n");
}

TEST_F(SmtpMailTest, WaitsAsLongAsTheSettingSays) {
  SetTimeout("2500");
  EXPECT_EQ(TimeoutOfSend(), 2500U);
}

TEST_F(SmtpMailTest, ReadsTheSettingForEveryAlert) {
  SetTimeout("2500");
  EXPECT_EQ(TimeoutOfSend(), 2500U);
  SetTimeout("3000");
  EXPECT_EQ(TimeoutOfSend(), 3000U);
}

TEST_F(SmtpMailTest, WaitsAtLeastATenthOfASecond) {
  for (const char* const text : {"99", "50", "1", "0", "-1", "-2147483648", "soon"}) {
    SetTimeout(text);
    EXPECT_EQ(TimeoutOfSend(), 100U) << text;
  }
  SetTimeout("100");
  EXPECT_EQ(TimeoutOfSend(), 100U);
  SetTimeout("101");
  EXPECT_EQ(TimeoutOfSend(), 101U);
}

TEST_F(SmtpMailTest, TakesTheNumberAtTheStartOfTheSetting) {
  SetTimeout("2500 ms");
  EXPECT_EQ(TimeoutOfSend(), 2500U);
  SetTimeout("99999999999");
  EXPECT_EQ(TimeoutOfSend(), 2147483647U);
}

TEST_F(SmtpMailTest, ReadsANumberSettingFromItsLowestByte) {
  settings_.keys[kKey][kTimeout] = {SettingType::kNumber, std::string("\x78\x00\x00\x00", 4)};
  EXPECT_EQ(TimeoutOfSend(), 120U);
  settings_.keys[kKey][kTimeout] = {SettingType::kNumber, std::string("\x88\x13\x00\x00", 4)};
  EXPECT_EQ(TimeoutOfSend(), 100U);
}

TEST_F(SmtpMailTest, WritesAMissingSetting) {
  EXPECT_EQ(TimeoutOfSend(), 10000U);
  const StoredSetting& setting = settings_.keys.at(kKey).at(kTimeout);
  EXPECT_EQ(setting.type, SettingType::kText);
  EXPECT_EQ(setting.data, "10000");
}

TEST_F(SmtpMailTest, DoesNotWriteASettingThatIsThere) {
  SetTimeout("50");
  EXPECT_EQ(Send(), kOk);
  EXPECT_THAT(settings_.calls,
              ElementsAre(std::string("open ") + kKey, std::string("read ") + kTimeout));
  EXPECT_EQ(settings_.keys.at(kKey).at(kTimeout).data, "50");
}

TEST_F(SmtpMailTest, WaitsTheDefaultWithoutSettings) {
  settings_.opens = false;
  EXPECT_EQ(TimeoutOfSend(), 10000U);
}

TEST_F(SmtpMailTest, DeliversWhateverIsAllocatedForTheLogFindsNoMemory) {
  Store("192.0.2.25", "a@example.org,b@example.org", "ops@example.org", "Disk full", "It is.\r\n");
  ASSERT_EQ(Send(), kOk);
  const std::size_t whole_log = host_.log.size();
  const std::vector<std::string> commands = relay_.commands;
  const std::string content = relay_.content;
  std::vector<std::size_t> line_counts;
  ForEachLogAllocation([&](std::size_t allocation) {
    relay_.commands.clear();
    relay_.content.clear();
    FakeNotifierHost host;
    EXPECT_EQ(notifier_.Send({u"alert", "alert"}, &host), kOk) << allocation;
    EXPECT_EQ(relay_.commands, commands) << allocation;
    EXPECT_EQ(relay_.content, content) << allocation;
    line_counts.push_back(host.log.size());
  });
  // The last of these has found all memory that it wanted.
  ASSERT_GT(line_counts.size(), 20U);
  EXPECT_EQ(line_counts.back(), whole_log);
  line_counts.pop_back();
  EXPECT_THAT(line_counts, Each(whole_log - 1));
}

TEST_F(SmtpMailTest, ReportsARefusalAndQuitsWhateverTheLogFindsNoMemoryFor) {
  relay_.replies["DATA"] = "451 later";
  ForEachLogAllocation([&](std::size_t allocation) {
    relay_.commands.clear();
    EXPECT_EQ(Send(), kFail) << allocation;
    EXPECT_EQ(relay_.commands.back(), "QUIT") << allocation;
  });
}

// Who is told otherwise sends it once more.
TEST_F(SmtpMailTest, SucceedsOnceTheRelayHasTheMessageWhicheverAllocationFails) {
  relay_.replies["HELO"] = "250-relay.example.org greets you\r\n250 and takes mail for all";
  // Longer than all before it, so that memory of theirs is not enough for it.
  relay_.replies["."] =
      "250 the message has been queued for delivery to all of its recipients\r\n"
      "221 by relay.example.org";
  std::size_t n = 0;
  std::size_t refusals = 0;
  for (bool failed = true; failed;) {
    relay_.content.clear();
    SmtpState state;
    SmtpMail notifier(files_, settings_, sockets_, {relay_, environment_, machine_name_, state});
    FailAllocation(++n);
    Result result = kFail;
    try {
      result = notifier.Send({u"alert", "alert"}, &host_);
    } catch (const std::bad_alloc&) {
      ++refusals;
    }
    failed = !WillFailAllocation();
    FailAllocation(0);
    EXPECT_EQ(result == kOk, !relay_.content.empty()) << n;
  }
  EXPECT_GT(refusals, 10U);
}

// What is left of a reply would else answer the first command of the next mail.
TEST_F(SmtpMailTest, LeavesNothingOfAReplyToTheNextMailWhicheverAllocationFails) {
  relay_.replies["HELO"] = "250-relay.example.org greets you\r\n250 and takes mail for all";
  std::size_t n = 0;
  for (bool failed = true; failed;) {
    FailAllocation(++n);
    try {
      Send();
    } catch (const std::bad_alloc&) {
      relay_.content.clear();
    }
    failed = !WillFailAllocation();
    FailAllocation(0);
    EXPECT_EQ(Send(), kOk) << n;
  }
  EXPECT_GT(n, 10U);
}

class SmtpMailBinding : public SmtpMailTest {
 protected:
  std::shared_ptr<NotifierHost> Bind(const std::shared_ptr<NotifierHost>& offered) {
    return notifier_.Initialize([&] {
      binding_calls_.emplace_back("query");
      return offered;
    });
  }
};

TEST_F(SmtpMailBinding, StartsTheSocketsLibraryBeforeTheHostIsAsked) {
  const auto offered = std::make_shared<FakeNotifierHost>();
  EXPECT_EQ(Bind(offered), offered);
  EXPECT_THAT(binding_calls_, ElementsAre("start", "query"));
  notifier_.Shutdown();
  EXPECT_THAT(binding_calls_, ElementsAre("start", "query", "stop"));
}

// The host may end the binding from within its callbacks.
TEST_F(SmtpMailBinding, IsNotAllThatKeepsTheSocketsLibraryForAnAlert) {
  EXPECT_EQ(Send(), kOk);
  EXPECT_THAT(binding_calls_, ElementsAre("start", "stop"));
}

TEST_F(SmtpMailBinding, IsNeededForTheSocketsLibrary) {
  notifier_.Send({u"alert", "alert"}, nullptr);
  EXPECT_THAT(binding_calls_, IsEmpty());
}

TEST_F(SmtpMailBinding, DoesNotAskTheHostWithoutTheSocketsLibrary) {
  sockets_.starts = false;
  EXPECT_EQ(Bind(std::make_shared<FakeNotifierHost>()), nullptr);
  EXPECT_THAT(binding_calls_, ElementsAre("start"));
}

TEST_F(SmtpMailBinding, StopsTheSocketsLibraryWhenThereIsNoHost) {
  EXPECT_EQ(Bind(nullptr), nullptr);
  EXPECT_THAT(binding_calls_, ElementsAre("start", "query", "stop"));
}

}  // namespace
}  // namespace brantel
