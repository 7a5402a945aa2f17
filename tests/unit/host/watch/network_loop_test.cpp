#include "host/watch/network_loop.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <utility>

// clang-format off
#include <boost/asio/buffer.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/read_until.hpp>
#include <boost/asio/write.hpp>
// clang-format on

#include <atomic>
#include <condition_variable>
#include <cstdint>
#include <fstream>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "host/watch/watch_loop.h"
#include "tests/unit/host/watch/watched_world.h"

namespace brantel::host {
namespace {

namespace asio = boost::asio;
using asio::ip::tcp;
using std::chrono::milliseconds;
using std::chrono::seconds;
using testing::HasSubstr;

// A service on a port of this computer that does with each caller what it is told to.
class Service {
 public:
  using Conversation = std::function<void(tcp::socket& caller)>;

  explicit Service(Conversation conversation)
      : acceptor_(context_, tcp::endpoint(asio::ip::address_v4::loopback(), 0)),
        conversation_(std::move(conversation)),
        thread_([this] { Serve(); }) {}
  Service(const Service&) = delete;
  Service& operator=(const Service&) = delete;
  ~Service() {
    has_ended_ = true;
    boost::system::error_code ignored;
    tcp::socket(context_).connect(acceptor_.local_endpoint(), ignored);
    thread_.join();
  }

  [[nodiscard]] std::uint16_t port() const { return acceptor_.local_endpoint().port(); }

 private:
  void Serve() {
    boost::system::error_code error;
    std::vector<tcp::socket> kept;
    while (!has_ended_) {
      tcp::socket caller(context_);
      acceptor_.accept(caller, error);
      if (error || has_ended_) continue;
      try {
        conversation_(caller);
      } catch (const boost::system::system_error&) {
        // The caller has gone.
      }
      // It stays open until the service ends, unless the conversation has closed it.
      kept.push_back(std::move(caller));
    }
  }

  asio::io_context context_;
  tcp::acceptor acceptor_;
  Conversation conversation_;
  std::atomic<bool> has_ended_ = false;
  std::thread thread_;
};

Service::Conversation Says(const std::string& words) {
  return [words](tcp::socket& caller) { asio::write(caller, asio::buffer(words)); };
}

// Takes a request, which is handed on, and answers.
Service::Conversation Answers(const std::string& answer, std::string* request = nullptr) {
  return [answer, request](tcp::socket& caller) {
    std::string taken;
    asio::read_until(caller, asio::dynamic_buffer(taken), "\r\n\r\n");
    if (request != nullptr) *request = taken;
    asio::write(caller, asio::buffer(answer));
    caller.close();
  };
}

ProbeResult ResultOf(const ProbeRequest& request) {
  NetworkLoop network;
  std::optional<ProbeResult> result;
  network.Probe(request, [&](const ProbeResult& taken) { result = taken; });
  while (!result)
    network.Run(seconds(1));
  return *result;
}

ProbeRequest TcpRequest(std::uint16_t port, const std::string& text = "") {
  return {.kind = ProbeKind::kTcp,
          .host = "127.0.0.1",
          .port = port,
          .text = text,
          .timeout = seconds(20)};
}

ProbeRequest HttpRequest(std::uint16_t port, const std::string& text = "") {
  return {.kind = ProbeKind::kHttp,
          .host = "127.0.0.1",
          .port = port,
          .target = "/health?all",
          .status = 200,
          .text = text,
          .timeout = seconds(20)};
}

ProbeRequest Hurried(ProbeRequest request) {
  request.timeout = milliseconds(300);
  return request;
}

std::uint16_t PortOfNobody() {
  asio::io_context context;
  const tcp::acceptor acceptor(context, tcp::endpoint(asio::ip::address_v4::loopback(), 0));
  return acceptor.local_endpoint().port();
}

using Result = ProbeResult;

TEST(TcpProbe, FindsAConnection) {
  const Service service([](tcp::socket&) {});
  EXPECT_EQ(ResultOf(TcpRequest(service.port())), (Result{true, "the connection was made"}));
}

TEST(TcpProbe, FindsNobodyThere) {
  EXPECT_EQ(ResultOf(TcpRequest(PortOfNobody())), (Result{false, "connection refused"}));
}

TEST(TcpProbe, FindsTheTextInPieces) {
  const Service service([](tcp::socket& caller) {
    for (const char* piece : {"22", "0 re", "lay\r\n"}) {
      asio::write(caller, asio::buffer(std::string(piece)));
      std::this_thread::sleep_for(milliseconds(20));
    }
  });
  EXPECT_EQ(ResultOf(TcpRequest(service.port(), "220 relay")),
            (Result{true, "it says '220 relay'"}));
}

TEST(TcpProbe, FindsAnotherTextAndTheEnd) {
  const Service service([](tcp::socket& caller) {
    asio::write(caller, asio::buffer(std::string("554 no\r\n")));
    caller.close();
  });
  EXPECT_EQ(ResultOf(TcpRequest(service.port(), "220")),
            (Result{false, "the connection was closed"}));
}

// It takes calls, as the system does for it, and is dead.
TEST(TcpProbe, FindsAServiceThatHangs) {
  const Service service([](tcp::socket&) {});
  EXPECT_EQ(ResultOf(Hurried(TcpRequest(service.port(), "220"))),
            (Result{false, "no answer that holds '220'"}));
}

TEST(TcpProbe, EndsWithAServiceThatTalksForEver) {
  const Service service([](tcp::socket& caller) {
    while (true)
      asio::write(caller, asio::buffer(std::string(10000, 'x')));
  });
  EXPECT_EQ(ResultOf(TcpRequest(service.port(), "220")),
            (Result{false, "what it says does not hold '220'"}));
}

TEST(TcpProbe, FindsAnUnknownName) {
  ProbeRequest request = TcpRequest(80);
  request.host = "name.invalid";
  EXPECT_FALSE(ResultOf(request).is_up);
}

constexpr const char* kAnswer = "HTTP/1.1 200 OK\r\nContent-Length: 8\r\n\r\nall ok\r\n";

// A name server that knows nothing but "alive", and does not answer for "dead" as long as it lives.
class DeafNameServer {
 public:
  NameLookup LookUp() {
    return [this](const std::string& name) {
      if (name == "alive") return NameAnswer{.addresses = {"127.0.0.1"}};
      std::unique_lock lock(mutex_);
      ++asked_;
      ended_.wait(lock, [this] { return has_ended_; });
      return NameAnswer{.failure = "it was too late"};
    };
  }
  void End() {
    const std::lock_guard lock(mutex_);
    has_ended_ = true;
    ended_.notify_all();
  }
  [[nodiscard]] int asked() {
    const std::lock_guard lock(mutex_);
    return asked_;
  }

