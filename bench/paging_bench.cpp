// What a page is on the line, of a long message: built by us, and a bare floor that copies as many
// bytes and adds them up. And whole pages, to a modem that replies at once.
#include <iconv.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "bench/groups.h"
#include "bench/posix_file.h"
#include "bench/replying_machine.h"
#include "bench/sample_page.h"
#include "bench/temporary_file.h"
#include "instance/byte_cursor.h"
#include "pager/ntt/ntt_line.h"
#include "pager/pager.h"
#include "pager/tap/tap_session.h"
#include "pager/ucp/ucp_frame.h"

namespace brantel {
namespace {

constexpr std::string_view kPagerId = "0041 79 123 45 67";

std::string Message(std::size_t size) {
  std::string message;
  while (message.size() < size)
    message += "router7 is down since 23:59; ";
  message.resize(size);
  return message;
}

// As many bytes of hiragana in EUC-JP.
std::string JapaneseMessage(std::size_t size) {
  std::string message;
  while (message.size() < size)
    message += "\xA4\xA2";
  return message;
}

std::string TapBlock(const std::string& message) {
  return BuildTapBlock(kPagerId, message, kTap.block);
}

std::string UcpFrame(const std::string& message) {
  return BuildUcpFrame(7, *BuildUcpBody(kPagerId, message));
}

std::string NttLine(const std::string& message) {
  return BuildNttLine(kPagerId, "7", NttMessage(message));
}

std::function<void(benchmark::State&)> Build(std::string (*build)(const std::string&),
                                             const std::string& message) {
  return [=](benchmark::State& state) {
    for (auto _ : state) {
      benchmark::DoNotOptimize(build(message));
    }
  };
}

// Copies what was built before, and adds it up.
std::function<void(benchmark::State&)> CopyAndAdd(const std::string& built) {
  return [=](benchmark::State& state) {
    for (auto _ : state) {
      std::string copy = built;
      std::uint8_t sum = 0;
      for (const char c : copy)
        sum = static_cast<std::uint8_t>(sum + static_cast<std::uint8_t>(c));
      benchmark::DoNotOptimize(sum);
      benchmark::DoNotOptimize(copy);
    }
  };
}

// The same NTT line by the C library, which is told how the message is encoded, that its length is
// right, and what the digits of the pager ID are.
void BuildNttByCLibrary(benchmark::State& state, std::string message) {
  const iconv_t descriptor = iconv_open("SHIFT_JIS", "EUC-JP");
  std::array<char, 101> text{};
  std::array<char, 200> line{};
  for (auto _ : state) {
    char* in = message.data();
    char* out = text.data();
    std::size_t in_left = message.size();
    std::size_t out_left = text.size() - 1;
    if (iconv(descriptor, &in, &in_left, &out, &out_left) != 0) std::abort();
    *out = '\0';
    // NOLINTNEXTLINE(cert-err33-c): the line is long enough
    std::snprintf(line.data(), line.size(), "8000C00000********,10000,%.15s,%04d,%03d%s\r",
                  "00417912345670A", 7, static_cast<int>(out - text.data()), text.data());
    benchmark::DoNotOptimize(line);
  }
  iconv_close(descriptor);
}

Group BuiltPage(const std::string& title, std::string (*build)(const std::string&),
                const std::string& message) {
  return {.title = title,
          .rows = {{"ours", Build(build, message)}, {"bare floor", CopyAndAdd(build(message))}}};
}

// A whole page: the instance is loaded, the call made, and the log told.
void SendPage(benchmark::State& state, const sample_page::Protocol& protocol) {
  const TemporaryFile file(sample_page::File(protocol));
  ReplyingMachine machine(protocol.replies);
  SilentHost host;
  UcpTransactionCounter counter = 0;
  Pager pager(machine, machine, machine, machine, counter);
  const InstanceArgument instance = {.text = u"", .path = file.path()};
  for (auto _ : state) {
    if (pager.Send(instance, &host) != kOk) state.SkipWithError("not sent");
  }
}

// What of that asks the system for something.
void ReadPage(benchmark::State& state, const sample_page::Protocol& protocol) {
  const TemporaryFile file(sample_page::File(protocol));
  for (auto _ : state) {
    std::array<char, ByteCursor::kReadSize> buffer;  // NOLINT(*-member-init): filled by Read
    benchmark::DoNotOptimize(PosixFile(file.path()).Read(buffer));
  }
}

Group SentPage(const sample_page::Protocol& protocol) {
  return {.title = "A page by " + protocol.name,
          .rows = {{"ours", [=](benchmark::State& state) { SendPage(state, protocol); }},
                   {"bare floor", [=](benchmark::State& state) { ReadPage(state, protocol); }}},
          .timing = Timing::kProcess};
}

}  // namespace

std::vector<Group> Groups() {
  const std::string japanese = JapaneseMessage(100);
  Group ntt = BuiltPage("An NTT line of 100 bytes", NttLine, japanese);
  ntt.rows.push_back({"iconv and snprintf, told more",
                      [=](benchmark::State& state) { BuildNttByCLibrary(state, japanese); }});
  std::vector<Group> groups = {BuiltPage("A TAP block of 100 characters", TapBlock, Message(100)),
                               BuiltPage("A TAP block of 240 characters", TapBlock, Message(240)),
                               BuiltPage("A UCP frame of 80 characters", UcpFrame, Message(80)),
                               ntt};
  for (const sample_page::Protocol& protocol : sample_page::Protocols())
    groups.push_back(SentPage(protocol));
  return groups;
}

}  // namespace brantel
