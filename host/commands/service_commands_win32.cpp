#include "host/commands/service_commands.h"

#include <windows.h>

#include <array>

#include "host/commands/command_context_win32.h"
#include "host/outcome/system_error_text_win32.h"
#include "host/system/file_path_win32.h"
#include "host/watch/watch_run_win32.h"
#include "system/windows/handle_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

constexpr const wchar_t* kServiceName = L"notifyhost";

constexpr DWORD kPollMilliseconds = 100;
constexpr int kPolls = 600;

// How long the end takes that alerts under way have, and more.
constexpr DWORD kStopMilliseconds = 30000;

constexpr DWORD kRestartMilliseconds = 60000;

// SERVICE_CONFIG_FAILURE_ACTIONS_FLAG, from Windows Vista on: an end with an error counts as a
// fault, where older ones know crashes alone.
constexpr DWORD kConfigFailureActionsFlag = 4;

// Owns a handle of the service control manager, and closes it.
class ServiceHandle {
 public:
  explicit ServiceHandle(SC_HANDLE handle, const std::string& what) : handle_(handle) {
    if (handle_ == nullptr)
      throw CommandFailure(ExitCode::kFailed, what + ": " + SystemErrorText(GetLastError()));
  }
  ServiceHandle(const ServiceHandle&) = delete;
  ServiceHandle& operator=(const ServiceHandle&) = delete;
  ~ServiceHandle() { CloseServiceHandle(handle_); }

  [[nodiscard]] SC_HANDLE get() const { return handle_; }

 private:
  SC_HANDLE handle_;
};

ServiceHandle Manager(DWORD access) {
  return ServiceHandle(OpenSCManagerW(nullptr, nullptr, access), "the services cannot be reached");
}

ServiceHandle Service(const ServiceHandle& manager, DWORD access) {
  return ServiceHandle(OpenServiceW(manager.get(), kServiceName, access),
                       "the service notifyhost cannot be reached");
}

void Require(bool has_succeeded, const std::string& what) {
  if (!has_succeeded)
    throw CommandFailure(ExitCode::kFailed, what + ": " + SystemErrorText(GetLastError()));
}

DWORD StateOf(const ServiceHandle& service) {
  SERVICE_STATUS status{};
  Require(QueryServiceStatus(service.get(), &status) != FALSE, "the service gives no answer");
  return status.dwCurrentState;
}

void WaitForState(const ServiceHandle& service, DWORD state, const std::string& what) {
  for (int poll = 0; poll < kPolls; ++poll) {
    const DWORD present = StateOf(service);
    if (present == state) return;
    if (poll > 0 && present == SERVICE_STOPPED) break;
    Sleep(kPollMilliseconds);
  }
  throw CommandFailure(ExitCode::kFailed, what);
}

void StopAndWait(const ServiceHandle& service) {
  SERVICE_STATUS status{};
  if (StateOf(service) == SERVICE_STOPPED) return;
  Require(ControlService(service.get(), SERVICE_CONTROL_STOP, &status) != FALSE,
          "the service does not stop");
  WaitForState(service, SERVICE_STOPPED, "the service does not stop");
}

// Nobody would be told of anything any more after a watch has ended by a fault.
void RestartAfterFaults(const ServiceHandle& service) {
  SC_ACTION restart{SC_ACTION_RESTART, kRestartMilliseconds};
  SERVICE_FAILURE_ACTIONSW always{};
  always.dwResetPeriod = INFINITE;
  always.cActions = 1;
  always.lpsaActions = &restart;
  Require(ChangeServiceConfig2W(service.get(), SERVICE_CONFIG_FAILURE_ACTIONS, &always) != FALSE,
          "the service would not be started again after a fault");
  BOOL counts_errors = TRUE;
  ChangeServiceConfig2W(service.get(), kConfigFailureActionsFlag, &counts_errors);
}

PlanFile RightPlan(const std::string& file, const CommandContext& context) {
  PlanFile plan = ReadPlanFile(FromUtf8(file));
  RequireRightPlan(plan, context.errors);
  return plan;
}

std::wstring ThisProgramFile() {
  std::array<wchar_t, kPathCapacity> path{};
  GetModuleFileNameW(nullptr, path.data(), path.size());
  return path.data();
}

// No path has quotation marks in it.
std::wstring Quoted(const std::wstring& path) {
  return L"\"" + path + L"\"";
}

std::wstring CommandLineOf(const PlanFile& plan, const CommandContext& context) {
  std::wstring line = Quoted(ThisProgramFile()) + L" service run " + Quoted(plan.path) +
                      L" --log-file " + Quoted(plan.path + L".log");
  if (context.module_file) line += L" --module " + Quoted(FullPath(FromUtf8(*context.module_file)));
  return line;
}

