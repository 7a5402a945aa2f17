// Every session with its connection cut or stalled behind every byte of the far end's words, and
// every call behind everything that happens on the line.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "smtp_mail/smtp_mail.h"
#include "tests/torture/alerts.h"
#include "tests/torture/figures.h"
#include "tests/torture/machine.h"

namespace brantel {
namespace {

struct NamedEnding {
  Ending ending;
  std::string_view name;
};

constexpr std::array kEndings = {
    NamedEnding{Ending::kHangsUp, "hangs up"},
    NamedEnding{Ending::kBreaksDown, "breaks down"},
    NamedEnding{Ending::kFallsSilent, "falls silent"},
};

// Above what a session may take that nobody answers: UCP reads up to 30 times for its result.
constexpr std::uint64_t kLongestSession = 20ULL * 60 * 1000;

// Successes that are none, by the alert, by how its connection ended and by where. All are
// deliberate, and hosts are told of them.
constexpr std::array kSuccessesOfCutSessions = std::to_array<std::string_view>({
    // A recipient to whom the relay does not answer counts as one who has the message.
    "mail hangs up behind 1-12 bytes to MAIL From:",
    "mail falls silent behind 1-12 bytes to MAIL From:",
    "mail_to_many hangs up behind 1-12 bytes to MAIL From:",
    "mail_to_many hangs up behind 1-15 bytes to RCPT To:",
    "mail_to_many falls silent behind 1-12 bytes to MAIL From:",
    "mail_to_many falls silent behind 1-15 bytes to RCPT To:",
    "japanese_mail hangs up behind 1-12 bytes to MAIL From:",
    "japanese_mail falls silent behind 1-12 bytes to MAIL From:",
    "mail_for_nobody hangs up behind 1-12 bytes to MAIL From:",
    "mail_for_nobody falls silent behind 1-12 bytes to MAIL From:",
    "mail_refused hangs up behind 1-12 bytes to MAIL From:",
    "mail_refused falls silent behind 1-12 bytes to MAIL From:",
    // What a modem says to the dial command of a beeper's call is not examined.
    "beeper hangs up behind 0-0 bytes to nothing",
    "beeper hangs up behind 1-6 bytes to AT",
    "beeper falls silent behind 4-6 bytes to AT",
    "beeper_busy hangs up behind 0-0 bytes to nothing",
    "beeper_busy hangs up behind 1-6 bytes to AT",
    "beeper_busy hangs up behind 1-8 bytes to ATDT",
    "beeper_busy hangs up behind 1-6 bytes to AT",
    "beeper_busy breaks down behind 1-8 bytes to ATDT",
    "beeper_busy breaks down behind 1-6 bytes to AT",
    "beeper_busy falls silent behind 4-6 bytes to AT",
    "beeper_busy falls silent behind 1-8 bytes to ATDT",
    "beeper_busy falls silent behind 1-6 bytes to AT",
    // A centre that ends the call behind the block, by EOT, has taken the page.
    "tap_rejected_and_ended hangs up behind 4-5 bytes to <2>",
    "tap_rejected_and_ended hangs up behind 1-2 bytes to <4>",
    "tap_rejected_and_ended hangs up behind 1-6 bytes to AT",
    "tap_rejected_and_ended breaks down behind 4-5 bytes to <2>",
    "tap_rejected_and_ended breaks down behind 1-2 bytes to <4>",
    "tap_rejected_and_ended breaks down behind 1-6 bytes to AT",
    "tap_rejected_and_ended falls silent behind 4-5 bytes to <2>",
    "tap_rejected_and_ended falls silent behind 1-2 bytes to <4>",
    "tap_rejected_and_ended falls silent behind 1-6 bytes to AT",
    // RS is no refusal by a centre of telephone messages.
    "sms_tap_rejected hangs up behind 1-2 bytes to <2>",
    "sms_tap_rejected hangs up behind 1-2 bytes to <4>",
    "sms_tap_rejected hangs up behind 1-6 bytes to AT",
    "sms_tap_rejected breaks down behind 1-2 bytes to <2>",
    "sms_tap_rejected breaks down behind 1-2 bytes to <4>",
    "sms_tap_rejected breaks down behind 1-6 bytes to AT",
    "sms_tap_rejected falls silent behind 1-2 bytes to <2>",
    "sms_tap_rejected falls silent behind 1-2 bytes to <4>",
    "sms_tap_rejected falls silent behind 1-6 bytes to AT",
});

// Adjacent places of one ending, as the list has them.
struct Places {
  std::string before;  // all but the numbers
  std::string heard;
  std::size_t first = 0;
  std::size_t last = 0;

