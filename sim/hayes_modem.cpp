#include "sim/hayes_modem.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace brantel::sim {
namespace {

constexpr Time kToneTime{100};
constexpr Time kLateAnswer{2500};

// Hosts wait for a second before and after the plus signs, but their clocks are not that exact.
constexpr Time kGuardTolerance{100};

constexpr std::size_t kLongestCommandLine = 255;
constexpr unsigned kLargestValue = 255;

char ToUpper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

unsigned TakeNumber(std::string_view& line) {
  unsigned number = 0;
  const auto parsed = std::from_chars(line.data(), line.data() + line.size(), number);
  line.remove_prefix(static_cast<std::size_t>(parsed.ptr - line.data()));
  return parsed.ec == std::errc::result_out_of_range ? kLargestValue + 1 : number;
}

// The same bytes as a line of the wrong speed makes them: none is a sign that anybody could read.
std::string Garbled(std::string text) {
  std::ranges::transform(text, text.begin(), [](char c) {
    return static_cast<char>(static_cast<unsigned char>(c) | 0x80U);
  });
  return text;
}

}  // namespace

struct HayesModem::ResultText {
  ResultCode code;
  std::string_view verbal;
  std::string_view numeric;
};

const std::array<HayesModem::ResultText, 7> HayesModem::kResultTexts = {{
    {ResultCode::kOk, "OK", "0"},
    {ResultCode::kConnect, "CONNECT", "1"},
    {ResultCode::kNoCarrier, "NO CARRIER", "3"},
    {ResultCode::kError, "ERROR", "4"},
    {ResultCode::kNoDialtone, "NO DIALTONE", "6"},
    {ResultCode::kBusy, "BUSY", "7"},
    {ResultCode::kNoAnswer, "NO ANSWER", "8"},
}};

HayesModem::HayesModem(Timeline& timeline, Transcript& transcript, Options options,
                       std::function<void(std::string_view)> send, std::function<void()> unplug)
    : timeline_(timeline),
      transcript_(transcript),
      options_(options),
      send_(std::move(send)),
      unplug_(std::move(unplug)),
      line_(timeline, transcript,
            {.on_outcome = [this](CallOutcome outcome) { OnOutcome(outcome); },
             .on_bytes = [this](std::string_view bytes) { OnBytes(bytes); },
             .on_hang_up = [this] { OnHangUp(); }}) {
  Reset();
}

void HayesModem::Receive(std::string_view bytes) {
  transcript_.NoteBytes("host", bytes);
  if (options_.answering == Answering::kNone) return;
  while (!bytes.empty()) {
    if (state_ == State::kOnline) {
      SendEcho();
      return ReceiveData(bytes);
    }
    if (state_ == State::kDialling) {
      AbortDialling();
    } else {
      ReceiveCommandByte(bytes.front());
    }
    bytes.remove_prefix(1);
  }
  SendEcho();
}

void HayesModem::LoseDtr() {
  transcript_.Note("modem", "loses DTR");
  command_line_.clear();
  GoOnHook();
}

void HayesModem::ReceiveCommandByte(char byte) {
  if (echo_) echo_text_ += byte;
  // Commands have seven bits (ITU-T V.250).
  const auto c = static_cast<char>(byte & 0x7F);
  const char upper = ToUpper(c);
  if (command_line_.size() < 2) {
    // Nothing is a command before it begins with AT.
    const bool goes_on = command_line_ == "A" && upper == 'T';
    if (!goes_on) command_line_.clear();
    if (goes_on || upper == 'A') command_line_ += upper;
    return;
  }
  if (c == '\r') {
    ExecuteLine(std::string_view(std::exchange(command_line_, {})).substr(2));
  } else if (c == '\b') {
    if (command_line_.size() > 2) command_line_.pop_back();
  } else if (c != ' ' && c != '\n' && command_line_.size() <= kLongestCommandLine) {
    command_line_ += upper;
  }
}

void HayesModem::ExecuteLine(std::string_view line) {
  ok_is_due_ = true;
  if (line.size() > kLongestCommandLine - 2) return Report(ResultCode::kError);
  while (!line.empty()) {
    if (!ExecuteCommand(line)) return Report(ResultCode::kError);
  }
  if (ok_is_due_) Report(ResultCode::kOk);
}