// The watch as a service. The service control manager calls functions without any argument of ours,
// so there is one object.
class RunningService {
 public:
  RunningService(const std::string& plan_file, const CommandContext& context)
      : plan_file_(plan_file),
        context_(context),
        stop_(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {
    running = this;
  }
  RunningService(const RunningService&) = delete;
  RunningService& operator=(const RunningService&) = delete;
  ~RunningService() { running = nullptr; }

  // Returns when the service has ended.
  void Go() {
    std::wstring name = kServiceName;
    const std::array table = {SERVICE_TABLE_ENTRYW{name.data(), Main},
                              SERVICE_TABLE_ENTRYW{nullptr, nullptr}};
    Require(StartServiceCtrlDispatcherW(table.data()) != FALSE,
            "only Windows runs a service; use watch to watch from here");
  }

  [[nodiscard]] bool has_failed() const { return has_failed_; }

 private:
  static void WINAPI Main(DWORD, wchar_t**) { running->Serve(); }

  static DWORD WINAPI Control(DWORD control, DWORD, void*, void* context) {
    auto& service = *static_cast<RunningService*>(context);
    if (control == SERVICE_CONTROL_STOP || control == SERVICE_CONTROL_SHUTDOWN) {
      service.Report(SERVICE_STOP_PENDING);
      SetEvent(service.stop_.get());
      return NO_ERROR;
    }
    return control == SERVICE_CONTROL_INTERROGATE ? NO_ERROR : DWORD{ERROR_CALL_NOT_IMPLEMENTED};
  }

  // What is wrong with the plan is a fault of the service, too: Windows tries again after those.
  void Serve() {
    status_ = RegisterServiceCtrlHandlerExW(kServiceName, Control, this);
    if (status_ == nullptr) return;
    Report(SERVICE_START_PENDING);
    try {
      const PlanFile plan = RightPlan(plan_file_, context_);
      Report(SERVICE_RUNNING);
      RunWatch(plan, context_.module_file, context_.report, context_.errors, stop_.get());
    } catch (const std::exception& error) {
      has_failed_ = true;
      context_.errors.Write(std::string("notifyhost: ") + error.what() + "\n");
    }
    Report(SERVICE_STOPPED);
  }

  void Report(DWORD state) const {
    SERVICE_STATUS status{};
    status.dwServiceType = SERVICE_WIN32_OWN_PROCESS;
    status.dwCurrentState = state;
    if (state == SERVICE_RUNNING)
      status.dwControlsAccepted = SERVICE_ACCEPT_STOP | SERVICE_ACCEPT_SHUTDOWN;
    if (state == SERVICE_STOP_PENDING) status.dwWaitHint = kStopMilliseconds;
    if (state == SERVICE_STOPPED && has_failed_) {
      status.dwWin32ExitCode = ERROR_SERVICE_SPECIFIC_ERROR;
      status.dwServiceSpecificExitCode = static_cast<DWORD>(ExitCode::kFailed);
    }
    SetServiceStatus(status_, &status);
  }

  static inline RunningService* running = nullptr;

  const std::string& plan_file_;
  const CommandContext& context_;
  const Handle stop_;
  SERVICE_STATUS_HANDLE status_ = nullptr;
  bool has_failed_ = false;
};

}  // namespace

ExitCode Run(const ServiceInstallCommand& command, const CommandContext& context) {
  const PlanFile plan = RightPlan(command.file, context);
  const ServiceHandle manager = Manager(SC_MANAGER_CREATE_SERVICE);
  const ServiceHandle service(
      CreateServiceW(manager.get(), kServiceName, L"notifyhost watch", SERVICE_ALL_ACCESS,
                     SERVICE_WIN32_OWN_PROCESS, SERVICE_AUTO_START, SERVICE_ERROR_NORMAL,
                     CommandLineOf(plan, context).c_str(), nullptr, nullptr, nullptr, nullptr,
                     nullptr),
      "the service notifyhost cannot be installed");
  RestartAfterFaults(service);
  const std::string file = ToUtf8(plan.path);
  context.report.Entry("The service notifyhost watches " + file +
                           " from the next start of Windows on; notifyhost service start starts "
                           "it now.\n",
                       {{"installed", ToUtf8(kServiceName)}, {"plan", file}});
  return ExitCode::kDone;
}

ExitCode Run(const ServiceRemoveCommand&, const CommandContext& context) {
  const ServiceHandle manager = Manager(SC_MANAGER_CONNECT);
  const ServiceHandle service = Service(manager, DELETE | SERVICE_STOP | SERVICE_QUERY_STATUS);
  StopAndWait(service);
  Require(DeleteService(service.get()) != FALSE, "the service cannot be removed");
  context.report.Entry("The service notifyhost is removed.\n", {{"removed", ToUtf8(kServiceName)}});
  return ExitCode::kDone;
}

ExitCode Run(const ServiceStartCommand&, const CommandContext& context) {
  const ServiceHandle manager = Manager(SC_MANAGER_CONNECT);
  const ServiceHandle service = Service(manager, SERVICE_START | SERVICE_QUERY_STATUS);
  Require(StartServiceW(service.get(), 0, nullptr) != FALSE, "the service does not start");
  WaitForState(service, SERVICE_RUNNING, "the service has ended; its log says why");
  context.report.Entry("The service notifyhost runs.\n", {{"started", ToUtf8(kServiceName)}});
  return ExitCode::kDone;
}

ExitCode Run(const ServiceStopCommand&, const CommandContext& context) {
  const ServiceHandle manager = Manager(SC_MANAGER_CONNECT);
  StopAndWait(Service(manager, SERVICE_STOP | SERVICE_QUERY_STATUS));
  context.report.Entry("The service notifyhost is stopped.\n", {{"stopped", ToUtf8(kServiceName)}});
  return ExitCode::kDone;
}

ExitCode Run(const ServiceRunCommand& command, const CommandContext& context) {
  RunningService service(command.file, context);
  service.Go();
  return service.has_failed() ? ExitCode::kFailed : ExitCode::kDone;
}

}  // namespace brantel::host
