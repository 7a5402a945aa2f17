// The server as clients meet it that keep to nothing.
#include "host/console/http_server.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "tests/unit/host/console/raw_connection.h"

namespace brantel::host {
namespace {

using std::chrono::milliseconds;
using ::testing::HasSubstr;
using ::testing::StartsWith;

// Gives out three pieces, and ends.
class ThreePieces final : public EventStream {
 public:
  std::optional<std::string> Poll() override {
    if (given_ == 3) return std::nullopt;
    return "piece " + std::to_string(++given_) + "\n";
  }

 private:
  int given_ = 0;
};

class EndlessStream final : public EventStream {
 public:
  std::optional<std::string> Poll() override { return ""; }
};

HttpResponse AnswerOfTest(const HttpRequest& request) {
  if (request.target == "/throw") throw std::runtime_error("secret words");
  if (request.target == "/stream")
    return {.fields = {{"Content-Type", "text/event-stream"}},
            .stream = std::make_unique<ThreePieces>()};
  if (request.target == "/endless") return {.stream = std::make_unique<EndlessStream>()};
  if (request.target == "/large") return {.body = std::string(8 << 20, 'x')};
  return {.body = request.method + " " + request.target + " " + request.body};
}

class HttpServerTest : public ::testing::Test {
 protected:
  HttpServerTest() {
    limits.request_time = milliseconds(300);
    limits.response_time = milliseconds(300);
    limits.poll_time = milliseconds(5);
  }
  ~HttpServerTest() override {
    server->Stop();
    thread.join();
  }

  void Start() {
    server.emplace("127.0.0.1", 0, limits, AnswerOfTest);
    thread = std::thread([this] { server->Run(); });
  }

  std::string Exchange(const std::string& sent) {
    RawConnection connection(server->port());
    connection.Send(sent);
    return connection.ReadToEnd();
  }

