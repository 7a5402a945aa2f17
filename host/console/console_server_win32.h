#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/console/console_backend.h"
#include "host/console/send_desk_win32.h"

namespace brantel::host {

// What a console is to serve, and to whom.
struct ConsoleSetup {
  SendSetup sends;
  std::string address = "127.0.0.1";
  std::uint16_t port = 0;                         // 0: any that is free
  std::vector<std::string> further_host_names{};  // by which a proxy is asked for it
  std::optional<std::string> password_record{};   // as PasswordRecord writes it
  bool shows_secrets = false;
  std::string notice{};             // words on the overview; empty for none
  WatchedItems* watched = nullptr;  // outlives the console; null where nothing is watched
};

// The web console on a thread of its own, which is the apartment of the notifiers whose pages it
// shows.
class ConsoleServer {
 public:
  // Listens from then on. Throws CommandFailure when that does not succeed.
  explicit ConsoleServer(ConsoleSetup setup);
  ConsoleServer(const ConsoleServer&) = delete;
  ConsoleServer& operator=(const ConsoleServer&) = delete;
  // Ends it, with the sends that are under way.
  ~ConsoleServer();

  // Where it is: "http://127.0.0.1:8080/".
  [[nodiscard]] const std::string& address() const;

  // Signalled when the console has ended, which it does not by itself but when it fails.
  [[nodiscard]] HANDLE ended() const;
  // Why it has; empty as long as it has not.
  [[nodiscard]] const std::string& failure() const;

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace brantel::host