 private:
  std::mutex mutex_;
  std::condition_variable ended_;
  bool has_ended_ = false;
  int asked_ = 0;
};

ProbeRequest NamedRequest(const std::string& name, std::uint16_t port, milliseconds timeout) {
  return {.kind = ProbeKind::kTcp, .host = name, .port = port, .timeout = timeout};
}

TEST(TcpProbe, IsNotDelayedByANameServerThatDoesNotAnswerForOthers) {
  const Service service(Says(""));
  DeafNameServer names;
  NetworkLoop network(names.LookUp());
  std::vector<std::string> ends;
  const auto take = [&](const ProbeResult& result) { ends.push_back(result.words); };
  for (int i = 0; i < 3; ++i)
    network.Probe(NamedRequest("dead", service.port(), seconds(2)), take);
  network.Probe(NamedRequest("alive", service.port(), seconds(60)), take);
  while (ends.size() < 4)
    network.Run(seconds(1));
  const std::string unanswered = "no answer of the name server";
  EXPECT_THAT(ends, testing::UnorderedElementsAre("the connection was made", unanswered, unanswered,
                                                  unanswered));
  names.End();
}

TEST(TcpProbe, LooksNoNameUpForWhatHasGone) {
  DeafNameServer names;
  int ended = 0;
  int asked = 0;
  {
    NetworkLoop network(names.LookUp());
    for (int i = 0; i < 50; ++i)
      network.Probe(NamedRequest("dead", 1, milliseconds(500)),
                    [&](const ProbeResult&) { ++ended; });
    while (ended < 50)
      network.Run(seconds(1));
    // What waited for the end of its time is let go of with that.
    network.Run(milliseconds(1));
    asked = names.asked();
    EXPECT_LE(asked, 4);
    names.End();
    network.Probe(NamedRequest("alive", 1, seconds(60)), [&](const ProbeResult&) { ++ended; });
    while (ended < 51)
      network.Run(seconds(1));
  }
  EXPECT_EQ(names.asked(), asked);
}

TEST(HttpProbe, FindsTheStatus) {
  std::string request;
  {
    const Service service(Answers(kAnswer, &request));
    EXPECT_EQ(ResultOf(HttpRequest(service.port())), (Result{true, "it answers 200"}));
  }
  EXPECT_THAT(request, testing::StartsWith("GET /health?all HTTP/1.1\r\nHost: 127.0.0.1:"));
  EXPECT_THAT(request, HasSubstr("\r\nConnection: close\r\n"));
}

TEST(HttpProbe, FindsAnotherStatus) {
  const Service service(Answers("HTTP/1.1 503 Busy\r\nContent-Length: 0\r\n\r\n"));
  EXPECT_EQ(ResultOf(HttpRequest(service.port())), (Result{false, "it answers 503, not 200"}));
}

TEST(HttpProbe, FindsTheText) {
  const Service service(Answers(kAnswer));
  EXPECT_EQ(ResultOf(HttpRequest(service.port(), "ok")),
            (Result{true, "it answers 200 with 'ok'"}));
}

TEST(HttpProbe, FindsTheTextInAnAnswerWithoutLength) {
  const Service service(Answers("HTTP/1.0 200 OK\r\n\r\nall ok\r\n"));
  EXPECT_EQ(ResultOf(HttpRequest(service.port(), "ok")),
            (Result{true, "it answers 200 with 'ok'"}));
}

TEST(HttpProbe, FindsTheTextInChunks) {
  const Service service(Answers(
      "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n2\r\nal\r\n4\r\nl ok\r\n0\r\n\r\n"));
  EXPECT_EQ(ResultOf(HttpRequest(service.port(), "all ok")),
            (Result{true, "it answers 200 with 'all ok'"}));
}

TEST(HttpProbe, FindsAnotherText) {
  for (const char* answer : {kAnswer, "HTTP/1.0 200 OK\r\n\r\nall ok\r\n"}) {
    const Service service(Answers(answer));
    EXPECT_EQ(ResultOf(HttpRequest(service.port(), "fine")),
              (Result{false, "the answer does not hold 'fine'"}));
  }
}

TEST(HttpProbe, FindsAnAnswerThatBreaksOff) {
  const Service service(Answers("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nall"));
  EXPECT_EQ(ResultOf(HttpRequest(service.port(), "ok")), (Result{false, "the answer breaks off"}));
}

TEST(HttpProbe, FindsNoAnswer) {
  const Service service(Answers(""));
  EXPECT_EQ(ResultOf(HttpRequest(service.port())),
            (Result{false, "the connection was closed without an answer"}));
}

TEST(HttpProbe, FindsAnAnswerThatIsNone) {
  const Service service(Answers("220 relay\r\n\r\n"));
  EXPECT_FALSE(ResultOf(HttpRequest(service.port())).is_up);
}

TEST(HttpProbe, FindsAServiceThatHangs) {
  const Service service([](tcp::socket&) {});
  EXPECT_EQ(ResultOf(Hurried(HttpRequest(service.port()))),
            (Result{false, "no answer to the request"}));
}

TEST(HttpProbe, FindsAServiceThatHangsInItsAnswer) {
  const Service service(Says("HTTP/1.1 200 OK\r\nContent-Length: 100\r\n\r\nall"));
  EXPECT_EQ(ResultOf(Hurried(HttpRequest(service.port(), "ok"))),
            (Result{false, "no answer that holds 'ok'"}));
}

TEST(HttpProbe, EndsWithAnAnswerThatIsTooLong) {
  const Service endless([](tcp::socket& caller) {
    asio::write(caller, asio::buffer(std::string("HTTP/1.0 200 OK\r\n\r\n")));
    while (true)
      asio::write(caller, asio::buffer(std::string(10000, 'x')));
  });
  EXPECT_EQ(ResultOf(HttpRequest(endless.port(), "ok")),
            (Result{false, "the answer does not hold 'ok'"}));
  const Service header([](tcp::socket& caller) {
    asio::write(caller, asio::buffer(std::string("HTTP/1.0 200 OK\r\n")));
    while (true)
      asio::write(caller, asio::buffer("x: " + std::string(10000, 'x') + "\r\n"));
  });
  EXPECT_FALSE(ResultOf(HttpRequest(header.port())).is_up);
}

TEST(NetworkLoop, GivesUpWhatIsUnderWayWhenItEnds) {
  const Service service([](tcp::socket&) {});
  NetworkLoop network;
  for (int i = 0; i < 10; ++i)
    network.Probe(TcpRequest(service.port(), "220"), [](const ProbeResult&) { FAIL(); });
  network.Run(milliseconds(20));
}

TEST(NetworkLoop, CallsWhatOtherThreadsPost) {
  NetworkLoop network;
  int called = 0;
  std::thread other([&] { network.Post([&] { ++called; }); });
  while (called == 0)
    network.Run(seconds(1));
  other.join();
  EXPECT_EQ(called, 1);
}

// By the clocks of this computer.
class RealSurroundings final : public WatchSurroundings {
 public:
  Moment Now() override {
    const auto steady = std::chrono::steady_clock::now() - start_;
    return {std::chrono::duration_cast<SteadyTime>(steady),
            {std::chrono::time_point_cast<milliseconds>(std::chrono::system_clock::now()), {}}};
  }
  void Ping(const ProbeRequest&, NetworkLoop::ResultTaker take_result) override {
    take_result({true, "it answers"});
  }
  void Deliver(const AttemptOrder& order,
               std::function<void(const AttemptResult&)> take_result) override {
    told.push_back(order.decision.item);
    take_result({.end = AlertEnd::kDelivered});
  }

