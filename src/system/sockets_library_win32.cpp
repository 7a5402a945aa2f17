#include "system/sockets_library_win32.h"

#include <winsock2.h>
#include <windows.h>

namespace brantel {

bool WinSock::Start() {
  constexpr WORD kVersion = 0x0101;
  WSADATA data{};
  return WSAStartup(kVersion, &data) == 0;
}

void WinSock::Stop() noexcept {
  WSACleanup();
}

}  // namespace brantel
