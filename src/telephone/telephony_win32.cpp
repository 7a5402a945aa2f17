#include "telephone/telephony_win32.h"

#include <windows.h>
#include <tapi.h>

#include <cstddef>
#include <optional>

#include "system/exception_guard.h"
#include "system/windows/module_instance_win32.h"
#include "system/windows/system_library_win32.h"

namespace brantel {
namespace {

static_assert(line_error::kAllocated == LINEERR_ALLOCATED);
static_assert(line_error::kBadDeviceId == LINEERR_BADDEVICEID);
static_assert(line_error::kIncompatibleApiVersion == LINEERR_INCOMPATIBLEAPIVERSION);
static_assert(line_error::kIncompatibleExtensionVersion == LINEERR_INCOMPATIBLEEXTVERSION);
static_assert(line_error::kIniFileCorrupt == LINEERR_INIFILECORRUPT);
static_assert(line_error::kInvalidAddressId == LINEERR_INVALADDRESSID);
static_assert(line_error::kInvalidApplicationHandle == LINEERR_INVALAPPHANDLE);
static_assert(line_error::kInvalidApplicationName == LINEERR_INVALAPPNAME);
static_assert(line_error::kInvalidCallHandle == LINEERR_INVALCALLHANDLE);
static_assert(line_error::kInvalidCallState == LINEERR_INVALCALLSTATE);
static_assert(line_error::kInvalidDigitMode == LINEERR_INVALDIGITMODE);
static_assert(line_error::kInvalidMediaMode == LINEERR_INVALMEDIAMODE);
static_assert(line_error::kInvalidParameter == LINEERR_INVALPARAM);
static_assert(line_error::kInvalidPointer == LINEERR_INVALPOINTER);
static_assert(line_error::kInvalidPrivilegeSelect == LINEERR_INVALPRIVSELECT);
static_assert(line_error::kLineMapperFailed == LINEERR_LINEMAPPERFAILED);
static_assert(line_error::kNoDevice == LINEERR_NODEVICE);
static_assert(line_error::kNoDriver == LINEERR_NODRIVER);
static_assert(line_error::kNoMemory == LINEERR_NOMEM);
static_assert(line_error::kOperationFailed == LINEERR_OPERATIONFAILED);
static_assert(line_error::kOperationUnavailable == LINEERR_OPERATIONUNAVAIL);
static_assert(line_error::kResourceUnavailable == LINEERR_RESOURCEUNAVAIL);
static_assert(line_error::kStructureTooSmall == LINEERR_STRUCTURETOOSMALL);
static_assert(line_error::kUninitialized == LINEERR_UNINITIALIZED);
static_assert(line_error::kReinitialize == LINEERR_REINIT);
static_assert(line_error::kNoMultipleInstance == LINEERR_NOMULTIPLEINSTANCE);

static_assert(line_message::kAddressState == LINE_ADDRESSSTATE);
static_assert(line_message::kCallInfo == LINE_CALLINFO);
static_assert(line_message::kCallState == LINE_CALLSTATE);
static_assert(line_message::kClose == LINE_CLOSE);
static_assert(line_message::kDeviceSpecific == LINE_DEVSPECIFIC);
static_assert(line_message::kDeviceSpecificFeature == LINE_DEVSPECIFICFEATURE);
static_assert(line_message::kGatherDigits == LINE_GATHERDIGITS);
static_assert(line_message::kGenerate == LINE_GENERATE);
static_assert(line_message::kDeviceState == LINE_LINEDEVSTATE);
static_assert(line_message::kMonitorDigits == LINE_MONITORDIGITS);
static_assert(line_message::kReply == LINE_REPLY);
static_assert(line_message::kRequest == LINE_REQUEST);
static_assert(line_message::kCreate == LINE_CREATE);

static_assert(call_state::kIdle == LINECALLSTATE_IDLE);
static_assert(call_state::kOffering == LINECALLSTATE_OFFERING);
static_assert(call_state::kAccepted == LINECALLSTATE_ACCEPTED);
static_assert(call_state::kDialTone == LINECALLSTATE_DIALTONE);
static_assert(call_state::kDialing == LINECALLSTATE_DIALING);
static_assert(call_state::kRingback == LINECALLSTATE_RINGBACK);
static_assert(call_state::kBusy == LINECALLSTATE_BUSY);
static_assert(call_state::kSpecialInfo == LINECALLSTATE_SPECIALINFO);
static_assert(call_state::kConnected == LINECALLSTATE_CONNECTED);
static_assert(call_state::kProceeding == LINECALLSTATE_PROCEEDING);
static_assert(call_state::kOnHold == LINECALLSTATE_ONHOLD);
static_assert(call_state::kConferenced == LINECALLSTATE_CONFERENCED);
static_assert(call_state::kOnHoldPendingConference == LINECALLSTATE_ONHOLDPENDCONF);
static_assert(call_state::kDisconnected == LINECALLSTATE_DISCONNECTED);
static_assert(call_state::kUnknown == LINECALLSTATE_UNKNOWN);

static_assert(device_state::kOther == LINEDEVSTATE_OTHER);
static_assert(device_state::kRinging == LINEDEVSTATE_RINGING);
static_assert(device_state::kConnected == LINEDEVSTATE_CONNECTED);
static_assert(device_state::kDisconnected == LINEDEVSTATE_DISCONNECTED);
static_assert(device_state::kMessageWaitOn == LINEDEVSTATE_MSGWAITON);
static_assert(device_state::kMessageWaitOff == LINEDEVSTATE_MSGWAITOFF);
static_assert(device_state::kInService == LINEDEVSTATE_INSERVICE);
static_assert(device_state::kOutOfService == LINEDEVSTATE_OUTOFSERVICE);
static_assert(device_state::kMaintenance == LINEDEVSTATE_MAINTENANCE);
static_assert(device_state::kOpen == LINEDEVSTATE_OPEN);
static_assert(device_state::kClose == LINEDEVSTATE_CLOSE);
static_assert(device_state::kCalls == LINEDEVSTATE_NUMCALLS);
static_assert(device_state::kCompletions == LINEDEVSTATE_NUMCOMPLETIONS);
static_assert(device_state::kTerminals == LINEDEVSTATE_TERMINALS);
static_assert(device_state::kRoamMode == LINEDEVSTATE_ROAMMODE);
static_assert(device_state::kBattery == LINEDEVSTATE_BATTERY);
static_assert(device_state::kSignal == LINEDEVSTATE_SIGNAL);
static_assert(device_state::kDeviceSpecific == LINEDEVSTATE_DEVSPECIFIC);
static_assert(device_state::kReinitialize == LINEDEVSTATE_REINIT);
static_assert(device_state::kLock == LINEDEVSTATE_LOCK);
static_assert(device_state::kRemoved == LINEDEVSTATE_REMOVED);

static_assert(line_structure::kNeededSize == offsetof(LINEDEVCAPS, dwNeededSize));
static_assert(line_structure::kNeededSize == offsetof(VARSTRING, dwNeededSize));
static_assert(line_structure::kCapabilitiesMediaModes == offsetof(LINEDEVCAPS, dwMediaModes));
static_assert(line_structure::kCallParametersBearerMode == offsetof(LINECALLPARAMS, dwBearerMode));
static_assert(line_structure::kCallParametersMediaMode == offsetof(LINECALLPARAMS, dwMediaMode));
static_assert(line_structure::kVariableTextSize == sizeof(VARSTRING));
static_assert(line_structure::kVariableTextOffset == offsetof(VARSTRING, dwStringOffset));

static_assert(kBearerModeVoice == LINEBEARERMODE_VOICE);
static_assert(kMediaModeAutomatedVoice == LINEMEDIAMODE_AUTOMATEDVOICE);
static_assert(kCallPrivilegeOwner == LINECALLPRIVILEGE_OWNER);
static_assert(kDigitModeDtmf == LINEDIGITMODE_DTMF);
static_assert(static_cast<DWORD>(CallSelect::kLine) == LINECALLSELECT_LINE);
static_assert(static_cast<DWORD>(CallSelect::kCall) == LINECALLSELECT_CALL);

constexpr const char* kApplicationName = "Vantrel";

// Stays loaded as long as the process lives. A failure is kept as well.
HMODULE Library() {
  static constinit std::optional<HMODULE> library;
  if (!library) library = LoadSystemLibrary("TAPI32.DLL");
  return *library;
}

// A function of the library's.
template <typename Function>
class EntryPoint {
 public:
  explicit constexpr EntryPoint(const char* name) : name_(name) {}

