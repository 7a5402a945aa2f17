#include "telephone/line_session.h"

#include <optional>

#include "system/exception_guard.h"
#include "telephone/line_texts.h"
#include "text/digits.h"
#include "text/format_text.h"
#include "text/string_table.h"

namespace brantel {
namespace {

constexpr std::size_t kDialStringCapacity = 64;  // with its NUL

constexpr VersionRange kVersions = {.lowest = 0x00010000, .highest = 0x00050000};

constexpr const char* kWaveOutClass = "wave/out";

// What becomes of errors of the search for the wave device.
constexpr LineCode kWaveDeviceUnknown = 0x40000000;
constexpr LineCode kWaveDeviceTaken = 0x10000000;

constexpr std::uint32_t LowWord(std::uint32_t number) {
  return number & 0xFFFF;
}
constexpr std::uint32_t HighWord(std::uint32_t number) {
  return number >> 16;
}

LineCode ToWaveDeviceError(LineCode error) {
  switch (error) {
    case line_error::kNoMemory:
    case line_error::kInvalidAddressId:
      return kWaveDeviceUnknown;
    case line_error::kResourceUnavailable:
      return kWaveDeviceTaken;
    default:
      return error;
  }
}

// The button of a telephone that sends this digit.
std::optional<std::int32_t> ButtonOf(char digit) {
  if (IsDigit(digit)) return digit - '0';
  if (digit == '*') return kStarButton;
  if (digit == '#') return kHashButton;
  return std::nullopt;
}

// Closing may fail for a moment, while the driver is still at something. What the last attempt
// answered.
template <typename Attempt>
LineCode TryFiveTimes(Clock& clock, Attempt attempt) {
  constexpr int kAttempts = 5;
  constexpr std::uint32_t kPause = 500;
  LineCode code = attempt();
  for (int i = 1; code != 0 && i < kAttempts; ++i) {
    clock.Wait(kPause);
    code = attempt();
  }
  return code;
}

}  // namespace

LineSession::LineSession(const VoiceSystem& system, VoiceState& state, WavePlayback& playback,
                         std::string_view number, std::int32_t acknowledge_button)
    : system_(system),
      state_(state),
      playback_(playback),
      dial_string_(number.substr(0, kDialStringCapacity - 1)),
      acknowledge_button_(acknowledge_button) {}

LineSession::~LineSession() {
  static_cast<void>(GuardExceptions([this] {
    if (initialised_) TearDown();
    return kOk;
  }));
}

LineCode LineSession::InitializeLine() {
  const LineCode code = system_.telephony.Initialize(*this, application_, device_count_);
  initialised_ = code == 0;
  if (!initialised_) {
    state_.log().Made([code] {
      return FormatText(LoadText(InitializeFailureFormat(code)),
                        {LoadText(text_id::kLineNotInitialized)});
    });
  }
  return code;
}

LineCode LineSession::ChooseDevice() {
  if (device_count_ == 0) return 0;
  for (std::uint32_t device = 0; device < device_count_; ++device) {
    if (!Negotiate(device)) continue;
    const LineCode code = ReadCapabilities(device);
    if (!capabilities_) return line_error::kNoMemory;
    if (code != 0 || !TakesAutomatedVoice()) continue;
    device_ = device;
    return 0;
  }
  state_.log().Line(text_id::kNoSuitableDevice);
  return line_error::kNoDevice;
}

bool LineSession::Negotiate(std::uint32_t device) {
  const LineCode code =
      system_.telephony.NegotiateVersion(application_, device, kVersions, version_);
  if (code != 0) {
    LogDeviceFailure(NegotiationFailureText(code), device);
    return false;
  }
  state_.log().Format(text_id::kDeviceVersion, {device, HighWord(version_), LowWord(version_)});
  return true;
}

void LineSession::LogDeviceFailure(unsigned text_id, std::uint32_t device) const {
  state_.log().Inserts(text_id, {device, LowWord(version_), HighWord(version_)});
}

LineCode LineSession::ReadCapabilities(std::uint32_t device) {
  const LineCode code = FillSizedBlock(system_.memory, line_structure::kCapabilitiesSize,
                                       capabilities_, [&](std::span<std::byte> bytes) {
                                         return system_.telephony.GetCapabilities(
                                             application_, device, version_, bytes);
                                       });
  if (code == 0) {
    state_.log().Format(text_id::kCapabilitiesRead,
                        {device, HighWord(version_), LowWord(version_)});
  } else if (!capabilities_) {  // it was not the driver that failed
    LogDeviceFailure(text_id::kDeviceNoMemory, device);
  } else {
    state_.log().Made([&] {
      return FormatText(
          LoadText(text_id::kCapabilitiesFormat),
          {LoadText(text_id::kCapabilitiesNotRead), device, HighWord(version_), LowWord(version_)});
    });
  }
  return code;
}

bool LineSession::TakesAutomatedVoice() const {
  return (capabilities_.Word(line_structure::kCapabilitiesMediaModes) & kMediaModeAutomatedVoice) !=
         0;
}

LineCode LineSession::OpenLine() {
  call_parameters_ = SizedBlock(system_.memory, line_structure::kCallParametersSize);
  if (!call_parameters_) return line_error::kNoMemory;
  call_parameters_.SetWord(line_structure::kCallParametersBearerMode, kBearerModeVoice);
  call_parameters_.SetWord(line_structure::kCallParametersMediaMode, kMediaModeAutomatedVoice);

  const LineCode code = system_.telephony.Open(
      application_, device_, version_, kMediaModeAutomatedVoice, call_parameters_.bytes(), line_);
  line_open_ = code == 0;
  state_.line_open = line_open_;
  if (!line_open_) LogDeviceFailure(OpenFailureText(code), device_);
  return code;
}

LineCode LineSession::PlaceCall() {
  system_.telephony.MakeCall(line_, dial_string_, call_parameters_.bytes(), call_);
  WaitForConnection();
  return 0;
}

LineCode LineSession::GetWaveDevice(CallSelect select) {
  const LineCode code = FillSizedBlock(
      system_.memory, line_structure::kVariableTextSize, wave_id_, [&](std::span<std::byte> bytes) {
        return system_.telephony.GetId(line_, call_, select, kWaveOutClass, bytes);
      });
  if (!wave_id_) return line_error::kNoMemory;
  if (code != 0) return ToWaveDeviceError(code);
  const std::uint32_t offset = wave_id_.Word(line_structure::kVariableTextOffset);
  // A driver that knows of no device may have filled in nothing.
  if (offset < line_structure::kVariableTextSize || !wave_id_.HoldsWord(offset)) {
    return line_error::kStructureTooSmall;
  }
  wave_device_ = wave_id_.Word(offset);
  return 0;
}

LineCode LineSession::MonitorDigits() {
  const LineCode code = system_.telephony.MonitorDigits(call_, kDigitModeDtmf);
  if (code == 0) return 0;
  if (const auto text_id = MonitorDigitsFailureText(code)) state_.log().Line(*text_id);
  return code;
}

LineCode LineSession::WaitForConnection() {
  state_.call_connected = false;
  state_.reply_result = line_error::kOperationFailed;
  system_.message_pump.PumpUntil([this] { return state_.call_connected || !state_.line_open; },
                                 kNoEvent);
  return state_.call_connected ? 0 : kLineGoneBeforeConnection;
}

LineCode LineSession::WaitForPlayback() {
  if (!playback_.IsQueued()) return 0;
  state_.playback_done = false;
  state_.reply_result = line_error::kOperationFailed;
  system_.message_pump.PumpUntil(
      [this] {
        playback_.CompleteWhenDone();
        return state_.playback_done || !state_.line_open;
      },
      playback_.DoneEvent());
  return state_.playback_done ? state_.reply_result : kLineGoneDuringPlayback;
}

LineCode LineSession::TearDown() {
  capabilities_ = {};
  call_parameters_ = {};
  wave_id_ = {};
  Telephony& telephony = system_.telephony;
  LineCode closed = 0;
  if (line_open_) closed = TryFiveTimes(system_.clock, [&] { return telephony.Close(line_); });
  LineCode shut_down = 0;
  if (initialised_) {
    shut_down = TryFiveTimes(system_.clock, [&] { return telephony.Shutdown(application_); });
  }
  line_open_ = false;
  initialised_ = false;
  ClearState();
  return closed != 0 ? closed : shut_down;
}

void LineSession::ClearState() {
  state_.line_open = false;
  state_.call_connected = false;
  state_.playback_done = false;
  state_.acknowledged = false;
  state_.reply_received = false;
  state_.last_digit = '0';
}

void LineSession::Receive(const LineMessage& message) {
  switch (message.kind) {
    case line_message::kCallState:
      // No other state changes anything. Before it is told: a connection that is not known of would
      // be waited for without an end.
      if (message.first == call_state::kConnected) state_.call_connected = true;
      state_.log().Line(CallStateText(message.first));
      break;
    case line_message::kMonitorDigits:
      HandleDigit(static_cast<char>(message.first & 0xFF));
      break;
    case line_message::kReply:
      HandleReply(message.first, message.second);
      break;
    case line_message::kDeviceState:
      state_.log().Line(text_id::kGotDeviceState);
      state_.log().Line(DeviceStateText(message.first));
      break;
    default:
      // Deliberately not more for a line that closes, either: the call goes on as if it were open.
      if (const auto text_id = MessageText(message.kind)) state_.log().Line(*text_id);
  }
}

void LineSession::HandleDigit(char digit) {
  const auto button = ButtonOf(digit);
  if (!button) {
    state_.last_digit = digit;
  } else if (acknowledge_button_ == kAnyButton || acknowledge_button_ == *button) {
    Acknowledge();
  }
}

void LineSession::Acknowledge() {
  state_.acknowledged = true;
  system_.telephony.MonitorDigits(call_, kDigitModeNone);
  playback_.CutShort();
}

void LineSession::HandleReply(std::uint32_t request, LineCode result) {
  if (request != state_.pending_request) return;
  state_.reply_received = true;
  state_.reply_result = result;
}

bool ProbeLine(const VoiceSystem& system, VoiceState& state) {
  WavePlayback nothing(system, state);
  LineSession session(system, state, nothing, {}, 0);
  if (session.InitializeLine() != 0) return false;
  const bool usable = session.ChooseDevice() == 0 && session.OpenLine() == 0 &&
                      session.GetWaveDevice(CallSelect::kLine) == 0;
  return session.TearDown() == 0 && usable;
}

}  // namespace brantel
