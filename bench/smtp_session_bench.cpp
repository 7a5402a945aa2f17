// One message to Postfix's smtp-sink on the loopback: our session, a bare client that makes the
// same system calls for the same bytes and nothing else, and two libraries. Each with the small
// sends going out at once; ours and Poco's also without that, and libcurl's also over a connection
// that stays.
#include <Poco/Net/MailMessage.h>
#include <Poco/Net/MailRecipient.h>
#include <Poco/Net/SMTPClientSession.h>
#include <Poco/Net/StreamSocket.h>
#include <curl/curl.h>
#include <netinet/tcp.h>
#include <sys/select.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "bench/groups.h"
#include "bench/sample_mail.h"
#include "bench/smtp_sink.h"
#include "smtp_mail/session/smtp_session.h"

namespace brantel {
namespace {

using sample_mail::kBody;
using sample_mail::kFrom;
using sample_mail::kSubject;
using sample_mail::kTo;

enum class SmallSends { kAtOnce, kWhenAcknowledged };

void SetNoDelay(int socket, SmallSends small_sends) {
  const int no_delay = small_sends == SmallSends::kAtOnce ? 1 : 0;
  setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &no_delay, sizeof no_delay);
}

class PosixMailSocket final : public MailSocket {
 public:
  explicit PosixMailSocket(SmallSends small_sends) : small_sends_(small_sends) {}
  PosixMailSocket(const PosixMailSocket&) = delete;
  PosixMailSocket& operator=(const PosixMailSocket&) = delete;
  ~PosixMailSocket() override { close(socket_); }

  bool Connect(Ipv4Address, std::uint16_t) override {
    socket_ = ConnectToSink();
    SetNoDelay(socket_, small_sends_);
    return socket_ >= 0;
  }
  Outcome<std::size_t> Send(std::string_view bytes) override {
    return Count(send(socket_, bytes.data(), bytes.size(), 0));
  }
  void PumpMessages() override {}
  Outcome<Readiness> WaitForData(std::uint32_t milliseconds) override {
    fd_set readable;
    FD_ZERO(&readable);
    FD_SET(socket_, &readable);
    timeval timeout{milliseconds / 1000, static_cast<suseconds_t>(milliseconds % 1000) * 1000};
    const int ready = select(socket_ + 1, &readable, nullptr, nullptr, &timeout);
    if (ready < 0) return LastFailure();
    return ready > 0 ? Readiness::kReady : Readiness::kTimedOut;
  }
  Outcome<std::size_t> Receive(std::span<char> buffer) override {
    return Count(recv(socket_, buffer.data(), buffer.size(), 0));
  }

 private:
  static Failure LastFailure() { return {static_cast<std::uint32_t>(errno)}; }

  static Outcome<std::size_t> Count(ssize_t transferred) {
    if (transferred < 0) return LastFailure();
    return static_cast<std::size_t>(transferred);
  }

  SmallSends small_sends_;
  int socket_ = -1;
};

class PosixNetwork final : public MailNetwork {
 public:
  explicit PosixNetwork(SmallSends small_sends) : small_sends_(small_sends) {}
  [[nodiscard]] std::optional<Ipv4Address> ParseAddress(const std::string&) const override {
    return Ipv4Address{};
  }
  std::unique_ptr<MailSocket> CreateSocket() override {
    return std::make_unique<PosixMailSocket>(small_sends_);
  }

 private:
  SmallSends small_sends_;
};

class Machine final : public MailEnvironment, public MachineName {
 public:
  std::optional<TimeZone> QueryTimeZone() override { return TimeZone{.bias = -60}; }
  std::optional<std::string> TimeZoneVariable() override { return std::nullopt; }
  LocalTime Now() override { return {.year = 2004, .month = 3, .day_of_week = 5, .day = 5}; }
  unsigned CodePage() override { return 1252; }
  std::optional<std::string> TcpipParameter(const std::string&, std::size_t) override {
    return "watch";
  }
  std::optional<std::string> SocketsHostName() override { return std::nullopt; }
};

void SendBySession(benchmark::State& state, SmallSends small_sends) {
  const SmtpSink sink;
  PosixNetwork network(small_sends);
  Machine machine;
  SmtpState session_state;
  const MailMessage message{
      .to = kTo, .from = kFrom, .subject = kSubject, .gateway = "127.0.0.1", .message = kBody};
  for (auto _ : state) {
    if (SmtpSendMessage({network, machine, machine, session_state}, nullptr, message, 10000) != 0) {
      state.SkipWithError("not delivered");
    }
  }
}

// The same sends and receives with nothing around them.
class BareClient {
 public:
  BareClient() : socket_(ConnectToSink()) { SetNoDelay(socket_, SmallSends::kAtOnce); }
  BareClient(const BareClient&) = delete;
  BareClient& operator=(const BareClient&) = delete;
  ~BareClient() { close(socket_); }

  void Send(std::string_view bytes) const {
    benchmark::DoNotOptimize(send(socket_, bytes.data(), bytes.size(), 0));
  }
  // A reply of the sink is one line that comes at once.
  void Receive() const {
    fd_set readable;
    FD_ZERO(&readable);
    FD_SET(socket_, &readable);
    timeval timeout{10, 0};
    select(socket_ + 1, &readable, nullptr, nullptr, &timeout);
    std::array<char, 82> buffer{};
    benchmark::DoNotOptimize(recv(socket_, buffer.data(), buffer.size(), 0));
  }