  [[nodiscard]] std::string Shown() const {
    return before + " behind " + std::to_string(first) + "-" + std::to_string(last) + " bytes to " +
           heard;
  }
};

class CutTest : public ::testing::TestWithParam<const Alert*> {
 protected:
  // The session with its connection ended there, and then one in which all goes well.
  void Cut(const NamedEnding& ending, std::size_t words) {
    Machine machine;
    Prepare(machine, alert());
    machine.far_end.ending = ending.ending;
    machine.far_end.words_left = words;
    const Result result = machine.Send();
    Judge(machine, result, ending, words);
    machine.BeginAlert();
    EXPECT_EQ(machine.Send(), alert().result) << "behind one that " << ending.name;
    ++Figures().cuts;
  }

  [[nodiscard]] std::size_t CountWords() const {
    Machine machine;
    Prepare(machine, alert());
    EXPECT_EQ(machine.Send(), alert().result);
    return machine.far_end.said;
  }

  [[nodiscard]] std::vector<std::string> FalseSuccesses() const {
    std::vector<std::string> shown;
    for (const Places& places : false_successes_)
      shown.push_back(places.Shown());
    return shown;
  }

  [[nodiscard]] const Alert& alert() const { return *GetParam(); }

 private:
  void Judge(const Machine& machine, Result result, const NamedEnding& ending, std::size_t words) {
    const FarEnd& far_end = machine.far_end;
    const bool knows = far_end.has_taken && far_end.has_told_so;
    if (!Failed(result) && !knows) NoteFalseSuccess(ending, far_end.place());
    const std::string where = std::string(ending.name) + " behind byte " + std::to_string(words);
    EXPECT_TRUE(!knows || result == alert().result) << where;
    EXPECT_TRUE(!Failed(result) || result == kFail || result == alert().result) << where;
    EXPECT_FALSE(machine.clock.waits_for_ever()) << where;
    EXPECT_LE(machine.clock.elapsed(), kLongestSession) << where;
    EXPECT_EQ(machine.Leftovers(), "") << where;
    EXPECT_FALSE(machine.host_object.log.empty()) << where;
  }

  void NoteFalseSuccess(const NamedEnding& ending, const FarEnd::Place& place) {
    const std::string before = std::string(alert().name).append(" ").append(ending.name);
    if (!false_successes_.empty()) {
      Places& last = false_successes_.back();
      if (last.before == before && last.heard == place.heard && last.last + 1 == place.count) {
        last.last = place.count;
        return;
      }
    }
    false_successes_.push_back({before, place.heard, place.count, place.count});
  }

