#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>

#include "host/console/http_message.h"

namespace brantel::host {

// What one client may take of the server.
struct ServerLimits {
  std::size_t header_bytes = std::size_t{8} * 1024;
  std::size_t body_bytes = std::size_t{64} * 1024;
  std::size_t connections = 64;                    // the next ones wait until one of them has ended
  std::size_t streams = 24;                        // of these, responses that go on
  std::chrono::milliseconds request_time{10'000};  // for all of a request to come, or for the next
  std::chrono::milliseconds response_time{10'000};  // for the client to take what it is given
  std::chrono::milliseconds poll_time{200};         // between two looks at what a stream has
  std::chrono::milliseconds quiet_time{15'000};     // after which a stream says that it is there
};

// Answers a request. Called by one thread, for one request after the other.
using RequestHandler = std::function<HttpResponse(const HttpRequest& request)>;

// A web server: HTTP/1.1 without encryption. Requests that cannot be read, are too large or too
// slow do not reach the handler.
class HttpServer {
 public:
  // Listens at the address, at any free port when that is 0. Throws std::runtime_error when that
  // does not succeed.
  HttpServer(const std::string& address, std::uint16_t port, const ServerLimits& limits,
             RequestHandler handle);
  HttpServer(const HttpServer&) = delete;
  HttpServer& operator=(const HttpServer&) = delete;
  ~HttpServer();

  [[nodiscard]] std::uint16_t port() const;

  // Serves until Stop.
  void Run();

  // From any thread, also before Run.
  void Stop();

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace brantel::host
