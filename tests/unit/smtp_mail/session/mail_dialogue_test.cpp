// Replays the dialogues of dialogues/smtp_mail. Lines of such a file, before "run":
//
//   to | from | subject | message TEXT      the message; what is not said stays as kMessage has it
//   gateway TEXT                            192.0.2.25 is an address, nothing else is
//   timeout MS                              10000 if not said
//   code-page N                             1252 if not said
//   time-zone BIAS | time-zone fails        0 if not said
//   TZ TEXT                                 the environment variable, else not set
//   host-name TEXT                          already known; watch.example.org if not said
//   no-host                                 no host is bound, so nothing is logged
//   socket | connect fails                  in the next run
//   chunks as-written                       what is received is not split at other places as well
//   run
//
// Behind it, each with what was answered:
//
//   log TEXT
//   tcpip NAME CAPACITY                     gives TEXT | missing
//   sockets-name                            gives TEXT | missing
//   send BYTES                              [takes COUNT | fails ERROR]
//   pump
//   receive MS                              gives BYTES | closed | fails ERROR | times-out |
//                                           cannot-wait ERROR
//   close
//   result N
//   waited MS                               how long the session took on its own clock
//
// More calls of the same process may follow, each with its "run".
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "smtp_mail/session/smtp_session.h"
#include "tests/unit/dialogue/answer.h"
#include "tests/unit/dialogue/dialogue.h"
#include "tests/unit/dialogue/replay.h"
#include "tests/unit/smtp_mail/message/fake_mail_environment.h"

namespace brantel {
namespace {

const std::map<std::string, std::string, std::less<>> kMessage = {
    {"to", "ann@example.org"}, {"from", "ops@example.org"},          {"subject", "Disk full"},
    {"gateway", "192.0.2.25"}, {"message", "The disk is full.\r\n"},
};

constexpr std::size_t kNever = static_cast<std::size_t>(-1);

// Where the bytes of the peer are split besides where the dialogue has them end.
struct Splitting {
  std::size_t at = kNever;          // of all bytes that the peer sends
  std::size_t piece_size = kNever;  // at most so many a time
};

// What the fakes of one dialogue share.
struct Replay {
  Dialogue& dialogue;
  Splitting splitting;
  std::size_t received = 0;  // bytes that the peer has sent so far
  std::uint32_t waited = 0;
  bool socket_fails = false;
  bool connect_fails = false;

  void ExpectExactly(const Words& call) {
    if (!dialogue.Expect(call).empty()) {
      throw DialogueMismatch(dialogue.Place() + ": more words than expected");
    }
  }

  std::optional<std::string> TakeTextOrMissing(const Words& call) {
    const Words answer = dialogue.Expect(call);
    if (answer == Words{"missing"}) return std::nullopt;
    if (answer.size() != 2 || answer[0] != "gives") {
      throw DialogueMismatch(dialogue.Place() + ": expected \"gives\" and a text");
    }
    return answer[1];
  }
};

class DialogueMachineName final : public MachineName {
 public:
  explicit DialogueMachineName(Replay& replay) : replay_(replay) {}

  std::optional<std::string> TcpipParameter(const std::string& name,
                                            std::size_t capacity) override {
    return replay_.TakeTextOrMissing({"tcpip", name, std::to_string(capacity)});
  }
  std::optional<std::string> SocketsHostName() override {
    return replay_.TakeTextOrMissing({"sockets-name"});
  }

 private:
  Replay& replay_;
};

class DialogueSocket final : public MailSocket {
 public:
  explicit DialogueSocket(Replay& replay) : replay_(replay) {}
  DialogueSocket(const DialogueSocket&) = delete;
  DialogueSocket& operator=(const DialogueSocket&) = delete;

  ~DialogueSocket() override {
    if (std::uncaught_exceptions() == 0) replay_.dialogue.ExpectWithoutThrowing({"close"});
  }

  bool Connect(Ipv4Address address, std::uint16_t port) override {
    EXPECT_EQ(address.network_order, 0x190200C0U);
    EXPECT_EQ(port, 25);
    return !std::exchange(replay_.connect_fails, false);
  }

  Outcome<std::size_t> Send(std::string_view bytes) override {
    const Words answer = replay_.dialogue.Expect({"send", std::string(bytes)});
    if (answer.empty()) return bytes.size();
    if (answer.at(0) == "takes") return ToNumber(answer.at(1));
    return Fail(answer, "fails");
  }

  void PumpMessages() override { replay_.ExpectExactly({"pump"}); }

  Outcome<Readiness> WaitForData(std::uint32_t milliseconds) override {
    if (!unread_.empty()) return Readiness::kReady;
    const Words answer = replay_.dialogue.Expect({"receive", std::to_string(milliseconds)});
    if (answer == Words{"times-out"}) {
      replay_.waited += milliseconds;
      return Readiness::kTimedOut;
    }
    if (answer.at(0) == "cannot-wait") return Fail(answer, "cannot-wait");
    arrived_ = answer;
    if (answer.at(0) == "gives") unread_ = answer.at(1);
    return Readiness::kReady;
  }

  Outcome<std::size_t> Receive(std::span<char> buffer) override {
    EXPECT_EQ(buffer.size(), 82U);
    if (!unread_.empty()) return TakeUnread(buffer);
    if (arrived_ == Words{"closed"}) return 0;
    return Fail(arrived_, "fails");
  }

 private:
  // By an answer of this kind.
  Failure Fail(const Words& answer, std::string_view kind) {
    if (answer.at(0) != kind) throw DialogueMismatch(replay_.dialogue.Place() + ": unknown answer");
    return {ToNumber(answer.at(1))};
  }