  template <typename... Arguments>
  LineCode operator()(Arguments... arguments) {
    if (!function_) function_ = Find();
    if (*function_ == nullptr) return line_error::kOperationUnavailable;
    return static_cast<LineCode>((*function_)(arguments...));
  }

 private:
  [[nodiscard]] Function* Find() const {
    HMODULE library = Library();
    if (library == nullptr) return nullptr;
    return reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(library, name_)));
  }

  const char* name_;
  std::optional<Function*> function_;
};

constinit EntryPoint<decltype(::lineInitialize)> line_initialize("lineInitialize");
constinit EntryPoint<decltype(::lineNegotiateAPIVersion)> line_negotiate_version(
    "lineNegotiateAPIVersion");
constinit EntryPoint<decltype(::lineGetDevCapsA)> line_get_capabilities("lineGetDevCapsA");
constinit EntryPoint<decltype(::lineOpenA)> line_open("lineOpenA");
constinit EntryPoint<decltype(::lineMakeCallA)> line_make_call("lineMakeCallA");
constinit EntryPoint<decltype(::lineGetIDA)> line_get_id("lineGetIDA");
constinit EntryPoint<decltype(::lineMonitorDigits)> line_monitor_digits("lineMonitorDigits");
constinit EntryPoint<decltype(::lineClose)> line_close("lineClose");
constinit EntryPoint<decltype(::lineShutdown)> line_shutdown("lineShutdown");

