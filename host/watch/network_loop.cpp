#include "host/watch/network_loop.h"

// Before Boost, which uses it without including it.
#include <utility>

// clang-format off
#include <boost/asio/connect.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/post.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/asio/thread_pool.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/empty_body.hpp>
#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/beast/http/write.hpp>
// clang-format on

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "host/text/control_characters.h"
#include "host/text/utf8_characters.h"
#include "host/text/version.h"

namespace brantel::host {
namespace {

namespace asio = boost::asio;
namespace http = boost::beast::http;

using asio::ip::tcp;
using boost::system::error_code;

// Of what an answer holds; a service that sends without end must not fill the memory.
constexpr std::size_t kMostAnswerBytes = std::size_t{64} * 1024;

// As people know it, whatever the system's language is.
std::string_view ErrorWords(const error_code& error) {
  if (error == asio::error::connection_refused) return "connection refused";
  if (error == asio::error::connection_reset) return "connection reset";
  if (error == asio::error::connection_aborted) return "connection aborted";
  if (error == asio::error::host_unreachable) return "no route to the host";
  if (error == asio::error::network_unreachable) return "no route to the network";
  if (error == asio::error::host_not_found) return "the name is not known";
  if (error == asio::error::host_not_found_try_again) return "the name server does not answer";
  if (error == asio::error::eof) return "the connection was closed";
  if (error == http::error::end_of_stream) return "the connection was closed without an answer";
  if (error == http::error::partial_message) return "the answer breaks off";
  if (error == http::error::body_limit || error == http::error::buffer_overflow)
    return "the answer is too long";
  return {};
}

std::string WordsOf(const error_code& error) {
  const auto words = ErrorWords(error);
  return words.empty() ? ShowControlCharacters(error.message()) : std::string(words);
}

std::string Quoted(std::string_view text) {
  constexpr std::size_t kMost = 60;
  const std::string shown = ShowControlCharacters(text);
  const std::string_view first = FirstCharacters(shown, kMost);
  return "'" + std::string(first) + (first.size() < shown.size() ? "...'" : "'");
}

// Looks names up in threads of its own.
class LookupThreads {
 public:
  using AnswerTaker = std::function<void(const NameAnswer& answer)>;

  // The context must outlive the object.
  LookupThreads(asio::io_context& context, NameLookup look_up)
      : context_(context), look_up_(std::move(look_up)) {}

  // Whoever runs the context takes the answer. Nothing is looked up for an asker that has gone.
  void LookUp(const std::string& name, std::weak_ptr<const void> asker, AnswerTaker take_answer) {
    asio::post(threads_, [this, name, asker = std::move(asker), take = std::move(take_answer)] {
      if (asker.expired()) return;
      asio::post(context_, [take, answer = look_up_(name)] { take(answer); });
    });
  }

 private:
  static constexpr std::size_t kThreads = 4;

  asio::io_context& context_;
  const NameLookup look_up_;
  asio::thread_pool threads_{kThreads};
};

// One try. It lives as long as something of it is waited for.
class Trial : public std::enable_shared_from_this<Trial> {
 public:
  Trial(asio::io_context& context, LookupThreads& lookups, ProbeRequest request,
        NetworkLoop::ResultTaker take_result)
      : request_(std::move(request)),
        take_result_(std::move(take_result)),
        lookups_(lookups),
        timer_(context),
        socket_(context) {}
  Trial(const Trial&) = delete;
  Trial& operator=(const Trial&) = delete;
  virtual ~Trial() = default;

  void Begin() {
    timer_.expires_after(request_.timeout);
    timer_.async_wait([self = shared_from_this()](const error_code& error) {
      if (!error) self->End(false, "no answer " + self->phase_);
    });
    error_code error;
    const auto address = asio::ip::make_address(request_.host, error);
    if (!error) {
      Connect(std::array{tcp::endpoint(address, request_.port)});
      return;
    }
    phase_ = "of the name server";
    lookups_.LookUp(request_.host, weak_from_this(),
                    [asker = weak_from_this()](const NameAnswer& answer) {
                      if (const auto self = asker.lock()) self->TakeAddresses(answer);
                    });
  }

 protected:
  virtual void TakeConnection() = 0;

  void End(bool is_up, const std::string& words) {
    if (!take_result_) return;
    const auto take_result = std::exchange(take_result_, nullptr);
    timer_.cancel();
    error_code ignored;
    socket_.close(ignored);
    take_result({is_up, words});
  }
  void Fail(const error_code& error) { End(false, WordsOf(error)); }

  [[nodiscard]] bool has_ended() const { return !take_result_; }
  [[nodiscard]] const ProbeRequest& request() const { return request_; }
  tcp::socket& socket() { return socket_; }
  void SetPhase(const std::string& phase) { phase_ = phase; }

 private:
  void TakeAddresses(const NameAnswer& answer) {
    if (answer.addresses.empty()) return End(false, answer.failure);
    std::vector<tcp::endpoint> endpoints;
    for (const std::string& address : answer.addresses)
      endpoints.emplace_back(asio::ip::make_address(address), request_.port);
    Connect(endpoints);
  }

  template <typename Endpoints>
  void Connect(const Endpoints& endpoints) {
    if (has_ended()) return;
    phase_ = "to the connection";
    auto kept = std::make_shared<Endpoints>(endpoints);
    asio::async_connect(
        socket_, *kept,
        [self = shared_from_this(), kept](const error_code& error, const tcp::endpoint&) {
          if (self->has_ended()) return;
          if (error) return self->Fail(error);
          self->TakeConnection();
        });
  }

