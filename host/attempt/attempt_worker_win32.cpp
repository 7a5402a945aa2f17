#include "host/attempt/attempt_worker_win32.h"

#include <windows.h>

#include <array>
#include <exception>
#include <string_view>

#include "host/alert/host_callback_win32.h"
#include "host/attempt/alert_request.h"
#include "host/attempt/attempt_message.h"
#include "host/module/created_notifier_win32.h"
#include "host/outcome/result_text.h"
#include "host/system/interruption_win32.h"
#include "host/text/line_assembler.h"
#include "system/windows/bstr_win32.h"
#include "system/windows/com_pointer_win32.h"
#include "system/windows/handle_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

// No command can have this name, so nobody types it by mistake.
constexpr std::string_view kAttemptArgument = "--deliver-for-pipe";

// The process that has started this one, at the other end of the pipe.
class Starter {
 public:
  explicit Starter(const std::wstring& pipe_name)
      : pipe_(CreateFileW(pipe_name.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                          OPEN_EXISTING, SECURITY_SQOS_PRESENT | SECURITY_ANONYMOUS, nullptr)) {}

  // Nothing when it has gone or talks otherwise.
  std::optional<AlertRequest> ReadRequest() const {
    LineAssembler lines;
    std::array<char, 4096> piece{};
    while (true) {
      if (const auto line = lines.NextLine()) return ParseRequest(*line);
      DWORD size = 0;
      if (ReadFile(pipe_.get(), piece.data(), piece.size(), &size, nullptr) == FALSE || size == 0)
        return std::nullopt;
      lines.Take({piece.data(), size});
    }
  }

  // That nobody listens any more is no reason to stop an alert.
  void Tell(const AttemptMessage& message) const {
    const std::string line = MessageLine(message);
    DWORD written = 0;
    WriteFile(pipe_.get(), line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
  }

 private:
  Handle pipe_;
};

void Deliver(const AlertRequest& request, const Starter& starter) {
  const CreatedNotifier created = CreateNotifier(request.class_name, request.module_file);
  const auto callback = ComPointer<HostCallback>::Adopt(new HostCallback(
      request.event, ExpanderFor(request.variables, request.class_name, request.takes_raw_values),
      [&](std::string_view text) { starter.Tell(LoggedText{std::string(text)}); }));
  const HRESULT initialised = created.notifier->Initialize(callback.get());
  if (FAILED(initialised)) {
    throw CommandFailure(ExitCode::kFailed, request.class_name + " could not be initialised: " +
                                                ResultText(initialised));
  }
  const Bstr instance(FromUtf8(request.instance_file));
  starter.Tell(SendResult{created.notifier->Send(instance.get())});
  created.notifier->Shutdown();
}

}  // namespace

std::wstring AttemptCommandLine(const std::wstring& pipe_name) {
  return L"notifyhost " + FromUtf8(kAttemptArgument) + L" " + pipe_name;
}

std::optional<std::wstring> AttemptPipeName(const std::vector<std::string>& arguments) {
  if (arguments.size() != 2 || arguments[0] != kAttemptArgument) return std::nullopt;
  return FromUtf8(arguments[1]);
}

ExitCode ServeAttempt(const std::wstring& pipe_name) {
  LeaveInterruptionsToOthers();
  const Starter starter(pipe_name);
  try {
    const auto request = starter.ReadRequest();
    if (!request) return ExitCode::kWrongUsage;
    Deliver(*request, starter);
    return ExitCode::kDone;
  } catch (const CommandFailure& failure) {
    starter.Tell(AttemptFault{failure.exit_code(), failure.what()});
    return failure.exit_code();
  } catch (const std::exception& error) {
    starter.Tell(AttemptFault{ExitCode::kFailed, error.what()});
    return ExitCode::kFailed;
  }
}

}  // namespace brantel::host