// Telephony's handles and numbers are of another type of the same size.
DWORD* ToSystem(std::uint32_t& number) {
  static_assert(sizeof(DWORD) == sizeof(std::uint32_t));
  return reinterpret_cast<DWORD*>(&number);
}

LINECALLPARAMS* ToCallParameters(std::span<const std::byte> block) {
  // NOLINTNEXTLINE(*-const-cast): only read, whatever the function's declaration says
  return reinterpret_cast<LINECALLPARAMS*>(const_cast<std::byte*>(block.data()));
}

// Who is told what happens. Messages that belong to no line come without one's instance value, so
// that they could not be told apart by that; and one that comes late must find nobody.
constinit LineMessageReceiver* receiver_of_messages = nullptr;

void CALLBACK ReceiveMessage(DWORD, DWORD message, DWORD_PTR, DWORD_PTR first, DWORD_PTR second,
                             DWORD_PTR) noexcept {
  if (receiver_of_messages == nullptr) return;
  static_cast<void>(GuardExceptions([&] {
    receiver_of_messages->Receive(
        {message, static_cast<std::uint32_t>(first), static_cast<std::uint32_t>(second)});
    return kOk;
  }));
}

}  // namespace

LineCode SystemTelephony::Initialize(LineMessageReceiver& receiver, std::uint32_t& application,
                                     std::uint32_t& device_count) {
  receiver_of_messages = &receiver;
  const LineCode code = line_initialize(ToSystem(application), ModuleInstance(), &ReceiveMessage,
                                        kApplicationName, ToSystem(device_count));
  if (code != 0) receiver_of_messages = nullptr;
  return code;
}

LineCode SystemTelephony::NegotiateVersion(std::uint32_t application, std::uint32_t device,
                                           const VersionRange& range, std::uint32_t& version) {
  LINEEXTENSIONID extension{};
  return line_negotiate_version(application, device, range.lowest, range.highest, ToSystem(version),
                                &extension);
}

LineCode SystemTelephony::GetCapabilities(std::uint32_t application, std::uint32_t device,
                                          std::uint32_t version,
                                          std::span<std::byte> capabilities) {
  return line_get_capabilities(application, device, version, DWORD{0},
                               reinterpret_cast<LINEDEVCAPS*>(capabilities.data()));
}

LineCode SystemTelephony::Open(std::uint32_t application, std::uint32_t device,
                               std::uint32_t version, std::uint32_t media_mode,
                               std::span<const std::byte> call_parameters, std::uint32_t& line) {
  return line_open(application, device, ToSystem(line), version, DWORD{0},
                   reinterpret_cast<DWORD_PTR>(receiver_of_messages), DWORD{kCallPrivilegeOwner},
                   media_mode, ToCallParameters(call_parameters));
}

LineCode SystemTelephony::MakeCall(std::uint32_t line, const std::string& number,
                                   std::span<const std::byte> call_parameters,
                                   std::uint32_t& call) {
  return line_make_call(line, ToSystem(call), number.c_str(), DWORD{0},
                        ToCallParameters(call_parameters));
}

LineCode SystemTelephony::GetId(std::uint32_t line, std::uint32_t call, CallSelect select,
                                const char* device_class, std::span<std::byte> id) {
  return line_get_id(line, DWORD{0}, call, static_cast<DWORD>(select),
                     reinterpret_cast<VARSTRING*>(id.data()), device_class);
}

LineCode SystemTelephony::MonitorDigits(std::uint32_t call, std::uint32_t digit_mode) {
  return line_monitor_digits(call, digit_mode);
}

LineCode SystemTelephony::Close(std::uint32_t line) {
  return line_close(line);
}

LineCode SystemTelephony::Shutdown(std::uint32_t application) {
  receiver_of_messages = nullptr;
  return line_shutdown(application);
}

}  // namespace brantel
