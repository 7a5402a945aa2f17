#include "tests/far_ends/mail_relay.h"

#include <algorithm>
#include <random>
#include <string_view>
#include <utility>

#include "tests/far_ends/deliveries.h"

namespace brantel {
namespace {

MailRelay* mail_relay = nullptr;

constexpr unsigned kMostSentAtOnce = 300;
// Now and then much more goes at once, so that large mails come to an end.
constexpr unsigned kLargePiece = 1U << 20;
constexpr unsigned kOneOf = 4;
constexpr unsigned kMostReceivedAtOnce = 20;

constexpr std::string_view kEndOfMail = "\r\n.\r\n";
// Larger ones are refused.
constexpr std::size_t kLargestMail = std::size_t{1} << 24;
constexpr std::string_view kEndOfHeader = "\r\n\r\n";

}  // namespace

class MailRelay::Session {
 public:
  explicit Session(unsigned seed) : random_(seed) {}

  void Greet() { Say("220-relay.example\r\n220 speaks\r\n"); }

  std::size_t Take(std::string_view bytes) {
    const bool is_large = random_() % kOneOf == 0;
    const std::size_t count = Piece(bytes.size(), is_large ? kLargePiece : kMostSentAtOnce);
    // What came before has been looked through, but for the beginning of an end.
    std::size_t from = received_.size() - std::min(received_.size(), kEndOfMail.size());
    received_ += bytes.substr(0, count);
    while (HandleNext(from))
      from = 0;
    DropWhatIsTooLarge();
    return count;
  }

  std::string Give(std::size_t most) {
    std::string given =
        unsent_.substr(0, std::min(most, Piece(unsent_.size(), kMostReceivedAtOnce)));
    unsent_.erase(0, given.size());
    return given;
  }

  [[nodiscard]] bool HasSomething() const { return !unsent_.empty(); }

 private:
  std::size_t Piece(std::size_t whole, unsigned most) {
    if (whole == 0) return 0;
    return 1 + random_() % std::min<std::size_t>(whole, most);
  }

  void Say(std::string_view words) { unsent_ += words; }

  // What is complete; false when nothing is.
  bool HandleNext(std::size_t from) {
    const std::string_view end = is_in_mail_ ? kEndOfMail : "\r\n";
    const std::size_t found = received_.find(end, from);
    if (found == std::string::npos) return false;
    const std::string part = received_.substr(0, found);
    received_.erase(0, found + end.size());
    if (std::exchange(is_in_mail_, false)) {
      if (std::exchange(is_too_large_, false)) {
        Say("552 too large\r\n");
      } else {
        TakeMail(part);
      }
    } else {
      HandleCommand(part);
    }
    return true;
  }

  void DropWhatIsTooLarge() {
    if (received_.size() <= kLargestMail) return;
    is_too_large_ = is_in_mail_;
    received_.erase(0, received_.size() - kEndOfMail.size());
  }

  void HandleCommand(std::string_view line) {
    if (line.starts_with("DATA")) {
      is_in_mail_ = true;
      Say("354 go ahead\r\n");
    } else if (line.starts_with("QUIT")) {
      Say("221 bye\r\n");
    } else {
      Say("250-as you say\r\n250 ok\r\n");
    }
  }

  void TakeMail(const std::string& mail) {
    const std::size_t header = mail.find(kEndOfHeader);
    const std::size_t body = header == std::string::npos ? 0 : header + kEndOfHeader.size();
    NoteDelivery(mail.substr(body));
    Say("250 taken\r\n");
  }

