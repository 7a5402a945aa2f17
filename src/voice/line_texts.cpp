#include "voice/line_texts.h"

#include <algorithm>
#include <array>
#include <span>

namespace brantel {
namespace {

// The number of a text in resources/strings.def for a number of telephony's.
struct TextRow {
  std::uint32_t number;
  unsigned text_id;
};

constexpr std::array<TextRow, 11> kInitializeFailures = {{
    {line_error::kNoMemory, 720},
    {line_error::kOperationFailed, 721},
    {line_error::kResourceUnavailable, 722},
    {line_error::kReinitialize, 723},
    {line_error::kNoMultipleInstance, 724},
    {line_error::kNoDriver, 725},
    {line_error::kIniFileCorrupt, 726},
    {line_error::kInvalidApplicationName, 727},
    {line_error::kInvalidParameter, 728},
    {line_error::kInvalidPointer, 729},
    {line_error::kNoDevice, 730},
}};
constexpr unsigned kOtherInitializeFailure = 731;

constexpr std::array<TextRow, 11> kNegotiationFailures = {{
    {line_error::kBadDeviceId, 10002},
    {line_error::kIncompatibleApiVersion, 10004},
    {line_error::kInvalidApplicationHandle, 10012},
    {line_error::kInvalidPointer, 10010},
    {line_error::kNoDevice, 10007},
    {line_error::kNoDriver, 10003},
    {line_error::kNoMemory, 10008},
    {line_error::kOperationFailed, 10013},
    {line_error::kOperationUnavailable, 10006},
    {line_error::kResourceUnavailable, 10011},
    {line_error::kUninitialized, 10009},
}};
constexpr unsigned kOtherDeviceFailure = 10005;

// Beside those of the negotiation.
constexpr std::array<TextRow, 7> kOpenFailures = {{
    {line_error::kAllocated, 10015},
    {line_error::kLineMapperFailed, 10016},
    {line_error::kIncompatibleExtensionVersion, 10017},
    {line_error::kInvalidMediaMode, 10018},
    {line_error::kStructureTooSmall, 10019},
    {line_error::kInvalidPrivilegeSelect, 10020},
    {line_error::kReinitialize, 10021},
}};

constexpr std::array<TextRow, 8> kMonitorDigitsFailures = {{
    {line_error::kInvalidCallHandle, 740},
    {line_error::kInvalidCallState, 741},
    {line_error::kInvalidDigitMode, 742},
    {line_error::kNoMemory, 743},
    {line_error::kOperationFailed, 744},
    {line_error::kOperationUnavailable, 745},
    {line_error::kResourceUnavailable, 746},
    {line_error::kUninitialized, 747},
}};

constexpr std::array<TextRow, 15> kCallStates = {{
    {call_state::kIdle, 10065},
    {call_state::kOffering, 10080},
    {call_state::kAccepted, 10079},
    {call_state::kDialTone, 10078},
    {call_state::kDialing, 10077},
    {call_state::kRingback, 10076},
    {call_state::kBusy, 10075},
    {call_state::kSpecialInfo, 10074},
    {call_state::kConnected, 10073},
    {call_state::kProceeding, 10072},
    {call_state::kOnHold, 10069},
    {call_state::kConferenced, 10071},
    {call_state::kOnHoldPendingConference, 10070},
    {call_state::kDisconnected, 10068},
    {call_state::kUnknown, 10067},
}};
constexpr unsigned kOtherCallState = 10066;

constexpr std::array<TextRow, 21> kDeviceStates = {{
    {device_state::kOther, 760},         {device_state::kRinging, 761},
    {device_state::kConnected, 762},     {device_state::kDisconnected, 763},
    {device_state::kMessageWaitOn, 764}, {device_state::kMessageWaitOff, 765},
    {device_state::kInService, 766},     {device_state::kOutOfService, 767},
    {device_state::kMaintenance, 768},   {device_state::kOpen, 769},
    {device_state::kClose, 770},         {device_state::kCalls, 771},
    {device_state::kCompletions, 772},   {device_state::kTerminals, 773},
    {device_state::kRoamMode, 774},      {device_state::kBattery, 775},
    {device_state::kSignal, 776},        {device_state::kDeviceSpecific, 777},
    {device_state::kReinitialize, 778},  {device_state::kLock, 779},
    {device_state::kRemoved, 780},
}};
constexpr unsigned kOtherDeviceState = 781;

constexpr std::array<TextRow, 9> kMessages = {{
    {line_message::kAddressState, 750},
    {line_message::kCallInfo, 751},
    {line_message::kClose, 752},
    {line_message::kCreate, 753},
    {line_message::kDeviceSpecific, 754},
    {line_message::kDeviceSpecificFeature, 755},
    {line_message::kGatherDigits, 756},
    {line_message::kGenerate, 757},
    {line_message::kRequest, 758},
}};

std::optional<unsigned> Find(std::span<const TextRow> table, std::uint32_t number) {
  const auto row = std::ranges::find(table, number, &TextRow::number);
  if (row == table.end()) return std::nullopt;
  return row->text_id;
}

}  // namespace

unsigned InitializeFailureFormat(LineCode error) {
  return Find(kInitializeFailures, error).value_or(kOtherInitializeFailure);
}

unsigned NegotiationFailureText(LineCode error) {
  return Find(kNegotiationFailures, error).value_or(kOtherDeviceFailure);
}

unsigned OpenFailureText(LineCode error) {
  const auto text_id = Find(kOpenFailures, error);
  return text_id ? *text_id : NegotiationFailureText(error);
}

std::optional<unsigned> MonitorDigitsFailureText(LineCode error) {
  return Find(kMonitorDigitsFailures, error);
}

unsigned CallStateText(std::uint32_t state) {
  return Find(kCallStates, state).value_or(kOtherCallState);
}

unsigned DeviceStateText(std::uint32_t state) {
  return Find(kDeviceStates, state).value_or(kOtherDeviceState);
}

std::optional<unsigned> MessageText(std::uint32_t message) {
  return Find(kMessages, message);
}

}  // namespace brantel
