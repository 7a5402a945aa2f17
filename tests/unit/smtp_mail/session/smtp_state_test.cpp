#include "smtp_mail/session/smtp_state.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "smtp_mail/session/smtp_session.h"
#include "tests/thread_gate.h"
#include "tests/unit/notifier/fake_notifier_host.h"
#include "tests/unit/smtp_mail/message/fake_mail_environment.h"
#include "tests/unit/smtp_mail/network/fake_relay.h"
#include "tests/unit/system/fake_machine_name.h"

namespace brantel {
namespace {

using ::testing::Contains;
using ::testing::Each;
using ::testing::ResultOf;

TEST(SmtpState, KeepsTheFirstNameThatIsFound) {
  SmtpState state;
  EXPECT_EQ(state.local_mail_host_name(), "");
  state.KeepLocalMailHostName("");
  EXPECT_EQ(state.local_mail_host_name(), "");
  state.KeepLocalMailHostName("watch.example.org");
  state.KeepLocalMailHostName("other.example.org");
  EXPECT_EQ(state.local_mail_host_name(), "watch.example.org");
}

TEST(CarryOver, GoesFromOneSessionToTheNext) {
  SmtpState state;
  {
    CarryOver carry_over(state);
    EXPECT_EQ(carry_over.bytes(), "");
    carry_over.bytes() = "220 early\r\n250 too\r\n";
  }
  {
    CarryOver carry_over(state);
    EXPECT_EQ(carry_over.bytes(), "220 early\r\n250 too\r\n");
    carry_over.bytes().erase(0, 11);
  }
  {
    CarryOver carry_over(state);
    EXPECT_EQ(carry_over.bytes(), "250 too\r\n");
    carry_over.bytes().clear();
  }
  EXPECT_EQ(CarryOver(state).bytes(), "");
}

TEST(CarryOver, IsOfOneSessionAtATime) {
  SmtpState state;
  CarryOver(state).bytes() = "early";
  std::optional<CarryOver> first(state);
  EXPECT_EQ(first->bytes(), "early");
  {
    CarryOver second(state);
    EXPECT_EQ(second.bytes(), "");
    second.bytes() = "later";
  }
  // What is nothing takes the place of nothing.
  first->bytes().clear();
  first.reset();
  EXPECT_EQ(CarryOver(state).bytes(), "later");
}

TEST(CarryOver, IsThatOfTheSessionThatEndsLast) {
  SmtpState state;
  {
    CarryOver first(state);
    CarryOver(state).bytes() = "second";
    first.bytes() = "first";
  }
  EXPECT_EQ(CarryOver(state).bytes(), "first");
}

constexpr std::string_view kLetters = "ABCD";

// A line that a relay sends too early, of a length of its own. It does not end a reply, so
// whichever session reads it goes well.
std::string EarlyLine(char letter) {
  return "220-" + std::string(static_cast<std::size_t>(letter - 'A') * 17 + 1, letter);
}

bool IsEarlyLine(const std::string& line) {
  return std::ranges::any_of(kLetters, [&](char letter) { return line == EarlyLine(letter); });
}

// Sends message after message to a relay of its own, which sends such a line behind each reply to
// QUIT.
class Sender {
 public:
  Sender(SmtpState& state, char letter) : state_(state) {
    relay_.replies["QUIT"] = "221 bye\r\n" + EarlyLine(letter);
  }

  void Send(int count) {
    for (int i = 0; i < count; ++i) {
      FakeNotifierHost host;
      accepted_ += SendOne(host) == 0 ? 1 : 0;
      std::ranges::copy_if(host.log, std::back_inserter(early_lines_),
                           [](const auto& line) { return line.starts_with("220-"); });
    }
  }

  [[nodiscard]] int accepted() const { return accepted_; }
  [[nodiscard]] const std::vector<std::string>& early_lines() const { return early_lines_; }
  // How often the sender has told the relay this machine's name.
  [[nodiscard]] auto CountOfGreetings() const {
    return std::ranges::count(relay_.commands, "HELO watch");
  }

  int SendOne(NotifierHost& host) {
    const MailMessage message{.to = "ann@example.org",
                              .from = "ops@%s",
                              .subject = "Disk full",
                              .gateway = "192.0.2.25",
                              .message = "The disk is full.\r\n"};
    return SmtpSendMessage({.network = relay_,
                            .environment = environment_,
                            .machine_name = machine_name_,
                            .state = state_},
                           &host, message, 10000);
  }

 private:
  SmtpState& state_;
  FakeRelay relay_;
  FakeMailEnvironment environment_;
  FakeMachineName machine_name_;
  int accepted_ = 0;
  std::vector<std::string> early_lines_;
};

TEST(SmtpState, ServesSessionsOfSeveralThreads) {
  constexpr int kMessages = 1000;
  SmtpState state;
  std::vector<Sender> senders;
  for (const char letter : kLetters) {
    senders.emplace_back(state, letter);
  }
  {
    ThreadGate gate(static_cast<long>(senders.size()));
    std::vector<std::jthread> threads;
    for (Sender& sender : senders) {
      threads.emplace_back([&] {
        gate.PassTogether();
        sender.Send(kMessages);
      });
    }
  }
  for (const Sender& sender : senders) {
    EXPECT_EQ(sender.accepted(), kMessages);
    EXPECT_EQ(sender.CountOfGreetings(), kMessages);
    EXPECT_THAT(sender.early_lines(), Each(ResultOf(IsEarlyLine, true)));
  }
  FakeNotifierHost host;
  EXPECT_EQ(senders[0].SendOne(host), 0);
  EXPECT_THAT(host.log, Contains(ResultOf(IsEarlyLine, true)));
}

}  // namespace
}  // namespace brantel