  std::vector<Places> false_successes_;
};

TEST_P(CutTest, IsNoSuccessUnlessTheAlertIsTaken) {
  const std::size_t words = CountWords();
  for (const NamedEnding& ending : kEndings) {
    for (std::size_t i = 0; i <= words; ++i)
      Cut(ending, i);
  }
  std::vector<std::string> expected;
  for (const std::string_view listed : kSuccessesOfCutSessions) {
    if (listed.starts_with(std::string(alert().name) + " ")) expected.emplace_back(listed);
  }
  EXPECT_EQ(FalseSuccesses(), expected);
}

std::vector<const Alert*> Connected() {
  std::vector<const Alert*> alerts;
  for (const Alert& alert : Alerts()) {
    if (!alert.replies.empty() && !alert.says_too_early) alerts.push_back(&alert);
  }
  return alerts;
}

INSTANTIATE_TEST_SUITE_P(Sessions, CutTest, ::testing::ValuesIn(Connected()),
                         [](const auto& tested) { return std::string(tested.param->name); });

const Alert& AlertNamed(std::string_view name) {
  return *std::ranges::find(Alerts(), name, &Alert::name);
}

// A call behind so many events of one that is acknowledged: the person hangs up or does nothing
// more, and sounds end all the same; or the wave driver never says that they have.
struct CutCall {
  std::size_t events;
  std::string_view then;
  std::string_view outcome;
};

constexpr std::string_view kHangsUp = "hangs up";
constexpr std::string_view kDoesNothing = "does nothing";
constexpr std::string_view kDriverHangs = "driver hangs";

constexpr std::string_view kSuccess = "success";
constexpr std::string_view kFailure = "failure";
constexpr std::string_view kEndless = "waits for ever";

constexpr std::array kCutCalls = {
    // Deliberately the line's own end alone ends the wait for an answer.
    CutCall{0, kHangsUp, kEndless},
    CutCall{0, kDoesNothing, kEndless},
    CutCall{0, kDriverHangs, kEndless},
    CutCall{1, kHangsUp, kFailure},
    CutCall{1, kDoesNothing, kFailure},
    CutCall{1, kDriverHangs, kEndless},
    // Deliberately a person who has pressed the key counts as one who has heard the messages.
    CutCall{2, kHangsUp, kSuccess},
    CutCall{2, kDoesNothing, kSuccess},
    CutCall{2, kDriverHangs, kEndless},
    CutCall{3, kHangsUp, kSuccess},
    CutCall{3, kDoesNothing, kSuccess},
    CutCall{3, kDriverHangs, kEndless},
    CutCall{4, kHangsUp, kSuccess},
    CutCall{4, kDoesNothing, kSuccess},
    CutCall{4, kDriverHangs, kSuccess},
};

std::string_view OutcomeOf(const Machine& machine, Result result) {
  if (machine.clock.waits_for_ever()) return kEndless;
  return Failed(result) ? kFailure : kSuccess;
}

TEST(CutCallTest, EndsAsItAlwaysHas) {
  constexpr LineEvent kDisconnected = {LineEvent::Kind::kTold, line_message::kCallState,
                                       call_state::kDisconnected};
  for (const CutCall& call : kCutCalls) {
    Machine machine;
    Prepare(machine, AlertNamed("call"));
    const std::vector<LineEvent> whole = machine.line_events;
    ASSERT_LE(call.events, whole.size());
    machine.line_events.resize(call.events);
    if (call.then == kHangsUp) machine.line_events.push_back(kDisconnected);
    if (call.then != kDriverHangs)
      machine.line_events.insert(machine.line_events.end(), 4, kSoundEnds);
    machine.BeginAlert();
    const Result result = machine.Send();
    EXPECT_EQ(OutcomeOf(machine, result), call.outcome) << call.then << " behind " << call.events;
    EXPECT_EQ(machine.Leftovers(), "");
    machine.line_events = whole;
    machine.BeginAlert();
    EXPECT_EQ(machine.Send(), kOk) << call.then << " behind " << call.events;
    ++Figures().cuts;
  }
}

// A pop-up is one call on the system, and how it ends is told by its result.
TEST(CutPopupTest, IsASuccessAlsoWhereNothingCanShowIt) {
  Machine machine;
  Prepare(machine, AlertNamed("popup"));
  machine.network_system.has_messenger = false;
  EXPECT_EQ(machine.Send(), kFail);
  machine.network_system.has_messenger = true;
  EXPECT_EQ(machine.Send(), kOk);
  EXPECT_EQ(machine.network_system.messages, 1);

  // Deliberately it is no failure of the alert that a system has no pop-ups.
  Machine old_machine;
  Prepare(old_machine, AlertNamed("popup"));
  old_machine.network_system.family = WindowsFamily::kWindows95;
  EXPECT_EQ(old_machine.Send(), kOk);
  EXPECT_EQ(old_machine.network_system.messages, 0);
}

}  // namespace
}  // namespace brantel