  std::vector<std::string> told;

 private:
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

// How long this thread has been ready to run without a processor that does so.
milliseconds WaitForProcessors() {
  std::uint64_t ran = 0;
  std::uint64_t waited = 0;
  std::ifstream("/proc/thread-self/schedstat") >> ran >> waited;
  return std::chrono::duration_cast<milliseconds>(std::chrono::nanoseconds(waited));
}

int CountUp(const Watch& watch, Moment now) {
  int up = 0;
  for (const ItemSnapshot& item : watch.Items(now))
    up += item.status == ItemStatus::kUp ? 1 : 0;
  return up;
}

// How late a round was, for other reasons than that its thread got no processor.
struct Lateness {
  milliseconds latest_try;
  milliseconds last_result;  // behind the time by which all of them are expected
};

// Watches a thousand services, one of which does not answer, for their first round.
Lateness RoundOfAThousand(milliseconds interval) {
  const Service service([](tcp::socket& caller) { caller.close(); });
  std::vector<std::string> names;
  for (int i = 0; i < 1000; ++i)
    names.push_back("service " + std::to_string(i));
  WatchPlan plan = PlanOf(names);
  for (WatchedItem& item : plan.items) {
    item.probe = TcpRequest(service.port());
    item.interval = interval;
    item.up_after = 1;
  }
  plan.items[999].probe.port = PortOfNobody();
  plan.items[999].down_after = 1;
  RealSurroundings surroundings;
  JournalOnPaper journal;
  Watch watch(
      plan, WatchMemory(), journal, [](const std::string&) { return std::vector<std::string>(); },
      1, surroundings.Now());
  NetworkLoop network;
  WatchLoop loop(watch, network, surroundings);
  const auto is_whole = [&] {
    return CountUp(watch, surroundings.Now()) == 999 && !surroundings.told.empty();
  };
  const milliseconds waited_before = WaitForProcessors();
  // The first round is in the first tenth of the interval, so that this is as busy as it gets.
  while (surroundings.Now().steady < interval / 4)
    loop.Turn();
  // What a busy machine has not come to by then it comes to later.
  const SteadyTime expected = surroundings.Now().steady;
  SteadyTime overtime{};
  while (!is_whole() && surroundings.Now().steady < 6 * interval) {
    loop.Turn();
    overtime = surroundings.Now().steady - expected;
  }
  EXPECT_TRUE(is_whole());
  EXPECT_THAT(surroundings.told, testing::ElementsAre("service 999"));
  const milliseconds waited = WaitForProcessors() - waited_before;
  const auto late = [waited](SteadyTime by) {
    return std::chrono::duration_cast<milliseconds>(by) - waited;
  };
  return {late(loop.latest_probe()), late(overtime)};
}

TEST(WatchLoop, KeepsTheScheduleOfAThousandServices) {
  constexpr milliseconds kInterval = seconds(10);
  constexpr int kRounds = 5;
  // The rest of a busy machine, such as what a service waits for, has no say in each round.
  Lateness late = RoundOfAThousand(kInterval);
  const auto is_late = [&] {
    return late.latest_try > kInterval / 10 || late.last_result > milliseconds(0);
  };
  for (int round = 1; round < kRounds && is_late(); ++round)
    late = RoundOfAThousand(kInterval);
  EXPECT_LE(late.latest_try, kInterval / 10);
  EXPECT_LE(late.last_result, milliseconds(0));
}

}  // namespace
}  // namespace brantel::host