  const ProbeRequest request_;
  NetworkLoop::ResultTaker take_result_;
  LookupThreads& lookups_;
  asio::steady_timer timer_;
  tcp::socket socket_;
  std::string phase_;
};

// Up when the connection is made, and what is sent first holds the text that is asked for.
class TcpTrial final : public Trial {
 public:
  using Trial::Trial;

 private:
  void TakeConnection() override {
    if (request().text.empty()) return End(true, "the connection was made");
    SetPhase("that holds " + Quoted(request().text));
    Read();
  }

  void Read() {
    socket().async_read_some(asio::buffer(piece_), [self = shared_from_this(), this](
                                                       const error_code& error, std::size_t size) {
      if (has_ended()) return;
      if (error) return Fail(error);
      Take({piece_.data(), size});
    });
  }

  void Take(std::string_view piece) {
    answer_ += piece;
    if (answer_.find(request().text) != std::string::npos)
      return End(true, "it says " + Quoted(request().text));
    if (answer_.size() > kMostAnswerBytes)
      return End(false, "what it says does not hold " + Quoted(request().text));
    Read();
  }

  std::array<char, 4096> piece_{};
  std::string answer_;
};

// Up when the answer has the status that is asked for, and holds the text.
class HttpTrial final : public Trial {
 public:
  using Trial::Trial;

 private:
  void TakeConnection() override {
    SetPhase("to the request");
    message_.method(http::verb::get);
    message_.target(request().target);
    message_.set(http::field::host, HostField());
    message_.set(http::field::user_agent, "notifyhost/" + std::string(ProgramVersion()));
    message_.set(http::field::accept, "*/*");
    message_.set(http::field::connection, "close");
    http::async_write(socket(), message_,
                      [self = shared_from_this(), this](const error_code& error, std::size_t) {
                        if (has_ended()) return;
                        if (error) return Fail(error);
                        ReadHeader();
                      });
  }

  [[nodiscard]] std::string HostField() const {
    constexpr std::uint16_t kUsualPort = 80;
    const bool is_ipv6 = request().host.find(':') != std::string::npos;
    const std::string host = is_ipv6 ? "[" + request().host + "]" : request().host;
    return request().port == kUsualPort ? host : host + ":" + std::to_string(request().port);
  }

  void ReadHeader() {
    buffer_.max_size(kMostAnswerBytes);
    answer_.body_limit(kMostAnswerBytes);
    http::async_read_header(
        socket(), buffer_, answer_,
        [self = shared_from_this(), this](const error_code& error, std::size_t) {
          if (has_ended()) return;
          if (error) return Fail(error);
          TakeStatus();
        });
  }

  void TakeStatus() {
    const auto status = static_cast<int>(answer_.get().result_int());
    const std::string words = "it answers " + std::to_string(status);
    if (status != request().status)
      return End(false, words + ", not " + std::to_string(request().status));
    if (request().text.empty()) return End(true, words);
    SetPhase("that holds " + Quoted(request().text));
    ReadBody();
  }

  void ReadBody() {
    http::async_read_some(socket(), buffer_, answer_,
                          [self = shared_from_this(), this](const error_code& error, std::size_t) {
                            if (has_ended()) return;
                            TakeBody(error);
                          });
  }

  void TakeBody(const error_code& error) {
    if (answer_.get().body().find(request().text) != std::string::npos)
      return End(true, "it answers " + std::to_string(request().status) + " with " +
                           Quoted(request().text));
    if (answer_.is_done() || error == http::error::body_limit)
      return End(false, "the answer does not hold " + Quoted(request().text));
    if (error) return Fail(error);
    ReadBody();
  }

  http::request<http::empty_body> message_;
  boost::beast::flat_buffer buffer_;
  http::response_parser<http::string_body> answer_;
};

}  // namespace

NameAnswer LookUpBySystem(const std::string& name) {
  asio::io_context context;
  error_code error;
  NameAnswer answer;
  for (const auto& entry : tcp::resolver(context).resolve(name, "", error))
    answer.addresses.push_back(entry.endpoint().address().to_string());
  if (error) answer.failure = WordsOf(error);
  return answer;
}

class NetworkLoop::Impl {
 public:
  explicit Impl(NameLookup look_up) : lookups(context, std::move(look_up)) {}

  asio::io_context context{1};
  LookupThreads lookups;
};

NetworkLoop::NetworkLoop(NameLookup look_up) : impl_(std::make_unique<Impl>(std::move(look_up))) {}
NetworkLoop::~NetworkLoop() = default;

void NetworkLoop::Probe(const ProbeRequest& request, ResultTaker take_result) {
  std::shared_ptr<Trial> trial;
  if (request.kind == ProbeKind::kHttp)
    trial = std::make_shared<HttpTrial>(impl_->context, impl_->lookups, request,
                                        std::move(take_result));
  else
    trial =
        std::make_shared<TcpTrial>(impl_->context, impl_->lookups, request, std::move(take_result));
  trial->Begin();
}

void NetworkLoop::Post(std::function<void()> function) {
  asio::post(impl_->context, std::move(function));
}

void NetworkLoop::Run(std::chrono::milliseconds time) {
  impl_->context.restart();
  // Keeps the loop from ending when there is nothing to wait for.
  const auto work = asio::make_work_guard(impl_->context);
  if (impl_->context.run_one_for(time) > 0) impl_->context.poll();
}

}  // namespace brantel::host
