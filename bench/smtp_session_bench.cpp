// One message to Postfix's smtp-sink on the loopback: our session, a bare client that makes the
// same system calls for the same bytes and nothing else, and two libraries. Each with the small
// sends going out at once, and ours also as they would without that.
#include <Poco/Net/MailMessage.h>
#include <Poco/Net/MailRecipient.h>
#include <Poco/Net/SMTPClientSession.h>
#include <Poco/Net/StreamSocket.h>
#include <benchmark/benchmark.h>
#include <curl/curl.h>
#include <netinet/tcp.h>
#include <sys/select.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "bench/smtp_sink.h"
#include "smtp_mail/session/smtp_session.h"

namespace brantel {
namespace {

constexpr std::string_view kSubject = "router7 is down";
constexpr std::string_view kBody =
    "router7 has not answered for ten minutes.\r\nLast seen at 23:59.\r\n";

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
    timeval timeout{milliseconds / 1000, milliseconds % 1000 * 1000};
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

// Takes the longest message of all, in which a reply that waits for an acknowledgement shows.
class SlowestMessage {
 public:
  explicit SlowestMessage(benchmark::State& state) : state_(state) {}
  SlowestMessage(const SlowestMessage&) = delete;
  SlowestMessage& operator=(const SlowestMessage&) = delete;
  ~SlowestMessage() { state_.counters["slowest_ms"] = slowest_.count(); }

  template <typename Body>
  void Time(Body body) {
    const auto start = std::chrono::steady_clock::now();
    body();
    slowest_ = std::max<Milliseconds>(slowest_, std::chrono::steady_clock::now() - start);
  }

 private:
  using Milliseconds = std::chrono::duration<double, std::milli>;
  benchmark::State& state_;
  Milliseconds slowest_{};
};

void SendBySession(benchmark::State& state, SmallSends small_sends) {
  const SmtpSink sink;
  PosixNetwork network(small_sends);
  Machine machine;
  SmtpState session_state;
  const MailMessage message{.to = "ann@example.org",
                            .from = "ops@example.org",
                            .subject = kSubject,
                            .gateway = "127.0.0.1",
                            .message = kBody};
  SlowestMessage slowest(state);
  for (auto _ : state) {
    slowest.Time([&] {
      if (SmtpSendMessage({network, machine, machine, session_state}, nullptr, message, 10000) !=
          0) {
        state.SkipWithError("not delivered");
      }
    });
  }
}

void Session(benchmark::State& state) {
  SendBySession(state, SmallSends::kAtOnce);
}
BENCHMARK(Session)->Unit(benchmark::kMicrosecond)->MeasureProcessCPUTime();

void SessionWhoseSmallSendsWait(benchmark::State& state) {
  SendBySession(state, SmallSends::kWhenAcknowledged);
}
BENCHMARK(SessionWhoseSmallSendsWait)->Unit(benchmark::kMicrosecond)->MeasureProcessCPUTime();

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
  void Exchange(std::string_view command) const {
    Send(command);
    Receive();
  }

 private:
  int socket_;
};

void Bare(benchmark::State& state) {
  const SmtpSink sink;
  SlowestMessage slowest(state);
  for (auto _ : state) {
    slowest.Time([] {
      const BareClient client;
      client.Receive();
      client.Exchange("HELO watch\r\n");
      client.Send("MAIL From:");
      client.Send("ops@example.org");
      client.Exchange("\r\n");
      client.Exchange("RCPT To:<ann@example.org>\r\n");
      client.Exchange("DATA\r\n");
      client.Send("From: ");
      client.Send("ops@example.org");
      client.Send("\r\n");
      client.Send("Date: Fri,  5 Mar 2004 00:00:00 +0100\r\n");
      client.Send("To: ann@example.org\r\n");
      client.Send("Mime-Version: 1.0\r\n");
      client.Send("Content-Type: text/plain;charset=us-ascii\r\n");
      client.Send("Subject: router7 is down\r\n\r\n");
      client.Send(kBody);
      client.Exchange("\r\n.\r\n");
      client.Exchange("QUIT\r\n");
    });
  }
}
BENCHMARK(Bare)->Unit(benchmark::kMicrosecond)->MeasureProcessCPUTime();

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

// A connection for each message, as we have; small sends go out at once by its default.
void LibCurl(benchmark::State& state) {
  const SmtpSink sink;
  const std::string url = "smtp://127.0.0.1:" + std::to_string(ntohs(SinkAddress().sin_port));
  const std::string message = WholeMessage();
  curl_global_init(CURL_GLOBAL_NOTHING);
  curl_slist* recipients = curl_slist_append(nullptr, "<ann@example.org>");
  CURL* const curl = curl_easy_init();
  SlowestMessage slowest(state);
  for (auto _ : state) {
    slowest.Time([&] {
      std::string_view upload = message;
      curl_easy_reset(curl);
      curl_easy_setopt(curl, CURLOPT_URL, url.c_str());
      curl_easy_setopt(curl, CURLOPT_FRESH_CONNECT, 1L);
      curl_easy_setopt(curl, CURLOPT_FORBID_REUSE, 1L);
      curl_easy_setopt(curl, CURLOPT_TCP_NODELAY, 1L);
      curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
      curl_easy_setopt(curl, CURLOPT_MAIL_FROM, "<ops@example.org>");
      curl_easy_setopt(curl, CURLOPT_MAIL_RCPT, recipients);
      curl_easy_setopt(curl, CURLOPT_UPLOAD, 1L);
      curl_easy_setopt(curl, CURLOPT_READFUNCTION, ReadUpload);
      curl_easy_setopt(curl, CURLOPT_READDATA, &upload);
      if (curl_easy_perform(curl) != CURLE_OK) state.SkipWithError("not delivered");
    });
  }
  curl_easy_cleanup(curl);
  curl_slist_free_all(recipients);
}
BENCHMARK(LibCurl)->Unit(benchmark::kMicrosecond)->MeasureProcessCPUTime();

void SendByPoco(benchmark::State& state, bool no_delay) {
  const SmtpSink sink;
  SlowestMessage slowest(state);
  for (auto _ : state) {
    slowest.Time([&] {
      Poco::Net::StreamSocket socket(
          Poco::Net::SocketAddress("127.0.0.1", ntohs(SinkAddress().sin_port)));
      if (no_delay) socket.setNoDelay(true);
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
    });
  }
}

void PocoSession(benchmark::State& state) {
  SendByPoco(state, false);
}
BENCHMARK(PocoSession)->Unit(benchmark::kMicrosecond)->MeasureProcessCPUTime();

void PocoSessionWhoseSmallSendsGoAtOnce(benchmark::State& state) {
  SendByPoco(state, true);
}
BENCHMARK(PocoSessionWhoseSmallSendsGoAtOnce)
    ->Unit(benchmark::kMicrosecond)
    ->MeasureProcessCPUTime();

}  // namespace
}  // namespace brantel
