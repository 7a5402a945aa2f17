#include "dialog/sound_recorder_win32.h"

#include <windows.h>

#include <array>

#include "system/windows/handle_win32.h"
#include "system/windows/registry_key_win32.h"

namespace brantel {
namespace {

constexpr const char* kProgramsKey = R"(Software\Brantel\Vantrel\Programs)";
constexpr const char* kRecorderValue = "SoundRecorder";
constexpr std::size_t kPathCapacity = 512;

}  // namespace

std::string SystemRecorder::ConfiguredRecorder() {
  RegistryHandle key;
  if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, kProgramsKey, 0, KEY_QUERY_VALUE, key.put()) !=
      ERROR_SUCCESS) {
    return {};
  }
  // One byte is kept back: texts may be stored without their NUL.
  std::array<char, kPathCapacity + 1> path{};
  DWORD size = kPathCapacity;
  DWORD type = REG_NONE;
  if (RegQueryValueExA(key.get(), kRecorderValue, nullptr, &type,
                       reinterpret_cast<BYTE*>(path.data()), &size) != ERROR_SUCCESS ||
      type != REG_SZ) {
    return {};
  }
  return path.data();
}

std::string SystemRecorder::SystemDirectory() {
  std::array<char, kPathCapacity> path{};
  GetSystemDirectoryA(path.data(), kPathCapacity);
  return path.data();
}

bool SystemRecorder::Run(const std::string& command_line) {
  STARTUPINFOA startup{};
  startup.cb = sizeof startup;
  std::string writable_command_line = command_line;  // CreateProcess may write into it
  PROCESS_INFORMATION process{};
  if (CreateProcessA(nullptr, writable_command_line.data(), nullptr, nullptr, FALSE, 0, nullptr,
                     nullptr, &startup, &process) == FALSE) {
    return false;
  }
  const Handle thread(process.hThread);
  const Handle running(process.hProcess);
  WaitForSingleObject(running.get(), INFINITE);
  return true;
}

}  // namespace brantel
