#include "telephone/line_texts.h"

#include <algorithm>
#include <array>
#include <span>

#include "text/string_table.h"

namespace brantel {
namespace {

// The text for a number of telephony's.
struct TextRow {
  std::uint32_t number;
  unsigned text_id;
};

constexpr std::array<TextRow, 11> kInitializeFailures = {{
    {line_error::kNoMemory, text_id::kInitializeNoMemory},
    {line_error::kOperationFailed, text_id::kInitializeOperationFailed},
    {line_error::kResourceUnavailable, text_id::kInitializeResourceUnavailable},
    {line_error::kReinitialize, text_id::kInitializeReinitialize},
    {line_error::kNoMultipleInstance, text_id::kInitializeNoMultipleInstance},
    {line_error::kNoDriver, text_id::kInitializeNoDriver},
    {line_error::kIniFileCorrupt, text_id::kInitializeIniFileCorrupt},
    {line_error::kInvalidApplicationName, text_id::kInitializeInvalidApplicationName},
    {line_error::kInvalidParameter, text_id::kInitializeInvalidParameter},
    {line_error::kInvalidPointer, text_id::kInitializeInvalidPointer},
    {line_error::kNoDevice, text_id::kInitializeNoDevice},
}};

constexpr std::array<TextRow, 11> kNegotiationFailures = {{
    {line_error::kBadDeviceId, text_id::kDeviceBadDeviceId},
    {line_error::kIncompatibleApiVersion, text_id::kDeviceIncompatibleApiVersion},
    {line_error::kInvalidApplicationHandle, text_id::kDeviceInvalidApplicationHandle},
    {line_error::kInvalidPointer, text_id::kDeviceInvalidPointer},
    {line_error::kNoDevice, text_id::kDeviceNoDevice},
    {line_error::kNoDriver, text_id::kDeviceNoDriver},
    {line_error::kNoMemory, text_id::kDeviceNoMemory},
    {line_error::kOperationFailed, text_id::kDeviceOperationFailed},
    {line_error::kOperationUnavailable, text_id::kDeviceOperationUnavailable},
    {line_error::kResourceUnavailable, text_id::kDeviceResourceUnavailable},
    {line_error::kUninitialized, text_id::kDeviceUninitialized},
}};

// Beside those of the negotiation.
constexpr std::array<TextRow, 7> kOpenFailures = {{
    {line_error::kAllocated, text_id::kDeviceAllocated},
    {line_error::kLineMapperFailed, text_id::kDeviceLineMapperFailed},
    {line_error::kIncompatibleExtensionVersion, text_id::kDeviceIncompatibleExtensionVersion},
    {line_error::kInvalidMediaMode, text_id::kDeviceInvalidMediaMode},
    {line_error::kStructureTooSmall, text_id::kDeviceStructureTooSmall},
    {line_error::kInvalidPrivilegeSelect, text_id::kDeviceInvalidPrivilegeSelect},
    {line_error::kReinitialize, text_id::kDeviceReinitialize},
}};

constexpr std::array<TextRow, 8> kMonitorDigitsFailures = {{
    {line_error::kInvalidCallHandle, text_id::kMonitorDigitsInvalidCallHandle},
    {line_error::kInvalidCallState, text_id::kMonitorDigitsInvalidCallState},
    {line_error::kInvalidDigitMode, text_id::kMonitorDigitsInvalidDigitMode},
    {line_error::kNoMemory, text_id::kMonitorDigitsNoMemory},
    {line_error::kOperationFailed, text_id::kMonitorDigitsOperationFailed},
    {line_error::kOperationUnavailable, text_id::kMonitorDigitsOperationUnavailable},
    {line_error::kResourceUnavailable, text_id::kMonitorDigitsResourceUnavailable},
    {line_error::kUninitialized, text_id::kMonitorDigitsUninitialized},
}};

constexpr std::array<TextRow, 15> kCallStates = {{
    {call_state::kIdle, text_id::kCallStateIdle},
    {call_state::kOffering, text_id::kCallStateOffering},
    {call_state::kAccepted, text_id::kCallStateAccepted},
    {call_state::kDialTone, text_id::kCallStateDialTone},
    {call_state::kDialing, text_id::kCallStateDialing},
    {call_state::kRingback, text_id::kCallStateRingback},
    {call_state::kBusy, text_id::kCallStateBusy},
    {call_state::kSpecialInfo, text_id::kCallStateSpecialInfo},
    {call_state::kConnected, text_id::kCallStateConnected},
    {call_state::kProceeding, text_id::kCallStateProceeding},
    {call_state::kOnHold, text_id::kCallStateOnHold},
    {call_state::kConferenced, text_id::kCallStateConferenced},
    {call_state::kOnHoldPendingConference, text_id::kCallStateOnHoldPendingConference},
    {call_state::kDisconnected, text_id::kCallStateDisconnected},
    {call_state::kUnknown, text_id::kCallStateUnknown},
}};

constexpr std::array<TextRow, 21> kDeviceStates = {{
    {device_state::kOther, text_id::kDeviceStateOther},
    {device_state::kRinging, text_id::kDeviceStateRinging},
    {device_state::kConnected, text_id::kDeviceStateConnected},
    {device_state::kDisconnected, text_id::kDeviceStateDisconnected},
    {device_state::kMessageWaitOn, text_id::kDeviceStateMessageWaitOn},
    {device_state::kMessageWaitOff, text_id::kDeviceStateMessageWaitOff},
    {device_state::kInService, text_id::kDeviceStateInService},
    {device_state::kOutOfService, text_id::kDeviceStateOutOfService},
    {device_state::kMaintenance, text_id::kDeviceStateMaintenance},
    {device_state::kOpen, text_id::kDeviceStateOpen},
    {device_state::kClose, text_id::kDeviceStateClose},
    {device_state::kCalls, text_id::kDeviceStateCalls},
    {device_state::kCompletions, text_id::kDeviceStateCompletions},
    {device_state::kTerminals, text_id::kDeviceStateTerminals},
    {device_state::kRoamMode, text_id::kDeviceStateRoamMode},
    {device_state::kBattery, text_id::kDeviceStateBattery},
    {device_state::kSignal, text_id::kDeviceStateSignal},
    {device_state::kDeviceSpecific, text_id::kDeviceStateDeviceSpecific},
    {device_state::kReinitialize, text_id::kDeviceStateReinitialize},
    {device_state::kLock, text_id::kDeviceStateLock},
    {device_state::kRemoved, text_id::kDeviceStateRemoved},
}};

constexpr std::array<TextRow, 9> kMessages = {{
    {line_message::kAddressState, text_id::kLineMessageAddressState},
    {line_message::kCallInfo, text_id::kLineMessageCallInfo},
    {line_message::kClose, text_id::kLineMessageClose},
    {line_message::kCreate, text_id::kLineMessageCreate},
    {line_message::kDeviceSpecific, text_id::kLineMessageDeviceSpecific},
    {line_message::kDeviceSpecificFeature, text_id::kLineMessageDeviceSpecificFeature},
    {line_message::kGatherDigits, text_id::kLineMessageGatherDigits},
    {line_message::kGenerate, text_id::kLineMessageGenerate},
    {line_message::kRequest, text_id::kLineMessageRequest},
}};

std::optional<unsigned> Find(std::span<const TextRow> table, std::uint32_t number) {
  const auto row = std::ranges::find(table, number, &TextRow::number);
  if (row == table.end()) return std::nullopt;
  return row->text_id;
}

}  // namespace

unsigned InitializeFailureFormat(LineCode error) {
  return Find(kInitializeFailures, error).value_or(text_id::kInitializeOther);
}

unsigned NegotiationFailureText(LineCode error) {
  return Find(kNegotiationFailures, error).value_or(text_id::kDeviceOther);
}

unsigned OpenFailureText(LineCode error) {
  const auto text_id = Find(kOpenFailures, error);
  return text_id ? *text_id : NegotiationFailureText(error);
}

std::optional<unsigned> MonitorDigitsFailureText(LineCode error) {
  return Find(kMonitorDigitsFailures, error);
}

unsigned CallStateText(std::uint32_t state) {
  return Find(kCallStates, state).value_or(text_id::kCallStateOther);
}

unsigned DeviceStateText(std::uint32_t state) {
  return Find(kDeviceStates, state).value_or(text_id::kDeviceStateUnrecognized);
}

std::optional<unsigned> MessageText(std::uint32_t message) {
  return Find(kMessages, message);
}

}  // namespace brantel
