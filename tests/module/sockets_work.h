#pragma once

#include <winsock2.h>
#include <gtest/gtest.h>

namespace brantel {

// Whether somebody has started the sockets library for this process.
inline bool SocketsWork() {
  const SOCKET made = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
  if (made == INVALID_SOCKET) {
    EXPECT_EQ(WSAGetLastError(), WSANOTINITIALISED);
    return false;
  }
  closesocket(made);
  return true;
}

}  // namespace brantel