  ServerLimits limits;
  std::optional<HttpServer> server;
  std::thread thread;
};

constexpr const char* kEnd = "HTTP/1.1\r\nHost: a\r\nConnection: close\r\n\r\n";

TEST_F(HttpServerTest, AnswersARequest) {
  Start();
  const std::string answer = Exchange(std::string("GET /x?y=z ") + kEnd);
  EXPECT_THAT(answer, StartsWith("HTTP/1.1 200 OK\r\n"));
  EXPECT_THAT(answer, HasSubstr("\r\n\r\nGET /x?y=z "));
}

TEST_F(HttpServerTest, AnswersPipelinedRequestsInTheirOrder) {
  Start();
  std::string sent;
  for (int i = 0; i < 20; ++i) {
    const std::string body = "body" + std::to_string(i);
    sent += "POST /" + std::to_string(i) +
            " HTTP/1.1\r\nHost: a\r\nContent-Length: " + std::to_string(body.size()) + "\r\n\r\n" +
            body;
  }
  const std::string answer = Exchange(sent + "GET /last " + kEnd);
  std::size_t at = 0;
  for (int i = 0; i < 20; ++i) {
    const std::string number = std::to_string(i);
    const std::size_t found = answer.find("POST /" + number + " body" + number, at);
    ASSERT_NE(found, std::string::npos) << i;
    at = found;
  }
  EXPECT_THAT(answer.substr(at), HasSubstr("GET /last"));
}

TEST_F(HttpServerTest, RefusesWhatIsTooLargeOrNoRequest) {
  Start();
  struct Case {
    std::string sent;
    const char* status;
  };
  const std::string large(9000, 'a');
  for (const Case& refused :
       {Case{"GET /" + large + " HTTP/1.1\r\n\r\n", "431"},
        Case{"GET / HTTP/1.1\r\nX: " + large + "\r\n\r\n", "431"},
        Case{"POST / HTTP/1.1\r\nContent-Length: 65537\r\n\r\n", "413"},
        Case{"POST / HTTP/1.1\r\nContent-Length: 65537\r\n\r\n" + std::string(65537, 'x'), "413"},
        Case{"POST / HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\n20000\r\n" +
                 std::string(0x20000, 'x') + "\r\n0\r\n\r\n",
             "413"},
        Case{"POST / HTTP/1.1\r\nContent-Length: 99999999999999999999\r\n\r\n", "400"},
        Case{"POST / HTTP/1.1\r\nContent-Length: -1\r\n\r\n", "400"},
        Case{"nonsense\r\n\r\n", "400"}, Case{"GET / HTTP/9.9\r\n\r\n", "400"},
        Case{std::string("GET /\0 HTTP/1.1\r\n\r\n", 19), "400"},
        Case{"GET / HTTP/1.1\r\nHost a\r\n\r\n", "400"},
        Case{std::string("\x16\x03\x01\x02\x00\x01\x00\x01\xFC\x03\x03\r\n\r\n", 15), "400"}}) {
    const std::string answer = Exchange(refused.sent);
    EXPECT_THAT(answer, StartsWith(std::string("HTTP/1.1 ") + refused.status))
        << refused.sent.substr(0, 60);
    EXPECT_EQ(answer.find(large.substr(0, 50)), std::string::npos);
  }
}

TEST_F(HttpServerTest, GivesUpClientsThatAreSlowOrSayNothing) {
  Start();
  for (const char* const begun :
       {"", "G", "GET / HTTP/1.1\r\nHost:", "POST / HTTP/1.1\r\nContent-Length: 10\r\n\r\nabc"}) {
    RawConnection connection(server->port());
    connection.Send(begun);
    EXPECT_EQ(connection.ReadToEnd(), "") << begun;
  }
}

// A byte now and then keeps a request no longer than it may take as a whole.
TEST_F(HttpServerTest, GivesUpClientsThatDrip) {
  Start();
  RawConnection connection(server->port());
  int sent = 0;
  while (sent < 400 && connection.Send("G")) {
    std::this_thread::sleep_for(milliseconds(10));
    ++sent;
  }
  EXPECT_LT(sent, 400);
}

TEST_F(HttpServerTest, GivesUpClientsThatTakeNothing) {
  limits.connections = 1;
  Start();
  RawConnection deaf(server->port());
  for (int i = 0; i < 4; ++i)
    deaf.Send("GET /large HTTP/1.1\r\nHost: a\r\n\r\n");
  // Its place is free in the end.
  EXPECT_THAT(Exchange(std::string("GET /x ") + kEnd), HasSubstr("GET /x"));
}

TEST_F(HttpServerTest, TakesNoMoreClientsThanItMay) {
  limits.connections = 3;
  Start();
  std::vector<RawConnection> idle;
  for (int i = 0; i < 3; ++i)
    idle.emplace_back(server->port());
  const auto before = std::chrono::steady_clock::now();
  EXPECT_THAT(Exchange(std::string("GET /x ") + kEnd), HasSubstr("GET /x"));
  EXPECT_GT(std::chrono::steady_clock::now() - before, milliseconds(100)) << "it had to wait";
}

TEST_F(HttpServerTest, SaysNothingOfWhatWentWrong) {
  Start();
  const std::string answer = Exchange(std::string("GET /throw ") + kEnd);
  EXPECT_THAT(answer, StartsWith("HTTP/1.1 500 "));
  EXPECT_EQ(answer.find("secret"), std::string::npos);
}

TEST_F(HttpServerTest, AnswersHeadWithoutABody) {
  Start();
  const std::string answer = Exchange(std::string("HEAD /x ") + kEnd);
  EXPECT_THAT(answer, HasSubstr("Content-Length: 8\r\n"));
  EXPECT_TRUE(answer.ends_with("\r\n\r\n"));
  EXPECT_THAT(Exchange(std::string("HEAD /stream ") + kEnd), StartsWith("HTTP/1.1 200"));
}

TEST_F(HttpServerTest, GoesOnWithAStreamUntilItEnds) {
  Start();
  const std::string answer = Exchange("GET /stream HTTP/1.1\r\nHost: a\r\n\r\n");
  EXPECT_TRUE(answer.ends_with("\r\n\r\npiece 1\npiece 2\npiece 3\n")) << answer;
}

TEST_F(HttpServerTest, SaysThatAQuietStreamIsThere) {
  limits.quiet_time = milliseconds(20);
  Start();
  RawConnection connection(server->port());
  connection.Send("GET /endless HTTP/1.1\r\nHost: a\r\n\r\n");
  EXPECT_THAT(connection.ReadUntil(":\n\n"), HasSubstr("200 OK"));
}

TEST_F(HttpServerTest, HasNoMoreStreamsThanItMay) {
  limits.streams = 2;
  limits.quiet_time = milliseconds(20);
  Start();
  {
    std::vector<RawConnection> following;
    for (int i = 0; i < 2; ++i) {
      following.emplace_back(server->port());
      following.back().Send("GET /endless HTTP/1.1\r\nHost: a\r\n\r\n");
      following.back().ReadUntil(":\n\n");
    }
    EXPECT_THAT(Exchange(std::string("GET /stream ") + kEnd), StartsWith("HTTP/1.1 503"));
  }
  // The places of those that have gone are free again.
  std::string answer;
  for (int i = 0; i < 200 && !answer.starts_with("HTTP/1.1 200"); ++i) {
    std::this_thread::sleep_for(milliseconds(10));
    answer = Exchange(std::string("GET /stream ") + kEnd);
  }
  EXPECT_THAT(answer, StartsWith("HTTP/1.1 200"));
}

TEST(HttpServer, SaysWhereItCannotListen) {
  const HttpServer first("127.0.0.1", 0, {}, AnswerOfTest);
  EXPECT_THROW(HttpServer("127.0.0.1", first.port(), {}, AnswerOfTest), std::runtime_error);
  EXPECT_THROW(HttpServer("no address", 0, {}, AnswerOfTest), std::runtime_error);
}

}  // namespace
}  // namespace brantel::host
