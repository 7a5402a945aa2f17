#include "tests/module/stand_in_modem.h"

#include <algorithm>
#include <cstring>

namespace brantel {
namespace {

StandInModem* modem = nullptr;

bool IsPort(HANDLE handle) {
  return std::ranges::find(modem->ports, handle) != modem->ports.end();
}

HANDLE WINAPI OpenPort(const char* path, DWORD access, DWORD share, SECURITY_ATTRIBUTES* security,
                       DWORD creation, DWORD flags, HANDLE like) {
  const bool is_port = std::string_view(path).starts_with("COM");
  HANDLE opened =
      CreateFileA(is_port ? "NUL" : path, access, share, security, creation, flags, like);
  if (is_port) modem->ports.push_back(opened);
  return opened;
}

BOOL WINAPI ClosePort(HANDLE handle) {
  std::erase(modem->ports, handle);
  return CloseHandle(handle);
}

BOOL WINAPI AcceptControl(HANDLE, DCB*) {
  return TRUE;
}

BOOL WINAPI AcceptTimeouts(HANDLE, COMMTIMEOUTS*) {
  return TRUE;
}

BOOL WINAPI ReadPort(HANDLE file, void* buffer, DWORD size, DWORD* count, OVERLAPPED* overlapped) {
  if (!IsPort(file)) return ReadFile(file, buffer, size, count, overlapped);
  const std::string answer = modem->answer_to(modem->written.back()).substr(0, size);
  std::memcpy(buffer, answer.data(), answer.size());
  *count = static_cast<DWORD>(answer.size());
  return TRUE;
}

BOOL WINAPI WritePort(HANDLE file, const void* bytes, DWORD size, DWORD* count,
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

std::string AnswerOfCentres(const std::string& sent) {
  if (sent.starts_with("ATDT")) return "\r\nCONNECT 2400\r\n";
  if (sent.starts_with("AT")) return "\r\nOK\r\n";
  if (sent.starts_with("\x1BPG1")) return "\x06\r\x1B[p\r";
  if (sent.starts_with('\x02')) return "\x06/R/02/A/";
  if (sent.starts_with("8000C00000")) return "28";
  return sent == "\r" ? "ID= READY" : "";
}

StandInModem::StandInModem(HMODULE module)
    : open_(module, "CreateFileA", reinterpret_cast<void*>(&OpenPort)),
      close_(module, "CloseHandle", reinterpret_cast<void*>(&ClosePort)),
      get_control_(module, "GetCommState", reinterpret_cast<void*>(&AcceptControl)),
      set_control_(module, "SetCommState", reinterpret_cast<void*>(&AcceptControl)),
      get_timeouts_(module, "GetCommTimeouts", reinterpret_cast<void*>(&AcceptTimeouts)),
      set_timeouts_(module, "SetCommTimeouts", reinterpret_cast<void*>(&AcceptTimeouts)),
      read_(module, "ReadFile", reinterpret_cast<void*>(&ReadPort)),
      write_(module, "WriteFile", reinterpret_cast<void*>(&WritePort)),
      flush_(module, "FlushFileBuffers", reinterpret_cast<void*>(&Flush)),
      sleep_(module, "Sleep", reinterpret_cast<void*>(&PassNoTime)) {
  modem = this;
}

StandInModem::~StandInModem() {
  modem = nullptr;
}

}  // namespace brantel