  std::size_t TakeUnread(std::span<char> buffer) {
    std::size_t count = std::min({buffer.size(), unread_.size(), replay_.splitting.piece_size});
    const std::size_t until_split = replay_.splitting.at - replay_.received;
    if (replay_.splitting.at > replay_.received) count = std::min(count, until_split);
    std::copy_n(unread_.begin(), count, buffer.begin());
    unread_.erase(0, count);
    replay_.received += count;
    return count;
  }

  Replay& replay_;
  Words arrived_;
  std::string unread_;  // has arrived and is still to be received
};

class DialogueNetwork final : public MailNetwork {
 public:
  explicit DialogueNetwork(Replay& replay) : replay_(replay) {}

  [[nodiscard]] std::optional<Ipv4Address> ParseAddress(const std::string& text) const override {
    if (text != kMessage.at("gateway")) return std::nullopt;
    return Ipv4Address{0x190200C0};  // 192.0.2.25 with its bytes in network order
  }

  std::unique_ptr<MailSocket> CreateSocket() override {
    if (std::exchange(replay_.socket_fails, false)) return nullptr;
    return std::make_unique<DialogueSocket>(replay_);
  }

 private:
  Replay& replay_;
};

// One file, replayed once.
class MailDialogue {
 public:
  MailDialogue(Dialogue& dialogue, Splitting splitting)
      : replay_{.dialogue = dialogue, .splitting = splitting} {}

  // How many bytes the peer sent, or nothing when they are to come as the file has them.
  std::optional<std::size_t> Run() {
    while (!replay_.dialogue.AtEnd()) {
      SetUp();
      RunSession();
    }
    if (as_written_) return std::nullopt;
    return replay_.received;
  }

 private:
  void SetUp() {
    for (;;) {
      const Words line = replay_.dialogue.TakeLine();
      if (line == Words{"run"}) return;
      if (line == Words{"no-host"}) {
        has_host_ = false;
      } else if (line == Words{"chunks", "as-written"}) {
        as_written_ = true;
      } else if (line == Words{"socket", "fails"}) {
        replay_.socket_fails = true;
      } else if (line == Words{"connect", "fails"}) {
        replay_.connect_fails = true;
      } else {
        Set(line.at(0), line.at(1));
      }
    }
  }

  void Set(const std::string& name, const std::string& value) {
    if (message_.contains(name)) {
      message_[name] = value;
    } else if (name == "timeout") {
      timeout_ = ToNumber(value);
    } else if (name == "code-page") {
      environment_.code_page = ToNumber(value);
    } else if (name == "time-zone") {
      environment_.zone.reset();
      if (value != "fails") environment_.zone = TimeZone{.bias = std::stoi(value)};
    } else if (name == "TZ") {
      environment_.zone_variable = value;
    } else if (name == "host-name") {
      host_name_ = value;
    } else {
      throw DialogueMismatch(replay_.dialogue.Place() + ": unknown line");
    }
  }

  void RunSession() {
    state_.KeepLocalMailHostName(host_name_);
    const MailMessage message{.to = message_["to"],
                              .from = message_["from"],
                              .subject = message_["subject"],
                              .gateway = message_["gateway"],
                              .message = message_["message"]};
    const int result = SmtpSendMessage({.network = network_,
                                        .environment = environment_,
                                        .machine_name = machine_name_,
                                        .state = state_},
                                       has_host_ ? &host_ : nullptr, message, timeout_);
    replay_.ExpectExactly({"result", std::to_string(result)});
    replay_.ExpectExactly({"waited", std::to_string(std::exchange(replay_.waited, 0))});
  }

  Replay replay_;
  std::map<std::string, std::string, std::less<>> message_ = kMessage;
  std::uint32_t timeout_ = 10000;
  bool has_host_ = true;
  bool as_written_ = false;
  std::string host_name_ = "watch.example.org";
  SmtpState state_;
  FakeMailEnvironment environment_;
  DialogueHost host_{replay_.dialogue};
  DialogueMachineName machine_name_{replay_};
  DialogueNetwork network_{replay_};
};

class MailDialogueTest : public ::testing::TestWithParam<std::filesystem::path> {};

INSTANTIATE_TEST_SUITE_P(Files, MailDialogueTest, ::testing::ValuesIn(DialogueFiles({"smtp_mail"})),
                         [](const auto& tested) { return DialogueName(tested.param); });

TEST_P(MailDialogueTest, GoesAsItIsWritten) {
  ReplayDialogue(GetParam(), [](Dialogue& dialogue) { MailDialogue(dialogue, {}).Run(); });
}

// The network delivers a reply in pieces of its own choice, and that changes nothing.
TEST_P(MailDialogueTest, GoesTheSameWithRepliesSplitAnywhere) {
  if (RecordsDialogues()) return;  // what is recorded is how it goes unsplit
  const Dialogue dialogue(DialogueRoot(), GetParam());
  const auto run = [&dialogue](Splitting splitting) {
    Dialogue replayed = dialogue;
    return MailDialogue(replayed, splitting).Run();
  };
  std::string how = "as they are";
  try {
    const std::optional<std::size_t> bytes = run({});
    if (!bytes) return;
    for (std::size_t at = 1; at < *bytes; ++at) {
      how = "at byte " + std::to_string(at);
      run({.at = at});
    }
    for (const std::size_t size : {1U, 2U, 3U, 7U}) {
      how = "into pieces of " + std::to_string(size);
      run({.piece_size = size});
    }
  } catch (const std::exception& mismatch) {
    FAIL() << "split " << how << ": " << mismatch.what();
  }
}

}  // namespace
}  // namespace brantel