  std::minstd_rand random_;
  std::string received_;
  std::string unsent_;
  bool is_in_mail_ = false;
  bool is_too_large_ = false;
};

MailRelay::MailRelay(HMODULE module)
    : startup_(module, "WSAStartup", reinterpret_cast<void*>(&OnStartup)),
      cleanup_(module, "WSACleanup", reinterpret_cast<void*>(&OnCleanup)),
      socket_(module, "socket", reinterpret_cast<void*>(&OnSocket)),
      connect_(module, "connect", reinterpret_cast<void*>(&OnConnect)),
      set_option_(module, "setsockopt", reinterpret_cast<void*>(&OnSetOption)),
      send_(module, "send", reinterpret_cast<void*>(&OnSend)),
      receive_(module, "recv", reinterpret_cast<void*>(&OnReceive)),
      select_(module, "select", reinterpret_cast<void*>(&OnSelect)),
      close_(module, "closesocket", reinterpret_cast<void*>(&OnClose)) {
  mail_relay = this;
}

MailRelay::~MailRelay() {
  mail_relay = nullptr;
}

std::size_t MailRelay::open_connections() const {
  const std::lock_guard lock(mutex_);
  return sessions_.size();
}

MailRelay::Session* MailRelay::Find(SOCKET socket) const {
  const std::lock_guard lock(mutex_);
  const auto found = sessions_.find(socket);
  if (found != sessions_.end()) return found->second.get();
  WSASetLastError(users_ == 0 ? WSANOTINITIALISED : WSAENOTSOCK);
  return nullptr;
}

int MailRelay::OnStartup(WORD version, WSADATA* data) {
  const int error = WSAStartup(version, data);
  const std::lock_guard lock(mail_relay->mutex_);
  if (error == 0) ++mail_relay->users_;
  return error;
}

int MailRelay::OnCleanup() {
  {
    const std::lock_guard lock(mail_relay->mutex_);
    if (mail_relay->users_ > 0 && --mail_relay->users_ == 0) {
      for (const auto& [socket, session] : mail_relay->sessions_)
        CloseHandle(reinterpret_cast<HANDLE>(socket));
      mail_relay->sessions_.clear();
    }
  }
  return WSACleanup();
}

// A handle of the system's, so that one that is not closed is found among those left open.
SOCKET MailRelay::OnSocket(int, int, int) {
  const std::lock_guard lock(mail_relay->mutex_);
  if (mail_relay->users_ == 0) {
    WSASetLastError(WSANOTINITIALISED);
    return INVALID_SOCKET;
  }
  const auto made = reinterpret_cast<SOCKET>(CreateEventW(nullptr, FALSE, FALSE, nullptr));
  mail_relay->sessions_[made] = std::make_unique<Session>(++mail_relay->last_seed_);
  return made;
}

int MailRelay::OnConnect(SOCKET socket, const sockaddr*, int) {
  Session* const session = mail_relay->Find(socket);
  if (session == nullptr) return SOCKET_ERROR;
  session->Greet();
  return 0;
}

int MailRelay::OnSetOption(SOCKET, int, int, const char*, int) {
  return 0;
}

int MailRelay::OnSend(SOCKET socket, const char* bytes, int size, int) {
  Session* const session = mail_relay->Find(socket);
  if (session == nullptr) return SOCKET_ERROR;
  if (size <= 0) return 0;
  return static_cast<int>(session->Take({bytes, static_cast<std::size_t>(size)}));
}

int MailRelay::OnReceive(SOCKET socket, char* bytes, int size, int) {
  Session* const session = mail_relay->Find(socket);
  if (session == nullptr) return SOCKET_ERROR;
  const std::string given = session->Give(static_cast<std::size_t>(size));
  given.copy(bytes, given.size());
  return static_cast<int>(given.size());
}

// What the relay does not say now it never says, and the time is over.
int MailRelay::OnSelect(int, fd_set* readable, fd_set*, fd_set*, const timeval*) {
  Session* const session = mail_relay->Find(readable->fd_array[0]);
  if (session == nullptr) return SOCKET_ERROR;
  if (session->HasSomething()) return 1;
  readable->fd_count = 0;
  return 0;
}

int MailRelay::OnClose(SOCKET socket) {
  {
    const std::lock_guard lock(mail_relay->mutex_);
    if (mail_relay->sessions_.erase(socket) == 0) {
      WSASetLastError(mail_relay->users_ == 0 ? WSANOTINITIALISED : WSAENOTSOCK);
      return SOCKET_ERROR;
    }
  }
  CloseHandle(reinterpret_cast<HANDLE>(socket));
  return 0;
}

}  // namespace brantel
