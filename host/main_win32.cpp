// notifyhost.exe: a host for the module on the command line.
#include <windows.h>
#include <shellapi.h>

#include <exception>
#include <memory>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "host/attempt/attempt_worker_win32.h"
#include "host/command_line.h"
#include "host/commands/command_context_win32.h"
#include "host/conformance/conformance_trial_win32.h"
#include "host/outcome/command_failure.h"
#include "host/system/com_apartment_win32.h"
#include "host/system/file_path_win32.h"
#include "host/system/log_file_win32.h"
#include "host/system/output_stream_win32.h"
#include "host/text/tee_sink.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

// The arguments behind the program's name. They come from the system and not through main, where
// they would be in the ANSI code page and have their wildcards expanded.
std::vector<std::string> CommandLineArguments() {
  int count = 0;
  const std::unique_ptr<wchar_t*, decltype(&LocalFree)> words(
      CommandLineToArgvW(GetCommandLineW(), &count), LocalFree);
  std::vector<std::string> arguments;
  for (int i = 1; words && i < count; ++i) {
    arguments.push_back(ToUtf8(words.get()[i]));
  }
  return arguments;
}

// What `run` returns, or what its failure stands for, which is told.
template <typename Function>
ExitCode Guarded(const TextSink& errors, const Function& run) {
  const auto tell = [&](const char* message) {
    errors.Write(std::string("notifyhost: ") + message + "\n");
  };
  try {
    return run();
  } catch (const CommandFailure& failure) {
    tell(failure.what());
    return failure.exit_code();
  } catch (const std::exception& error) {
    tell(error.what());
    return ExitCode::kFailed;
  }
}

// Does what one outcome of reading the command line asks for.
struct Runner {
  ExitCode operator()(const HelpRequest& help) const {
    output.Write(help.text);
    return ExitCode::kDone;
  }
  ExitCode operator()(const UsageError& usage_error) const {
    errors.Write(usage_error.text);
    return ExitCode::kWrongUsage;
  }
  ExitCode operator()(const Invocation& invocation) const {
    std::optional<LogFile> log;
    if (invocation.log_file) log.emplace(FullPath(FromUtf8(*invocation.log_file)), errors);
    const TextSink* const copy = log ? &*log : nullptr;
    return RunCommand(invocation, TeeSink(output, copy), TeeSink(errors, copy));
  }

  ExitCode RunCommand(const Invocation& invocation, const TextSink& told,
                      const TextSink& warned) const {
    const ReportWriter report(told, invocation.report_form, output.TakesColours());
    const CommandContext context{invocation.module_file, report, told, warned};
    return Guarded(warned, [&] {
      return std::visit([&](const auto& command) { return Run(command, context); },
                        invocation.command);
    });
  }

  OutputStream output{STD_OUTPUT_HANDLE};
  OutputStream errors{STD_ERROR_HANDLE};
};

// As the process of one alert, which another one has started.
ExitCode DeliverAsTold(const std::wstring& pipe_name) {
  const ComApartment apartment;
  return ServeAttempt(pipe_name);
}

// As the process of a trial, which another one has started.
ExitCode TryAsTold(const TrialRequest& request) {
  const ComApartment apartment;
  return RunTrial(request);
}

ExitCode RunHost() {
  const Runner runner;
  return Guarded(runner.errors, [&] {
    const auto arguments = CommandLineArguments();
    if (const auto pipe_name = AttemptPipeName(arguments)) return DeliverAsTold(*pipe_name);
    if (const auto trial = ReadTrialRequest(arguments)) return TryAsTold(*trial);
    return std::visit(runner, ParseCommandLine(arguments));
  });
}

}  // namespace
}  // namespace brantel::host

int main() {
  // A module that cannot be loaded is reported here, not in a message box of the system.
  SetErrorMode(SEM_FAILCRITICALERRORS);
  return static_cast<int>(brantel::host::RunHost());
}