 private:
  int socket_;
};

void SendBare(benchmark::State& state) {
  const SmtpSink sink;
  for (auto _ : state) {
    const BareClient client;
    sample_mail::SendBare(client);
  }
}

std::string WholeMessage() {
  return "From: ops@example.org\r\nDate: Fri,  5 Mar 2004 00:00:00 +0100\r\nTo: "
         "ann@example.org\r\nMime-Version: 1.0\r\nContent-Type: text/plain;charset=us-ascii\r\n"
         "Subject: " +
         std::string(kSubject) + "\r\n\r\n" + std::string(kBody);
}

std::size_t ReadUpload(char* buffer, std::size_t size, std::size_t count, void* upload) {
  auto& rest = *static_cast<std::string_view*>(upload);
  const std::string_view taken = rest.substr(0, size * count);
  std::ranges::copy(taken, buffer);
  rest.remove_prefix(taken.size());
  return taken.size();
}

// One handle, which keeps its options.
class Curl {
 public:
  Curl()
      : url_("smtp://127.0.0.1:" + std::to_string(kSinkPort)),
        recipients_(curl_slist_append(nullptr, "<ann@example.org>")),
        curl_(NewHandle()) {
    curl_easy_setopt(curl_, CURLOPT_URL, url_.c_str());
    curl_easy_setopt(curl_, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(curl_, CURLOPT_MAIL_FROM, "<ops@example.org>");
    curl_easy_setopt(curl_, CURLOPT_MAIL_RCPT, recipients_);
    curl_easy_setopt(curl_, CURLOPT_UPLOAD, 1L);
    curl_easy_setopt(curl_, CURLOPT_READFUNCTION, ReadUpload);
    curl_easy_setopt(curl_, CURLOPT_READDATA, &upload_);
  }
  Curl(const Curl&) = delete;
  Curl& operator=(const Curl&) = delete;
  ~Curl() {
    curl_easy_cleanup(curl_);
    curl_slist_free_all(recipients_);
  }

  void ConnectForEachMessage() {
    curl_easy_setopt(curl_, CURLOPT_FRESH_CONNECT, 1L);
    curl_easy_setopt(curl_, CURLOPT_FORBID_REUSE, 1L);
  }

  bool Send(std::string_view message) {
    upload_ = message;
    return curl_easy_perform(curl_) == CURLE_OK;
  }

 private:
  static CURL* NewHandle() {
    curl_global_init(CURL_GLOBAL_NOTHING);
    return curl_easy_init();
  }

  std::string url_;
  curl_slist* recipients_;
  CURL* curl_;
  std::string_view upload_;
};

enum class Connections { kOnePerMessage, kOne };

// Small sends go out at once by its default.
void SendByCurl(benchmark::State& state, Connections connections) {
  const SmtpSink sink;
  const std::string message = WholeMessage();
  Curl curl;
  if (connections == Connections::kOnePerMessage) curl.ConnectForEachMessage();
  for (auto _ : state) {
    if (!curl.Send(message)) state.SkipWithError("not delivered");
  }
}

void SendByPoco(benchmark::State& state, SmallSends small_sends) {
  const SmtpSink sink;
  for (auto _ : state) {
    Poco::Net::StreamSocket socket(
        Poco::Net::SocketAddress("127.0.0.1", ntohs(SinkAddress().sin_port)));
    socket.setNoDelay(small_sends == SmallSends::kAtOnce);
    Poco::Net::SMTPClientSession session(socket);
    session.login("watch");
    Poco::Net::MailMessage message;
    message.setSender("ops@example.org");
    message.addRecipient(
        Poco::Net::MailRecipient(Poco::Net::MailRecipient::PRIMARY_RECIPIENT, "ann@example.org"));
    message.setSubject(std::string(kSubject));
    message.setContent(std::string(kBody), Poco::Net::MailMessage::ENCODING_8BIT);
    session.sendMessage(message);
    session.close();
  }
}

}  // namespace

std::vector<Group> Groups() {
  const auto by_session = [](SmallSends small_sends) {
    return [=](benchmark::State& state) { SendBySession(state, small_sends); };
  };
  const auto by_curl = [](Connections connections) {
    return [=](benchmark::State& state) { SendByCurl(state, connections); };
  };
  const auto by_poco = [](SmallSends small_sends) {
    return [=](benchmark::State& state) { SendByPoco(state, small_sends); };
  };
  return {{.title = "A mail session on the loopback",
           .rows = {{"ours", by_session(SmallSends::kAtOnce)},
                    {"bare floor", SendBare},
                    {"libcurl, handle kept", by_curl(Connections::kOnePerMessage)},
                    {"libcurl, connection kept as well", by_curl(Connections::kOne)},
                    {"Poco, small sends at once", by_poco(SmallSends::kAtOnce)},
                    {"Poco", by_poco(SmallSends::kWhenAcknowledged)},
                    {"ours, if small sends waited", by_session(SmallSends::kWhenAcknowledged)}},
           .timing = Timing::kProcess}};
}

}  // namespace brantel