bool HayesModem::ExecuteCommand(std::string_view& line) {
  const char letter = line.front();
  line.remove_prefix(1);
  switch (letter) {
    case 'D':
      Dial(std::exchange(line, {}));
      return true;
    case 'S':
      return ExecuteRegisterCommand(line);
    case '&':
      if (line.empty()) return false;
      if (line.front() == 'F') Reset();
      line.remove_prefix(1);
      TakeNumber(line);
      return true;
    default:
      return SetMode(letter, TakeNumber(line));
  }
}

bool HayesModem::SetMode(char letter, unsigned value) {
  switch (letter) {
    case 'A':
      ok_is_due_ = false;
      Report(ResultCode::kNoCarrier);
      return true;
    case 'E':
      echo_ = value == 1 || (echo_ && options_.echo_is_stuck);
      return value <= 1;
    case 'H':
      GoOnHook();
      return value <= 1;
    case 'I':
      Answer(verbose_ ? "\r\nSimulated modem\r\n" : "Simulated modem\r\n");
      return true;
    case 'L':
    case 'M':
      return true;
    case 'O':
      GoOnline();
      return true;
    case 'Q':
      quiet_ = value == 1;
      return value <= 1;
    case 'V':
      verbose_ = value == 1;
      return value <= 1;
    case 'X':
      if (value <= 4) result_level_ = value;
      return value <= 4;
    case 'Z':
      GoOnHook();
      Reset();
      return true;
    default:
      return false;
  }
}

bool HayesModem::ExecuteRegisterCommand(std::string_view& line) {
  const unsigned index = TakeNumber(line);
  if (index >= kRegisterCount || line.empty()) return false;
  const char operation = line.front();
  line.remove_prefix(1);
  if (operation == '?') {
    const std::string digits = std::to_string(registers_.at(index));
    const std::string padded =
        std::string(3 - std::min<std::size_t>(digits.size(), 3), '0') + digits;
    Answer(verbose_ ? "\r\n" + padded + "\r\n" : padded + "\r\n");
    return true;
  }
  const unsigned value = operation == '=' ? TakeNumber(line) : kLargestValue + 1;
  if (value > kLargestValue) return false;
  registers_.at(index) = value;
  return true;
}

void HayesModem::Reset() {
  echo_ = true;
  quiet_ = false;
  verbose_ = true;
  result_level_ = 4;
  registers_ = {};
  registers_.at(kCarrierWait) = 50;
  registers_.at(kCommaPause) = 2;
  registers_.at(kGuardTime) = 50;
}

void HayesModem::Dial(std::string_view text) {
  ok_is_due_ = false;
  GoOnHook();
  state_ = State::kDialling;
  dial_steps_ = ParseDialString(text);
  next_dial_step_ = 0;
  TakeDialStep();
}

void HayesModem::TakeDialStep() {
  if (next_dial_step_ == dial_steps_.size()) return WaitForCarrier();
  const DialStep& step = dial_steps_.at(next_dial_step_++);
  Time duration{0};
  switch (step.kind) {
    case DialStep::Kind::kTone:
      line_.SendTone(step.tone);
      duration = kToneTime;
      break;
    case DialStep::Kind::kPause:
      duration = std::chrono::seconds(registers_.at(kCommaPause));
      break;
    case DialStep::Kind::kCall:
      line_.Call(step.number);
      break;
  }
  planned_ = timeline_.After(duration, [this] { TakeDialStep(); });
}

void HayesModem::WaitForCarrier() {
  transcript_.Note("modem", "has dialled");
  planned_ = timeline_.After(std::chrono::seconds(registers_.at(kCarrierWait)),
                             [this] { OnOutcome(CallOutcome::kNoCarrier); });
}

// Any sign from the host ends a call that is not yet connected.
void HayesModem::AbortDialling() {
  GoOnHook();
  Report(ResultCode::kNoCarrier);
}

