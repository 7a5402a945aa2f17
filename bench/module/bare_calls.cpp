#include "bench/module/bare_calls.h"

#include <array>
#include <stdexcept>

namespace brantel::bare {
namespace {

void Require(bool is_done, const char* what) {
  if (!is_done) throw std::runtime_error(what);
}

}  // namespace

void ReadFileOnce(const std::string& path) {
  constexpr DWORD kReadSize = 8192;
  std::array<char, kReadSize> buffer;  // NOLINT(*-member-init): filled by what is measured
  DWORD count = 0;
  HANDLE const file = CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  Require(file != INVALID_HANDLE_VALUE, "a file cannot be opened");
  Require(ReadFile(file, buffer.data(), kReadSize, &count, nullptr) != FALSE,
          "a file cannot be read");
  CloseHandle(file);
}

void StoreSettings(const std::string& key, std::span<const Setting> settings) {
  HKEY created = nullptr;
  Require(RegCreateKeyExA(HKEY_LOCAL_MACHINE, key.c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                          KEY_WRITE, nullptr, &created, nullptr) == ERROR_SUCCESS,
          "a registry key cannot be created");
  for (const Setting& setting : settings) {
    RegSetValueExA(created, setting.name, 0, REG_SZ,
                   reinterpret_cast<const BYTE*>(setting.text.data()),
                   static_cast<DWORD>(setting.text.size() + 1));
  }
  RegCloseKey(created);
}

void ReadSettings(const std::string& key, std::span<const Setting> settings) {
  HKEY opened = nullptr;
  Require(RegOpenKeyExA(HKEY_LOCAL_MACHINE, key.c_str(), 0, KEY_READ, &opened) == ERROR_SUCCESS,
          "a registry key cannot be opened");
  for (const Setting& setting : settings) {
    std::array<BYTE, 1024> buffer;  // NOLINT(*-member-init): the same
    auto size = static_cast<DWORD>(buffer.size());
    Require(RegQueryValueExA(opened, setting.name, nullptr, nullptr, buffer.data(), &size) ==
                ERROR_SUCCESS,
            "a setting cannot be read");
  }
  RegCloseKey(opened);
}

SOCKET MailClient::CreateSocket() {
  WSADATA sockets;
  WSAStartup(MAKEWORD(1, 1), &sockets);
  return ::socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
}

MailClient::MailClient(const std::string& address) : socket_(CreateSocket()) {
  constexpr u_short kPort = 25;
  const BOOL no_delay = TRUE;
  setsockopt(socket_, IPPROTO_TCP, TCP_NODELAY, reinterpret_cast<const char*>(&no_delay),
             sizeof no_delay);
  sockaddr_in relay{};
  relay.sin_family = AF_INET;
  relay.sin_port = htons(kPort);
  relay.sin_addr.s_addr = inet_addr(address.c_str());
  Require(connect(socket_, reinterpret_cast<const sockaddr*>(&relay), sizeof relay) == 0,
          "the relay cannot be reached");
}

MailClient::~MailClient() {
  closesocket(socket_);
  WSACleanup();
}

void MailClient::Send(std::string_view bytes) const {
  Sleep(0);
  const int size = static_cast<int>(bytes.size());
  Require(send(socket_, bytes.data(), size, 0) == size, "a piece cannot be sent");
}

void MailClient::Receive() const {
  fd_set readable{};
  FD_SET(socket_, &readable);
  timeval timeout{10, 0};
  Require(select(0, &readable, nullptr, nullptr, &timeout) == 1, "the relay is silent");
  std::array<char, 82> buffer;  // NOLINT(*-member-init): the same
  Require(recv(socket_, buffer.data(), static_cast<int>(buffer.size()), 0) > 0,
          "the relay has gone");
}

}  // namespace brantel::bare
