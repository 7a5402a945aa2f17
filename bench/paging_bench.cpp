// What a page is on the line, of a long message: built by us, and a bare floor that copies as many
// bytes and adds them up.
#include <benchmark/benchmark.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "pager/ntt/ntt_line.h"
#include "pager/tap/tap_session.h"
#include "pager/ucp/ucp_frame.h"

namespace brantel {
namespace {

constexpr std::string_view kPagerId = "0041 79 123 45 67";

std::string Message(std::size_t size) {
  std::string message;
  while (message.size() < size) {
    message += "router7 is down since 23:59; ";
  }
  message.resize(size);
  return message;
}

void BuildTap(benchmark::State& state) {
  const std::string message = Message(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    benchmark::DoNotOptimize(BuildTapBlock(kPagerId, message, kTap.block));
  }
}
BENCHMARK(BuildTap)->Arg(100)->Arg(240);

void BuildUcp(benchmark::State& state) {
  const std::string message = Message(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    const auto body = BuildUcpBody(kPagerId, message);
    benchmark::DoNotOptimize(BuildUcpFrame(7, *body));
  }
}
BENCHMARK(BuildUcp)->Arg(80);

void BuildNtt(benchmark::State& state) {
  std::string message;
  while (message.size() < static_cast<std::size_t>(state.range(0))) {
    message += "\xA4\xA2";
  }
  for (auto _ : state) {
    benchmark::DoNotOptimize(BuildNttLine(kPagerId, "7", NttMessage(message)));
  }
}
BENCHMARK(BuildNtt)->Arg(100);

// Of the size of a block or frame.
void CopyAndAdd(benchmark::State& state) {
  const std::string message = Message(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    std::string copy = message;
    std::uint8_t sum = 0;
    for (const char c : copy) {
      sum = static_cast<std::uint8_t>(sum + static_cast<std::uint8_t>(c));
    }
    benchmark::DoNotOptimize(sum);
    benchmark::DoNotOptimize(copy);
  }
}
BENCHMARK(CopyAndAdd)->Arg(120)->Arg(260);

}  // namespace
}  // namespace brantel