void HayesModem::OnOutcome(CallOutcome outcome) {
  const auto end_with = [this](ResultCode code) {
    GoOnHook();
    Report(code);
  };
  switch (outcome) {
    case CallOutcome::kModem:
      timeline_.Cancel(planned_);
      GoOnline();
      return;
    case CallOutcome::kBusy:
      // Below these levels a modem does not listen for tones.
      return end_with(result_level_ >= 3 ? ResultCode::kBusy : ResultCode::kNoCarrier);
    case CallOutcome::kNoDialtone:
      return end_with(result_level_ == 2 || result_level_ == 4 ? ResultCode::kNoDialtone
                                                               : ResultCode::kNoCarrier);
    case CallOutcome::kNoAnswer:
      return end_with(ResultCode::kNoAnswer);
    case CallOutcome::kNoCarrier:
      return end_with(ResultCode::kNoCarrier);
    case CallOutcome::kSilence:
      timeline_.Cancel(planned_);
      return;
    case CallOutcome::kGarbage:
      timeline_.Cancel(planned_);
      Send(Garbled(std::string(120, '~')));
      return;
    case CallOutcome::kUnplugged:
      transcript_.Note("modem", "is unplugged");
      GoOnHook();
      unplug_();
      return;
    case CallOutcome::kVoice:
      return;
  }
}

void HayesModem::GoOnline() {
  ok_is_due_ = false;
  if (state_ == State::kCommand) return Report(ResultCode::kNoCarrier);
  state_ = State::kOnline;
  plus_count_ = 0;
  last_data_ = timeline_.now();
  Report(ResultCode::kConnect);
}

void HayesModem::OnHangUp() {
  const bool was_connected = state_ == State::kOnline || state_ == State::kOnlineCommand;
  if (!was_connected) return;  // a voice that hangs up is silence to a modem
  GoOnHook();
  Report(ResultCode::kNoCarrier);
}

void HayesModem::OnBytes(std::string_view bytes) {
  if (state_ == State::kOnline) Send(bytes);
}

void HayesModem::GoOnHook() {
  timeline_.Cancel(planned_);
  timeline_.Cancel(escape_);
  line_.HangUp();
  state_ = State::kCommand;
}

void HayesModem::ReceiveData(std::string_view bytes) {
  timeline_.Cancel(escape_);
  CountPlusSigns(bytes);
  last_data_ = timeline_.now();
  if (plus_count_ == 3) {
    escape_ = timeline_.After(GuardTime(), [this] { Escape(); });
  }
  line_.SendBytes(bytes);
}

void HayesModem::CountPlusSigns(std::string_view bytes) {
  const bool nothing_else = bytes.find_first_not_of('+') == std::string_view::npos;
  const bool guarded = timeline_.now() - last_data_ >= GuardTime();
  if (nothing_else && (plus_count_ > 0 || guarded)) {
    plus_count_ += static_cast<unsigned>(bytes.size());
  } else {
    plus_count_ = 0;
  }
}

void HayesModem::Escape() {
  plus_count_ = 0;
  state_ = State::kOnlineCommand;
  Report(ResultCode::kOk);
}

Time HayesModem::GuardTime() const {
  return Time(std::max(20 * static_cast<int>(registers_.at(kGuardTime)), 200)) - kGuardTolerance;
}

void HayesModem::Report(ResultCode code) {
  if (quiet_) return;
  const ResultText& text = *std::ranges::find(kResultTexts, code, &ResultText::code);
  Answer(verbose_ ? "\r\n" + std::string(text.verbal) + "\r\n" : std::string(text.numeric) + "\r");
}

void HayesModem::SendEcho() {
  if (echo_text_.empty()) return;
  const std::string text = std::exchange(echo_text_, {});
  Send(options_.answering == Answering::kGarbage ? Garbled(text) : text);
}

void HayesModem::Answer(const std::string& text) {
  SendEcho();
  switch (options_.answering) {
    case Answering::kNormal:
      return Send(text);
    case Answering::kNone:
      return;
    case Answering::kLate:
      timeline_.After(kLateAnswer, [this, text] { Send(text); });
      return;
    case Answering::kGarbage:
      return Send(Garbled(text));
    case Answering::kFlood:
      return Send(std::string(300, 'U'));
  }
}

void HayesModem::Send(std::string_view bytes) {
  transcript_.NoteBytes("modem", bytes);
  send_(bytes);
}

}  // namespace brantel::sim
