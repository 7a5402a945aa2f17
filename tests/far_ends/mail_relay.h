#pragma once

#include <winsock2.h>
#include <windows.h>

#include <map>
#include <memory>
#include <mutex>
#include <string>

#include "tests/module/import_patch.h"

namespace brantel {

// A mail relay behind whatever address the module connects to, while this lives. It takes what it
// is sent and answers in pieces of all sizes, as connections do, and with replies of several lines.
// Bodies of mails are deliveries of the thread that sends them. Large ones are refused.
// Connections end when nobody uses the sockets library any more. There can be one at a time.
class MailRelay {
 public:
  explicit MailRelay(HMODULE module);
  MailRelay(const MailRelay&) = delete;
  MailRelay& operator=(const MailRelay&) = delete;
  ~MailRelay();

  [[nodiscard]] std::size_t open_connections() const;

 private:
  // The dialogue over one connection.
  class Session;

  static int WINAPI OnStartup(WORD version, WSADATA* data);
  static int WINAPI OnCleanup();
  static SOCKET WINAPI OnSocket(int family, int type, int protocol);
  static int WINAPI OnConnect(SOCKET socket, const sockaddr* address, int size);
  static int WINAPI OnSetOption(SOCKET socket, int level, int name, const char* value, int size);
  static int WINAPI OnSend(SOCKET socket, const char* bytes, int size, int flags);
  static int WINAPI OnReceive(SOCKET socket, char* bytes, int size, int flags);
  static int WINAPI OnSelect(int count, fd_set* readable, fd_set* writable, fd_set* failed,
                             const timeval* limit);
  static int WINAPI OnClose(SOCKET socket);

  // Null, with the error said, when there is no such connection.
  [[nodiscard]] Session* Find(SOCKET socket) const;

  mutable std::mutex mutex_;
  std::map<SOCKET, std::unique_ptr<Session>> sessions_;
  unsigned last_seed_ = 0;
  int users_ = 0;
  ImportPatch startup_;
  ImportPatch cleanup_;
  ImportPatch socket_;
  ImportPatch connect_;
  ImportPatch set_option_;
  ImportPatch send_;
  ImportPatch receive_;
  ImportPatch select_;
  ImportPatch close_;
};

}  // namespace brantel
