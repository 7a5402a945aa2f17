#include "host/console/http_server.h"

// Before Asio, whose headers for Windows use what it declares.
#include <utility>

#include <array>
#include <boost/asio.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <optional>
#include <stdexcept>
#include <string_view>

namespace brantel::host {
namespace {

namespace beast = boost::beast;
namespace http = boost::beast::http;
using boost::asio::ip::tcp;
using boost::system::error_code;

// The response to what is no request.
HttpResponse PlainResponse(http::status status) {
  return {.status = static_cast<unsigned>(status),
          .fields = {{"Content-Type", "text/plain; charset=utf-8"},
                     {"X-Content-Type-Options", "nosniff"}},
          .body = std::string(http::obsolete_reason(status)) + "\n"};
}

std::optional<http::status> StatusOfFault(const error_code& error) {
  if (error == http::error::body_limit) return http::status::payload_too_large;
  if (error == http::error::header_limit || error == http::error::buffer_overflow)
    return http::status::request_header_fields_too_large;
  const bool is_malformed =
      error.category() == make_error_code(http::error::bad_version).category();
  if (is_malformed && error != http::error::end_of_stream && error != http::error::partial_message)
    return http::status::bad_request;
  return std::nullopt;
}

std::string TextOf(beast::string_view text) {
  return {text.data(), text.size()};
}

HttpRequest RequestOf(http::request<http::string_body>&& message, const tcp::endpoint& peer) {
  HttpRequest request{.method = TextOf(message.method_string()),
                      .target = TextOf(message.target()),
                      .body = std::move(message.body()),
                      .peer = peer.address().to_string()};
  for (const auto& field : message)
    request.fields.push_back({TextOf(field.name_string()), TextOf(field.value())});
  return request;
}

}  // namespace

class HttpServer::Impl {
 public:
  Impl(const std::string& address, std::uint16_t port, const ServerLimits& limits,
       RequestHandler handle)
      : limits_(limits), handle_(std::move(handle)), acceptor_(context_) {
    error_code error;
    const auto ip = boost::asio::ip::make_address(address, error);
    if (error) throw std::runtime_error(address + " is no IP address");
    const tcp::endpoint endpoint(ip, port);
    acceptor_.open(endpoint.protocol(), error);
#ifndef _WIN32
    // There the option would let another program take the port over.
    if (!error) acceptor_.set_option(boost::asio::socket_base::reuse_address(true), error);
#endif
    if (!error) acceptor_.bind(endpoint, error);
    if (!error) acceptor_.listen(boost::asio::socket_base::max_listen_connections, error);
    if (error) {
      throw std::runtime_error("nothing can be served at " + address + " port " +
                               std::to_string(port) + ": " + error.message());
    }
  }

  Impl(const Impl&) = delete;
  Impl& operator=(const Impl&) = delete;
  ~Impl() {
    is_ending_ = true;
  }

  [[nodiscard]] std::uint16_t port() const {
    return acceptor_.local_endpoint().port();
  }

  void Run() {
    Accept();
    context_.run();
  }

  void Stop() {
    context_.stop();
  }

 private:
  class Connection;

  void Accept() {
    is_accepting_ = true;
    acceptor_.async_accept([this](const error_code& error, tcp::socket socket) {
      is_accepting_ = false;
      if (!error) Serve(std::move(socket));
      AcceptIfThereIsRoom();
    });
  }

  void AcceptIfThereIsRoom() {
    if (!is_accepting_ && !is_ending_ && connections_ < limits_.connections) Accept();
  }

  void Serve(tcp::socket socket);

  const ServerLimits limits_;
  const RequestHandler handle_;
  std::size_t connections_ = 0;
  std::size_t streams_ = 0;
  bool is_accepting_ = false;
  bool is_ending_ = false;
  // Behind what connections use: those that are left over end with it.
  boost::asio::io_context context_{1};
  tcp::acceptor acceptor_;
};

// One client. Lives as long as something of it is pending.
class HttpServer::Impl::Connection : public std::enable_shared_from_this<Connection> {
 public:
  Connection(Impl& server, tcp::socket&& socket)
      : server_(server),
        stream_(std::move(socket)),
        timer_(stream_.get_executor()),
        write_timer_(stream_.get_executor()) {
    ++server_.connections_;
  }
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;
  ~Connection() {
    if (events_) --server_.streams_;
    --server_.connections_;
    server_.AcceptIfThereIsRoom();
  }

  void Begin() {
    error_code error;
    peer_ = stream_.socket().remote_endpoint(error);
    if (!error) ReadRequest();
  }

 private:
  void ReadRequest() {
    parser_.emplace();
    parser_->header_limit(static_cast<std::uint32_t>(server_.limits_.header_bytes));
    parser_->body_limit(server_.limits_.body_bytes);
    stream_.expires_after(server_.limits_.request_time);
    http::async_read(stream_, buffer_, *parser_,
                     [self = shared_from_this()](const error_code& error, std::size_t) {
                       self->TakeRequest(error);
                     });
  }

  void TakeRequest(const error_code& error) {
    if (error) {
      const auto status = StatusOfFault(error);
      if (!status) return;
      is_without_body_ = false;
      return Respond(PlainResponse(*status), false, 11);
    }
    const bool keeps_alive = parser_->get().keep_alive();
    const unsigned version = parser_->get().version();
    is_without_body_ = parser_->get().method() == http::verb::head;
    const HttpRequest request = RequestOf(parser_->release(), peer_);
    Respond(Answer(request), keeps_alive, version);
  }

