// Replies of a relay in pieces of any size: reading ends, no line in the log is longer than a line
// may grow or holds a line end, and where the pieces end changes nothing as long as no line comes
// near that length.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "smtp_mail/session/smtp_connection.h"

namespace brantel {
namespace {

void Require(bool condition) {
  if (!condition) std::abort();
}

class Log final : public NotifierHost {
 public:
  std::vector<std::string> lines;

  Result ExpandMessage(std::string&, EmptyText) override { return kFail; }
  void LogMessage(std::string_view text) override { lines.emplace_back(text); }
  void LogMessage(std::u16string_view) override { std::abort(); }
  Result GetAlertTrigger(std::uint32_t&) override { return kFail; }
};

// Sends its bytes in pieces of one size, then closes the connection.
class Relay final : public MailSocket {
 public:
  Relay(std::string_view bytes, std::size_t piece_size) : rest_(bytes), piece_size_(piece_size) {}

  bool Connect(Ipv4Address, std::uint16_t) override { return true; }
  Outcome<std::size_t> Send(std::string_view bytes) override { return bytes.size(); }
  void PumpMessages() override {}
  Outcome<Readiness> WaitForData(std::uint32_t) override { return Readiness::kReady; }
  Outcome<std::size_t> Receive(std::span<char> buffer) override {
    const std::string_view piece = rest_.substr(0, std::min(buffer.size(), piece_size_));
    std::ranges::copy(piece, buffer.begin());
    rest_.remove_prefix(piece.size());
    return piece.size();
  }

 private:
  std::string_view rest_;
  std::size_t piece_size_;
};

struct Reading {
  std::vector<int> codes;
  std::vector<std::string> log;

  friend bool operator==(const Reading&, const Reading&) = default;
};

Reading ReadReplies(std::string_view bytes, std::size_t piece_size) {
  constexpr int kReplies = 8;
  Relay relay(bytes, piece_size);
  Log log;
  std::string carry_over;
  SmtpConnection connection(AlertLog(&log), relay, carry_over, 100);
  Reading reading;
  for (int i = 0; i < kReplies; ++i) {
    reading.codes.push_back(connection.ReadReply().code);
  }
  reading.log = std::move(log.lines);
  return reading;
}

}  // namespace
}  // namespace brantel

// The first byte is the size of the pieces.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace brantel;
  if (size == 0) return 0;
  const std::string bytes(data + 1, data + size);
  const Reading reading = ReadReplies(bytes, data[0] % 82U + 1U);
  for (const std::string& line : reading.log) {
    Require(line.size() <= 899 + 82);
    Require(line == "\r\n" || line.find_first_of(std::string_view("\n\0", 2)) == std::string::npos);
  }
  // A NUL takes with it what came in the same piece.
  const bool splits_alike = bytes.size() < 900 && bytes.find('\0') == std::string::npos;
  if (splits_alike) Require(reading == ReadReplies(bytes, 1));
  return 0;
}
