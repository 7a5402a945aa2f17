#pragma once

#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "host/console/console_backend.h"

namespace brantel::host {

// Whether both texts are the same, in a time that does not tell how far they are.
bool IsSameSecret(std::string_view one, std::string_view other);

// What a browser has to know to change something.
struct ConsoleSession {
  std::string id;           // in the browser's cookie; empty where no password is asked for
  std::string token;        // in every form
  std::string frame_token;  // in the path of the module's pages, whose forms have no other
  double last_used = 0;
};

// Who may see the console and change something. Without a password there is one session, which
// everybody has who reaches the server; its tokens still keep other pages' posts out.
class ConsoleSessions {
 public:
  // Whether this is the password.
  using PasswordCheck = std::function<bool(std::string_view password)>;

  // `system` must outlive the object. No check: no password is asked for.
  ConsoleSessions(ConsoleSystem& system, PasswordCheck check);

  [[nodiscard]] bool asks_for_password() const { return check_ != nullptr; }

  // The session of this cookie; null for none. Valid until another one begins or ends.
  const ConsoleSession* Find(std::string_view id);
  // The session of this frame token.
  const ConsoleSession* FindFrame(std::string_view frame_token);

  enum class LogInResult { kDone, kWrong, kTooOften };
  struct LogIn {
    LogInResult result = LogInResult::kWrong;
    const ConsoleSession* session = nullptr;
  };
  // A client at this address gives a password. After five wrong ones within a minute it has to
  // wait, and after ten of all clients everybody has to.
  LogIn TryLogIn(const std::string& peer, std::string_view password);

  void LogOut(std::string_view id);

 private:
  struct Failure {
    double when;
    std::string peer;
  };

  const ConsoleSession& Begin(std::string id);
  void DropOld();
  [[nodiscard]] bool MayTry(const std::string& peer);

  ConsoleSystem& system_;
  const PasswordCheck check_;
  std::map<std::string, ConsoleSession, std::less<>> sessions_;  // by their ids
  std::deque<Failure> failures_;
};

}  // namespace brantel::host
