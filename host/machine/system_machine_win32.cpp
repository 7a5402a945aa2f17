#include "host/machine/system_machine_win32.h"

#include <windows.h>
#include <mmsystem.h>

#include <algorithm>
#include <array>

#include "host/machine/messenger_win32.h"
#include "host/machine/modem_line_win32.h"
#include "host/machine/relay_greeting_win32.h"
#include "host/machine/voice_line_win32.h"
#include "host/module/class_catalogue_win32.h"
#include "host/module/module_file_win32.h"
#include "host/module/program_bits.h"
#include "host/system/code_page_text_win32.h"
#include "host/system/file_path_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

constexpr std::size_t kWaveStart = 12;

}  // namespace

std::optional<std::string> SystemMachine::ToCodePage(std::string_view text) const {
  return host::ToCodePage(text);
}

std::string SystemMachine::FromCodePage(std::string_view bytes) const {
  return host::FromCodePage(bytes);
}

PathKind SystemMachine::KindOf(const std::string& path) const {
  const std::wstring file = FromUtf8(path);
  if (IsDirectory(file)) return PathKind::kDirectory;
  return FileExists(file) ? PathKind::kFile : PathKind::kNothing;
}

std::string SystemMachine::FirstBytes(const std::string& path) const {
  return FileStart(FromUtf8(path), kWaveStart);
}

bool SystemMachine::FindsProgram(const std::string& name) const {
  return SearchPathW(nullptr, FromUtf8(name).c_str(), L".exe", 0, nullptr, nullptr) != 0;
}

bool SystemMachine::HasPort(std::uint32_t number) const {
  std::array<wchar_t, MAX_PATH> target{};
  const std::wstring name = L"COM" + std::to_wstring(number);
  return QueryDosDeviceW(name.c_str(), target.data(), target.size()) != 0 ||
         GetLastError() == ERROR_INSUFFICIENT_BUFFER;
}

bool SystemMachine::HasSoundDevice() const {
  return waveOutGetNumDevs() > 0;
}

Registration SystemMachine::RegistrationOf(const Guid& clsid) const {
  const auto file = RegisteredModule(ToClsid(clsid));
  if (!file) return {.is_needed = !module_file_};
  return {ToUtf8(*file), IsSameFile(*file, ModuleFile(module_file_)),
          ProgramBits(FileStart(*file, kProgramStart)) == static_cast<int>(kOwnBits),
          !module_file_};
}

MessengerState SystemMachine::Messenger() const {
  return StateOfMessenger();
}

VoiceLineState SystemMachine::VoiceLine() const {
  return StateOfVoiceLine();
}

std::string SystemMachine::RelayGreeting(const std::string& address) {
  return ReadRelayGreeting(address);
}

std::optional<std::string> SystemMachine::ModemAnswer(const LineSetup& setup) {
  const auto asked = std::ranges::find(asked_modems_, setup, &AskedModem::setup);
  if (asked != asked_modems_.end()) return asked->answer;
  asked_modems_.push_back({setup, AskModem(setup)});
  return asked_modems_.back().answer;
}

bool SystemMachine::ProbeVoiceLine() {
  return OpenVoiceLine(module_file_);
}

}  // namespace brantel::host
