#pragma once

#include <windows.h>

#include <span>
#include <string_view>

#include "bench/sample_page.h"
#include "tests/module/import_patch.h"

namespace brantel {

// The port COM1 with a modem on it that has replied before anybody asks, for the module alone and
// while this lives; the module's pauses are over at once. There can be one at a time.
class ReplyingModem {
 public:
  ReplyingModem(HMODULE module, std::span<const ModemReply> replies);
  ReplyingModem(const ReplyingModem&) = delete;
  ReplyingModem& operator=(const ReplyingModem&) = delete;
  ~ReplyingModem();

 private:
  static HANDLE WINAPI OnCreateFile(const char* path, DWORD access, DWORD share,
                                    SECURITY_ATTRIBUTES* security, DWORD creation, DWORD flags,
                                    HANDLE like);
  static BOOL WINAPI OnCloseHandle(HANDLE handle);
  static BOOL WINAPI OnReadFile(HANDLE file, void* buffer, DWORD size, DWORD* count,
                                OVERLAPPED* overlapped);
  static BOOL WINAPI OnWriteFile(HANDLE file, const void* bytes, DWORD size, DWORD* count,
                                 OVERLAPPED* overlapped);

  const std::span<const ModemReply> replies_;
  std::string_view unread_;
  ImportPatch create_;
  ImportPatch close_;
  ImportPatch read_;
  ImportPatch write_;
  ImportPatch flush_;
  ImportPatch get_control_;
  ImportPatch set_control_;
  ImportPatch get_timeouts_;
  ImportPatch set_timeouts_;
  ImportPatch sleep_;
};

}  // namespace brantel
