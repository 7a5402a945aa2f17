#include "tests/module/started_program.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <stdexcept>

#include "tests/module/patience.h"
#include "tests/module/process_level.h"
#include "tests/module/test_program.h"

namespace brantel {
namespace {

constexpr const wchar_t* kReportVariable = L"BRANTEL_CHILD_REPORT";
constexpr const wchar_t* kReportedVariable = L"BRANTEL_CHILD_REPORTED";
constexpr const wchar_t* kReleaseVariable = L"BRANTEL_CHILD_RELEASE";

// A new event, whose name the variable tells the child.
Handle NewEvent(const wchar_t* variable) {
  static int count = 0;
  const std::wstring name =
      L"brantel_child_" + std::to_wstring(GetCurrentProcessId()) + L"_" + std::to_wstring(++count);
  SetEnvironmentVariableW(variable, name.c_str());
  return Handle(CreateEventW(nullptr, TRUE, FALSE, name.c_str()));
}

std::string FromHexadecimal(const std::string& text) {
  std::string bytes;
  for (std::size_t i = 0; i + 1 < text.size(); i += 2) {
    bytes.push_back(static_cast<char>(std::stoul(text.substr(i, 2), nullptr, 16)));
  }
  return bytes;
}

ProgramReport ReadReport(const std::filesystem::path& file) {
  std::map<std::string, std::string> lines;
  std::ifstream in(file, std::ios::binary);
  for (std::string line; std::getline(in, line);) {
    const std::size_t equals = line.find('=');
    lines[line.substr(0, equals)] = line.substr(equals + 1);
  }
  const auto number = [&](const char* name) {
    return static_cast<DWORD>(std::stoul(lines.at(name)));
  };
  return {.command_line = FromHexadecimal(lines.at("command_line")),
          .directory = FromHexadecimal(lines.at("directory")),
          .program = FromHexadecimal(lines.at("program")),
          .startup_size = number("startup_size"),
          .startup_flags = number("startup_flags"),
          .show_window = number("show_window"),
          .priority_class = number("priority_class"),
          .process_id = number("process_id")};
}

}  // namespace

ProgramWatch::ProgramWatch(const ScratchDirectory& scratch)
    : report_file_(scratch.path() / L"child_report"),
      reported_(NewEvent(kReportedVariable)),
      release_(NewEvent(kReleaseVariable)) {
  SetEnvironmentVariableW(kReportVariable, report_file_.c_str());
}

ProgramWatch::~ProgramWatch() {
  if (process_) {
    LetItEnd();
  } else {
    SetEvent(release_.get());
  }
  for (const wchar_t* variable : {kReportVariable, kReportedVariable, kReleaseVariable}) {
    SetEnvironmentVariableW(variable, nullptr);
  }
  std::error_code ignored;
  std::filesystem::remove(report_file_, ignored);
}

const ProgramReport& ProgramWatch::AwaitReport() {
  if (WaitForSingleObject(reported_.get(), kPatience) != WAIT_OBJECT_0) {
    throw std::runtime_error("no program has reported");
  }
  report_ = ReadReport(report_file_);
  process_ = Handle(OpenProcess(SYNCHRONIZE, FALSE, report_.process_id));
  if (!process_) throw std::runtime_error("the program ended before it was let go");
  return report_;
}

bool ProgramWatch::IsRunning() const {
  return WaitForSingleObject(process_.get(), 0) == WAIT_TIMEOUT;
}

void ProgramWatch::LetItEnd() {
  SetEvent(release_.get());
  WaitForSingleObject(process_.get(), kPatience);
}

std::filesystem::path PlaceChildProgram(const ScratchDirectory& scratch,
                                        const std::filesystem::path& name) {
  std::filesystem::path copy = scratch.path() / name;
  const std::filesystem::path original =
      std::filesystem::path(TestProgramFolder()) / L"child_program.exe";
  if (CopyFileW(original.c_str(), copy.c_str(), TRUE) == FALSE) {
    throw std::runtime_error("the child program is not beside the test program");
  }
  return copy;
}

HandleWatch::HandleWatch() : before_(OpenHandles()) {}

HandleWatch::~HandleWatch() {
  for (HANDLE handle : NewHandles()) {
    const DWORD process = GetProcessIdOfThread(handle);
    if (process != 0 && process != GetCurrentProcessId()) CloseHandle(handle);
  }
}

std::vector<HANDLE> HandleWatch::NewHandles() const {
  std::vector<HANDLE> added;
  std::ranges::set_difference(OpenHandles(), before_, std::back_inserter(added));
  return added;
}

}  // namespace brantel
