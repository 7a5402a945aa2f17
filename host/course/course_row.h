#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "host/course/log_reader.h"

namespace brantel::host {

// The ways that an alert can go: a class's, of Pager one for each protocol.
enum class Way : std::uint8_t {
  kSmtpMail,
  kSound,
  kWinPopup,
  kLaunchProgram,
  kBeeper,
  kTap,
  kSmsTap,
  kUcp,
  kNtt,
  kVoice,
};

// How far an alert has come.
enum class Stage : std::uint8_t {
  kBeginning,
  // With a modem.
  kPort,      // the serial port is being opened
  kModem,     // the modem is being initialised
  kDialling,  // up to the connection
  kPrompt,    // the centre is waited for
  kLogIn,
  kPage,  // the page is on its way, or has been answered
  // With a mail relay, each up to its answer.
  kRelay,  // the connection, and the greeting
  kHello,
  kSender,
  kRecipient,
  kData,
  kText,  // the message itself, of which no line means anything
  kTextEnd,
  // On a telephone line.
  kLine,  // it is being chosen and opened
  kCall,  // up to the connection
  kTalk,
  // Hanging up, or taking leave of a relay: nothing changes what has become of the alert.
  kEnding,
};

// A few of an enumeration's values.
template <typename Value>
class SetOf {
 public:
  constexpr SetOf() = default;
  constexpr SetOf(Value value)  // NOLINT(*-explicit-*): a set of one
      : bits_(std::uint32_t{1} << static_cast<unsigned>(value)) {}

  static constexpr SetOf All() {
    SetOf all;
    all.bits_ = ~std::uint32_t{0};
    return all;
  }

  [[nodiscard]] constexpr bool Has(Value value) const { return Meets(value); }
  [[nodiscard]] constexpr bool Meets(SetOf other) const { return (bits_ & other.bits_) != 0; }

  friend constexpr SetOf operator|(SetOf one, SetOf other) {
    one.bits_ |= other.bits_;
    return one;
  }
  friend constexpr SetOf operator-(SetOf one, SetOf other) {
    one.bits_ &= ~other.bits_;
    return one;
  }
  friend constexpr bool operator==(SetOf, SetOf) = default;

 private:
  std::uint32_t bits_ = 0;
};

using Ways = SetOf<Way>;
using Stages = SetOf<Stage>;

// Who gives a sign of how an alert goes.
enum class Speaker : std::uint8_t {
  kModule,   // by a line of its own
  kSending,  // by what it sends to a modem
  kModem,    // or who is behind it
  kRelay,
  kNobody,   // no reply has come before Send failed
  kSuccess,  // Send, by what it returns, where nothing else tells
  kFailure,
};

enum class Match : std::uint8_t {
  kAll,    // the whole text
  kStart,  // what it begins with
  kOpen,   // the same, and the line goes on with something else
  kEnd,
  kWithin,
  kAnything,
};

// What a sign says of how the alert ends.
enum class Bearing : std::uint8_t {
  kNone,
  // Why it fails. Of several in one stage the strongest counts, and of equals the row that stands
  // first.
  kRefusal,  // somebody has said no
  kTrouble,  // something went wrong
  kHint,     // what is known where nothing better is
  kCause,    // stands behind one of these
  // Of an alert that succeeds.
  kTaken,     // the next station has it
  kRemark,    // worth telling beside
  kAccepted,  // one of several recipients
};

struct Sign {
  Speaker speaker;
  Match match;
  std::string_view text;
  Stages within;  // where it means what the row says
};

// What a sign of how an alert goes means. Words are clauses: they begin with a small letter and end
// without a full stop. Those of phases fit behind "while". What stands in braces is filled in, see
// FillIn.
struct CourseRow {
  Ways ways;
  Sign sign;
  Bearing bearing = Bearing::kNone;
  std::string_view words;
  std::string_view advice{};
  std::optional<Stage> begins{};
  std::string_view phase{};  // that begins with it
};

// All there are. Of those that a sign fits, the first counts.
std::span<const CourseRow> CourseRows();

// Where an alert has come to.
struct Situation {
  Way way;
  Stage stage;
};

// The row for what a speaker says there, or null.
const CourseRow* FindCourseRow(const Situation& situation, Speaker speaker, std::string_view said);

// What is said behind the text that the sign is known by, up to the end of the line.
std::string_view BehindSign(const Sign& sign, std::string_view said);

// What lines of that way can begin with, and end at once.
std::vector<std::string_view> OpenTexts(Way way);

}  // namespace brantel::host
