// demo_program.exe: a program for an alert to start, which tells how it was started. It writes
//
//   Command line: <its command line, to the byte>
//   Working directory: <its working directory>
//
// into the file that the environment variable DEMO_REPORT names by its full Windows path, and ends.
// The file appears with all of its content or not at all. When DEMO_WAIT_FOR names a file by its
// full Windows path, the program first waits for at most a minute for that file to be there, so
// that one can see who waits for the program and who does not.
//
// Exit codes: 0 the report is written, 1 it is not.
#include <windows.h>

#include <string>

#include "system/windows/handle_win32.h"

namespace {

constexpr DWORD kPathCapacity = 32768;
constexpr DWORD kPollMilliseconds = 10;
constexpr DWORD kWaitMilliseconds = 60000;

// Empty when there is no such variable.
std::wstring EnvironmentVariable(const wchar_t* name) {
  std::wstring value(kPathCapacity, L'\0');
  value.resize(GetEnvironmentVariableW(name, value.data(), kPathCapacity));
  return value;
}

std::string WorkingDirectory() {
  std::string directory(kPathCapacity, '\0');
  directory.resize(GetCurrentDirectoryA(kPathCapacity, directory.data()));
  return directory;
}

bool Exists(const std::wstring& file) {
  return GetFileAttributesW(file.c_str()) != INVALID_FILE_ATTRIBUTES;
}

void WaitForFile(const std::wstring& file) {
  for (DWORD waited = 0; !Exists(file) && waited < kWaitMilliseconds; waited += kPollMilliseconds) {
    Sleep(kPollMilliseconds);
  }
}

bool WriteFileWhole(const std::wstring& path, const std::string& content) {
  const brantel::Handle file(CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                         FILE_ATTRIBUTE_NORMAL, nullptr));
  DWORD written = 0;
  return file && WriteFile(file.get(), content.data(), static_cast<DWORD>(content.size()), &written,
                           nullptr) != FALSE;
}

bool WriteReport(const std::wstring& path, const std::string& content) {
  const std::wstring unfinished = path + L"." + std::to_wstring(GetCurrentProcessId());
  return WriteFileWhole(unfinished, content) &&
         MoveFileExW(unfinished.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING) != FALSE;
}

}  // namespace

int main() {
  const std::wstring report = EnvironmentVariable(L"DEMO_REPORT");
  const std::wstring awaited = EnvironmentVariable(L"DEMO_WAIT_FOR");
  if (!awaited.empty()) WaitForFile(awaited);
  const bool written = WriteReport(report, std::string("Command line: ") + GetCommandLineA() +
                                               "\nWorking directory: " + WorkingDirectory() + "\n");
  return written ? 0 : 1;
}
