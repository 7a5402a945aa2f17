#include "tests/module/stand_in_modem.h"

#include <algorithm>
#include <cstring>

namespace brantel {
namespace {

StandInModem* modem = nullptr;

bool IsPort(HANDLE handle) {
  return std::ranges::find(modem->ports, handle) != modem->ports.end();
}

HANDLE WINAPI Open(const char* path, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security,
                   DWORD creation, DWORD flags, HANDLE like) {
  const bool is_port = std::string_view(path).starts_with("COM");
  HANDLE opened =
      CreateFileA(is_port ? "NUL" : path, access, share, security, creation, flags, like);
  if (is_port) modem->ports.push_back(opened);
  return opened;
}

BOOL WINAPI Close(HANDLE handle) {
  std::erase(modem->ports, handle);
  return CloseHandle(handle);
}

BOOL WINAPI AcceptControl(HANDLE, DCB*) {
  return TRUE;
}

BOOL WINAPI AcceptTimeouts(HANDLE, COMMTIMEOUTS*) {
  return TRUE;
}

BOOL WINAPI Read(HANDLE file, void* buffer, DWORD size, DWORD* count, OVERLAPPED* overlapped) {
  if (!IsPort(file)) return ReadFile(file, buffer, size, count, overlapped);
  const std::string answer = modem->answer_to(modem->written.back()).substr(0, size);
  std::memcpy(buffer, answer.data(), answer.size());
  *count = static_cast<DWORD>(answer.size());
  return TRUE;
}

BOOL WINAPI Write(HANDLE file, const void* bytes, DWORD size, DWORD* count,
                  OVERLAPPED* overlapped) {
  if (!IsPort(file)) return WriteFile(file, bytes, size, count, overlapped);
  modem->written.emplace_back(static_cast<const char*>(bytes), size);
  *count = size;
  return TRUE;
}

BOOL WINAPI Flush(HANDLE) {
  return TRUE;
}

void WINAPI PassNoTime(DWORD) {}

}  // namespace

StandInModem::StandInModem(HMODULE module)
    : open_(module, "CreateFileA", reinterpret_cast<void*>(&Open)),
      close_(module, "CloseHandle", reinterpret_cast<void*>(&Close)),
      get_control_(module, "GetCommState", reinterpret_cast<void*>(&AcceptControl)),
      set_control_(module, "SetCommState", reinterpret_cast<void*>(&AcceptControl)),
      get_timeouts_(module, "GetCommTimeouts", reinterpret_cast<void*>(&AcceptTimeouts)),
      set_timeouts_(module, "SetCommTimeouts", reinterpret_cast<void*>(&AcceptTimeouts)),
      read_(module, "ReadFile", reinterpret_cast<void*>(&Read)),
      write_(module, "WriteFile", reinterpret_cast<void*>(&Write)),
      flush_(module, "FlushFileBuffers", reinterpret_cast<void*>(&Flush)),
      sleep_(module, "Sleep", reinterpret_cast<void*>(&PassNoTime)) {
  modem = this;
}

StandInModem::~StandInModem() {
  modem = nullptr;
}

}  // namespace brantel
