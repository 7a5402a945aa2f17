#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "sim/dial_string.h"
#include "sim/telephone_line.h"

namespace brantel::sim {

// How a modem answers its commands.
enum class Answering {
  kNormal,
  kNone,     // it is switched off, or not connected
  kLate,     // 2.5 seconds after each command
  kGarbage,  // the line speed is wrong
  kFlood,    // 300 bytes without an end
};

// A modem that takes commands of the Hayes kind (the basic set of ITU-T V.250). Commands: D, E, H,
// I, O, Q, S, V, X, Z, &F; A finds nobody calling; L, M and other commands with an ampersand are
// accepted and do nothing. Three plus signs, with nothing before and behind them for the guard
// time, bring it back from a connection to its commands.
class HayesModem {
 public:
  struct Options {
    Answering answering = Answering::kNormal;
    bool echo_is_stuck = false;  // E0 changes nothing
  };

  // `send` takes what goes to the host, `unplug` is called when the modem is unplugged. Timeline
  // and transcript must outlive the object.
  HayesModem(Timeline& timeline, Transcript& transcript, Options options,
             std::function<void(std::string_view)> send, std::function<void()> unplug);

  // Bytes from the host.
  void Receive(std::string_view bytes);

  // The host's "data terminal ready" goes off, as it does when the port is closed: ends the call
  // and forgets what has come of a command.
  void LoseDtr();

 private:
  enum class State {
    kCommand,        // on the hook
    kDialling,       // dialling, or waiting for what becomes of the call
    kOnline,         // bytes go to the far end
    kOnlineCommand,  // connected, but listening to commands
  };
  enum class ResultCode { kOk, kConnect, kNoCarrier, kError, kNoDialtone, kBusy, kNoAnswer };
  struct ResultText;
  static const std::array<ResultText, 7> kResultTexts;

  // Registers that mean something here.
  static constexpr std::size_t kCarrierWait = 7;  // seconds
  static constexpr std::size_t kCommaPause = 8;   // seconds
  static constexpr std::size_t kGuardTime = 12;   // fiftieths of a second
  static constexpr std::size_t kRegisterCount = 32;

  void ReceiveCommandByte(char byte);
  void ReceiveData(std::string_view bytes);
  void CountPlusSigns(std::string_view bytes);
  void Escape();
  [[nodiscard]] Time GuardTime() const;

  void ExecuteLine(std::string_view line);
  // Takes one command from the front of the line. False when there is no such command.
  bool ExecuteCommand(std::string_view& line);
  bool SetMode(char letter, unsigned value);
  bool ExecuteRegisterCommand(std::string_view& line);
  void GoOnline();
  void Reset();

  void Dial(std::string_view text);
  void TakeDialStep();
  void WaitForCarrier();
  void AbortDialling();
  void OnOutcome(CallOutcome outcome);
  void OnHangUp();
  void OnBytes(std::string_view bytes);
  void GoOnHook();

  void Report(ResultCode code);
  void SendEcho();
  void Answer(const std::string& text);
  void Send(std::string_view bytes);

  Timeline& timeline_;
  Transcript& transcript_;
  Options options_;
  std::function<void(std::string_view)> send_;
  std::function<void()> unplug_;
  TelephoneLine line_;

  State state_ = State::kCommand;
  bool echo_ = true;
  bool quiet_ = false;
  bool verbose_ = true;
  unsigned result_level_ = 4;
  std::array<unsigned, kRegisterCount> registers_{};

  std::string echo_text_;     // what is still to be echoed
  std::string command_line_;  // as far as it has come, from its "AT" on
  // Whether the command line ends with OK; a call has a result of its own, later.
  bool ok_is_due_ = true;
  std::vector<DialStep> dial_steps_;
  std::size_t next_dial_step_ = 0;
  Timeline::Ticket planned_;  // the next dial step, or the end of the wait for a carrier
  Time last_data_{0};
  unsigned plus_count_ = 0;
  Timeline::Ticket escape_;
};

}  // namespace brantel::sim
