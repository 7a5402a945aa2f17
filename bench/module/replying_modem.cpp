#include "bench/module/replying_modem.h"

namespace brantel {
namespace {

ReplyingModem* replying_modem = nullptr;

// No handle of the system's.
HANDLE const kPort = reinterpret_cast<HANDLE>(&replying_modem);

template <typename Function>
void* Hook(Function* function) {
  return reinterpret_cast<void*>(function);
}

BOOL WINAPI Flush(HANDLE) {
  return TRUE;
}

BOOL WINAPI GetControl(HANDLE, DCB* control) {
  *control = {};
  return TRUE;
}

BOOL WINAPI SetControl(HANDLE, DCB*) {
  return TRUE;
}

BOOL WINAPI GetTimeouts(HANDLE, COMMTIMEOUTS* timeouts) {
  *timeouts = {};
  return TRUE;
}

BOOL WINAPI SetTimeouts(HANDLE, COMMTIMEOUTS*) {
  return TRUE;
}

void WINAPI Pause(DWORD) {}

}  // namespace

ReplyingModem::ReplyingModem(HMODULE module, std::span<const ModemReply> replies)
    : replies_(replies),
      create_(module, "CreateFileA", Hook(&OnCreateFile)),
      close_(module, "CloseHandle", Hook(&OnCloseHandle)),
      read_(module, "ReadFile", Hook(&OnReadFile)),
      write_(module, "WriteFile", Hook(&OnWriteFile)),
      flush_(module, "FlushFileBuffers", Hook(&Flush)),
      get_control_(module, "GetCommState", Hook(&GetControl)),
      set_control_(module, "SetCommState", Hook(&SetControl)),
      get_timeouts_(module, "GetCommTimeouts", Hook(&GetTimeouts)),
      set_timeouts_(module, "SetCommTimeouts", Hook(&SetTimeouts)),
      sleep_(module, "Sleep", Hook(&Pause)) {
  replying_modem = this;
}

ReplyingModem::~ReplyingModem() {
  replying_modem = nullptr;
}

HANDLE ReplyingModem::OnCreateFile(const char* path, DWORD access, DWORD share,
                                   SECURITY_ATTRIBUTES* security, DWORD creation, DWORD flags,
                                   HANDLE like) {
  if (std::string_view(path) == "COM1") return kPort;
  return CreateFileA(path, access, share, security, creation, flags, like);
}

BOOL ReplyingModem::OnCloseHandle(HANDLE handle) {
  return handle == kPort ? TRUE : CloseHandle(handle);
}

BOOL ReplyingModem::OnReadFile(HANDLE file, void* buffer, DWORD size, DWORD* count,
                               OVERLAPPED* overlapped) {
  if (file != kPort) return ReadFile(file, buffer, size, count, overlapped);
  std::string_view& unread = replying_modem->unread_;
  *count = static_cast<DWORD>(unread.copy(static_cast<char*>(buffer), size));
  unread.remove_prefix(*count);
  return TRUE;
}

BOOL ReplyingModem::OnWriteFile(HANDLE file, const void* bytes, DWORD size, DWORD* count,
                                OVERLAPPED* overlapped) {
  if (file != kPort) return WriteFile(file, bytes, size, count, overlapped);
  replying_modem->unread_ =
      ReplyTo({static_cast<const char*>(bytes), size}, replying_modem->replies_);
  *count = size;
  return TRUE;
}

}  // namespace brantel
