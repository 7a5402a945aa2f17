#pragma once

#include <cstddef>
#include <cstdint>

namespace brantel {

// What a telephony function answers: 0 when it succeeded, else one of line_error's numbers.
using LineCode = std::uint32_t;

// Numbers of the Windows Telephony API, as far as they mean something here.
namespace line_error {
inline constexpr LineCode kAllocated = 0x80000001;
inline constexpr LineCode kBadDeviceId = 0x80000002;
inline constexpr LineCode kIncompatibleApiVersion = 0x8000000C;
inline constexpr LineCode kIncompatibleExtensionVersion = 0x8000000D;
inline constexpr LineCode kIniFileCorrupt = 0x8000000E;
inline constexpr LineCode kInvalidAddressId = 0x80000011;
inline constexpr LineCode kInvalidApplicationHandle = 0x80000014;
inline constexpr LineCode kInvalidApplicationName = 0x80000015;
inline constexpr LineCode kInvalidCallHandle = 0x80000018;
inline constexpr LineCode kInvalidCallState = 0x8000001C;
inline constexpr LineCode kInvalidDigitMode = 0x80000027;
inline constexpr LineCode kInvalidMediaMode = 0x8000002F;
inline constexpr LineCode kInvalidParameter = 0x80000032;
inline constexpr LineCode kInvalidPointer = 0x80000035;
inline constexpr LineCode kInvalidPrivilegeSelect = 0x80000036;
inline constexpr LineCode kLineMapperFailed = 0x80000040;
inline constexpr LineCode kNoDevice = 0x80000042;
inline constexpr LineCode kNoDriver = 0x80000043;
inline constexpr LineCode kNoMemory = 0x80000044;
inline constexpr LineCode kOperationFailed = 0x80000048;
inline constexpr LineCode kOperationUnavailable = 0x80000049;
inline constexpr LineCode kResourceUnavailable = 0x8000004B;
inline constexpr LineCode kStructureTooSmall = 0x8000004D;
inline constexpr LineCode kUninitialized = 0x80000050;
inline constexpr LineCode kReinitialize = 0x80000052;
inline constexpr LineCode kNoMultipleInstance = 0x80000056;
}  // namespace line_error

namespace line_message {
inline constexpr std::uint32_t kAddressState = 0;
inline constexpr std::uint32_t kCallInfo = 1;
inline constexpr std::uint32_t kCallState = 2;
inline constexpr std::uint32_t kClose = 3;
inline constexpr std::uint32_t kDeviceSpecific = 4;
inline constexpr std::uint32_t kDeviceSpecificFeature = 5;
inline constexpr std::uint32_t kGatherDigits = 6;
inline constexpr std::uint32_t kGenerate = 7;
inline constexpr std::uint32_t kDeviceState = 8;
inline constexpr std::uint32_t kMonitorDigits = 9;
inline constexpr std::uint32_t kReply = 12;
inline constexpr std::uint32_t kRequest = 13;
inline constexpr std::uint32_t kCreate = 19;
}  // namespace line_message

namespace call_state {
inline constexpr std::uint32_t kIdle = 0x1;
inline constexpr std::uint32_t kOffering = 0x2;
inline constexpr std::uint32_t kAccepted = 0x4;
inline constexpr std::uint32_t kDialTone = 0x8;
inline constexpr std::uint32_t kDialing = 0x10;
inline constexpr std::uint32_t kRingback = 0x20;
inline constexpr std::uint32_t kBusy = 0x40;
inline constexpr std::uint32_t kSpecialInfo = 0x80;
inline constexpr std::uint32_t kConnected = 0x100;
inline constexpr std::uint32_t kProceeding = 0x200;
inline constexpr std::uint32_t kOnHold = 0x400;
inline constexpr std::uint32_t kConferenced = 0x800;
inline constexpr std::uint32_t kOnHoldPendingConference = 0x1000;
inline constexpr std::uint32_t kDisconnected = 0x4000;
inline constexpr std::uint32_t kUnknown = 0x8000;
}  // namespace call_state

namespace device_state {
inline constexpr std::uint32_t kOther = 0x1;
inline constexpr std::uint32_t kRinging = 0x2;
inline constexpr std::uint32_t kConnected = 0x4;
inline constexpr std::uint32_t kDisconnected = 0x8;
inline constexpr std::uint32_t kMessageWaitOn = 0x10;
inline constexpr std::uint32_t kMessageWaitOff = 0x20;
inline constexpr std::uint32_t kInService = 0x40;
inline constexpr std::uint32_t kOutOfService = 0x80;
inline constexpr std::uint32_t kMaintenance = 0x100;
inline constexpr std::uint32_t kOpen = 0x200;
inline constexpr std::uint32_t kClose = 0x400;
inline constexpr std::uint32_t kCalls = 0x800;
inline constexpr std::uint32_t kCompletions = 0x1000;
inline constexpr std::uint32_t kTerminals = 0x2000;
inline constexpr std::uint32_t kRoamMode = 0x4000;
inline constexpr std::uint32_t kBattery = 0x8000;
inline constexpr std::uint32_t kSignal = 0x10000;
inline constexpr std::uint32_t kDeviceSpecific = 0x20000;
inline constexpr std::uint32_t kReinitialize = 0x40000;
inline constexpr std::uint32_t kLock = 0x80000;
inline constexpr std::uint32_t kRemoved = 0x1000000;
}  // namespace device_state

// Sizes of telephony's structures and offsets of their words. The first word of each is its size.
namespace line_structure {
inline constexpr std::size_t kNeededSize = 4;  // of those that telephony fills
inline constexpr std::uint32_t kCapabilitiesSize = 252;
inline constexpr std::size_t kCapabilitiesMediaModes = 60;
inline constexpr std::uint32_t kCallParametersSize = 176;
inline constexpr std::size_t kCallParametersBearerMode = 4;
inline constexpr std::size_t kCallParametersMediaMode = 16;
inline constexpr std::uint32_t kVariableTextSize = 24;
inline constexpr std::size_t kVariableTextOffset = 20;
}  // namespace line_structure

inline constexpr std::uint32_t kBearerModeVoice = 1;
inline constexpr std::uint32_t kMediaModeAutomatedVoice = 8;
inline constexpr std::uint32_t kCallPrivilegeOwner = 4;
inline constexpr std::uint32_t kDigitModeNone = 0;
inline constexpr std::uint32_t kDigitModeDtmf = 2;

// Of which the wave device is asked for.
enum class CallSelect : std::uint32_t { kLine = 1, kCall = 4 };

}  // namespace brantel