  HttpResponse Answer(const HttpRequest& request) {
    HttpResponse response;
    try {
      response = server_.handle_(request);
    } catch (const std::exception&) {
      return PlainResponse(http::status::internal_server_error);
    }
    if (response.stream && server_.streams_ >= server_.limits_.streams)
      return PlainResponse(http::status::service_unavailable);
    return response;
  }

  void Respond(HttpResponse&& given, bool keeps_alive, unsigned version) {
    const bool is_stream = given.stream != nullptr && !is_without_body_;
    response_.emplace(static_cast<http::status>(given.status), version);
    for (const HttpField& field : given.fields)
      response_->insert(field.name, field.value);
    response_->keep_alive(keeps_alive && !is_stream);
    if (!is_stream) response_->content_length(given.body.size());
    if (!is_without_body_) response_->body() = std::move(given.body);
    if (is_stream) {
      events_ = std::move(given.stream);
      ++server_.streams_;
    }
    LimitWriting();
    http::async_write(stream_, *response_,
                      [self = shared_from_this()](const error_code& error, std::size_t) {
                        self->TakeWritten(error);
                      });
  }

  // A response without an end says so by an error, when its beginning has been written.
  void TakeWritten(const error_code& error) {
    write_timer_.cancel();
    if (events_ && (!error || error == http::error::end_of_stream)) return BeginStream();
    if (error) return;
    if (response_->keep_alive()) return ReadRequest();
    Linger();
  }

  // Gives the client up that does not take what is written next. What is pending is called back
  // first: not every system ends a write by itself when its socket is closed.
  void LimitWriting() {
    stream_.expires_never();
    write_timer_.expires_after(server_.limits_.response_time);
    write_timer_.async_wait([self = shared_from_this()](const error_code& error) {
      if (error) return;
      error_code ignored;
      self->stream_.socket().cancel(ignored);
      self->stream_.socket().close(ignored);
    });
  }

  // Lets the client take the response before the connection ends, which it could not while more
  // comes from it than anybody reads.
  void Linger() {
    error_code ignored;
    stream_.socket().shutdown(tcp::socket::shutdown_send, ignored);
    stream_.expires_after(server_.limits_.response_time);
    Discard();
  }

  void Discard() {
    stream_.async_read_some(boost::asio::buffer(discarded_),
                            [self = shared_from_this()](const error_code& error, std::size_t size) {
                              self->discarded_bytes_ += size;
                              const bool is_enough =
                                  self->discarded_bytes_ > 16 * self->server_.limits_.body_bytes;
                              if (!error && !is_enough) self->Discard();
                            });
  }

  void BeginStream() {
    stream_.expires_never();
    WatchForEnd();
    quiet_since_ = std::chrono::steady_clock::now();
    Poll();
  }

  // The client has nothing more to say, so that whatever comes is its end.
  void WatchForEnd() {
    stream_.async_read_some(boost::asio::buffer(discarded_),
                            [self = shared_from_this()](const error_code&, std::size_t) {
                              self->has_ended_ = true;
                              self->timer_.cancel();
                            });
  }

  void Poll() {
    if (has_ended_) return;
    std::optional<std::string> piece;
    try {
      piece = events_->Poll();
    } catch (const std::exception&) {
      piece.reset();
    }
    if (!piece) return End();
    const auto now = std::chrono::steady_clock::now();
    if (piece->empty() && now - quiet_since_ > server_.limits_.quiet_time) piece = ":\n\n";
    if (piece->empty()) return Wait();
    quiet_since_ = now;
    piece_ = *std::move(piece);
    LimitWriting();
    boost::asio::async_write(stream_, boost::asio::buffer(piece_),
                             [self = shared_from_this()](const error_code& error, std::size_t) {
                               self->write_timer_.cancel();
                               if (error) return self->End();
                               self->Wait();
                             });
  }

  void Wait() {
    timer_.expires_after(server_.limits_.poll_time);
    timer_.async_wait([self = shared_from_this()](const error_code& error) {
      if (!error) self->Poll();
    });
  }

  void End() {
    has_ended_ = true;
    error_code ignored;
    stream_.socket().shutdown(tcp::socket::shutdown_both, ignored);
    stream_.close();
  }

  Impl& server_;
  beast::tcp_stream stream_;
  tcp::endpoint peer_;
  beast::flat_buffer buffer_;
  std::optional<http::request_parser<http::string_body>> parser_;
  std::optional<http::response<http::string_body>> response_;
  bool is_without_body_ = false;
  std::array<char, 4096> discarded_{};
  std::size_t discarded_bytes_ = 0;
  std::unique_ptr<EventStream> events_;
  boost::asio::steady_timer timer_;
  boost::asio::steady_timer write_timer_;
  std::chrono::steady_clock::time_point quiet_since_;
  std::string piece_;
  bool has_ended_ = false;
};

void HttpServer::Impl::Serve(tcp::socket socket) {
  std::make_shared<Connection>(*this, std::move(socket))->Begin();
}

HttpServer::HttpServer(const std::string& address, std::uint16_t port, const ServerLimits& limits,
                       RequestHandler handle)
    : impl_(std::make_unique<Impl>(address, port, limits, std::move(handle))) {}

HttpServer::~HttpServer() = default;

std::uint16_t HttpServer::port() const {
  return impl_->port();
}

void HttpServer::Run() {
  impl_->Run();
}

void HttpServer::Stop() {
  impl_->Stop();
}

}  // namespace brantel::host
