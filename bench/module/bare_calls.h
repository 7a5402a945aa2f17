#pragma once

#include <winsock2.h>
#include <windows.h>

#include <span>
#include <string>
#include <string_view>

// The module's calls of the system, with nothing around them. Where one fails, std::runtime_error
// is thrown.
namespace brantel::bare {

// A text in the registry.
struct Setting {
  const char* name;
  std::string_view text;
};

// Puts settings where ReadSettings and the module find them.
void StoreSettings(const std::string& key, std::span<const Setting> settings);

// Opens, reads and closes a file.
void ReadFileOnce(const std::string& path);

// Opens a key below HKEY_LOCAL_MACHINE, reads the settings, and closes it.
void ReadSettings(const std::string& key, std::span<const Setting> settings);

// A connection with a mail relay, by a sockets library that is started for it.
class MailClient {
 public:
  explicit MailClient(const std::string& address);
  MailClient(const MailClient&) = delete;
  MailClient& operator=(const MailClient&) = delete;
  ~MailClient();

  void Send(std::string_view bytes) const;
  void Receive() const;

 private:
  static SOCKET CreateSocket();

  SOCKET socket_;
};

}  // namespace brantel::bare
