// The program that LaunchProgram's tests have started. It writes down how it was started and lives
// until it is let go:
//   BRANTEL_CHILD_REPORT    the file to write, lines of "name=value", texts in hexadecimal
//   BRANTEL_CHILD_REPORTED  the event to set once the file is there
//   BRANTEL_CHILD_RELEASE   the event to wait for then, at most half a minute
#include <windows.h>

#include <array>
#include <cstdio>
#include <string>
#include <string_view>

namespace {

constexpr DWORD kLongestLife = 30000;  // ms, should the test have died

std::string EnvironmentText(const char* name) {
  std::array<char, 1024> value{};
  GetEnvironmentVariableA(name, value.data(), static_cast<DWORD>(value.size()));
  return value.data();
}

std::string Hexadecimal(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text;
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    text += kDigits[value >> 4U];
    text += kDigits[value & 15U];
  }
  return text;
}

std::string CurrentDirectory() {
  std::array<char, MAX_PATH> path{};
  GetCurrentDirectoryA(static_cast<DWORD>(path.size()), path.data());
  return path.data();
}

std::string OwnFile() {
  std::array<char, MAX_PATH> path{};
  GetModuleFileNameA(nullptr, path.data(), static_cast<DWORD>(path.size()));
  return path.data();
}

std::string Report() {
  STARTUPINFOA startup{};
  GetStartupInfoA(&startup);
  std::string report;
  const auto add = [&](const char* name, const std::string& value) {
    report.append(name).append("=").append(value).append("\n");
  };
  add("command_line", Hexadecimal(GetCommandLineA()));
  add("directory", Hexadecimal(CurrentDirectory()));
  add("program", Hexadecimal(OwnFile()));
  add("startup_size", std::to_string(startup.cb));
  add("startup_flags", std::to_string(startup.dwFlags));
  add("show_window", std::to_string(startup.wShowWindow));
  add("priority_class", std::to_string(GetPriorityClass(GetCurrentProcess())));
  add("process_id", std::to_string(GetCurrentProcessId()));
  return report;
}

bool WriteFileWith(const std::string& path, const std::string& content) {
  std::FILE* file = std::fopen(path.c_str(), "wb");
  if (file == nullptr) return false;
  const bool written = std::fwrite(content.data(), 1, content.size(), file) == content.size();
  return std::fclose(file) == 0 && written;
}

}  // namespace

int main() {
  if (!WriteFileWith(EnvironmentText("BRANTEL_CHILD_REPORT"), Report())) return 1;
  HANDLE reported =
      OpenEventA(EVENT_MODIFY_STATE, FALSE, EnvironmentText("BRANTEL_CHILD_REPORTED").c_str());
  HANDLE release = OpenEventA(SYNCHRONIZE, FALSE, EnvironmentText("BRANTEL_CHILD_RELEASE").c_str());
  if (reported == nullptr || release == nullptr) return 2;
  SetEvent(reported);
  return WaitForSingleObject(release, kLongestLife) == WAIT_OBJECT_0 ? 0 : 3;
}
