#include "host/preview/paper_line.h"

#include <algorithm>
#include <utility>

namespace brantel::host {
namespace {

// With its start and stop bit, and with its parity where it has seven bits.
constexpr std::uint64_t kBitsOfAByte = 10;

std::string PortWords(std::uint32_t port_number, std::uint32_t bits_per_second,
                      const Framing& framing) {
  return "COM" + std::to_string(port_number) + " at " + std::to_string(bits_per_second) +
         " bits per second, " + std::to_string(framing.data_bits) + " data bits, " +
         (framing.parity == Parity::kEven ? "even" : "no") + " parity, 1 stop bit";
}

// How long a read takes whose last byte is there already. A total of 0 would be no limit; nobody
// reads so.
std::uint64_t ReadTime(const SerialTimeouts& timeouts, std::size_t wanted, std::size_t at_hand) {
  if (at_hand >= wanted) return 0;
  const std::uint64_t total =
      std::uint64_t{timeouts.read_total_multiplier} * wanted + timeouts.read_total_constant;
  const bool ends_early = at_hand > 0 && timeouts.read_interval > 0;
  return ends_early ? std::min<std::uint64_t>(total, timeouts.read_interval) : total;
}

}  // namespace

class PaperLine::Device final : public SerialDevice {
 public:
  Device(PaperLine& line, std::uint32_t port_number) : line_(line), port_number_(port_number) {}

  Outcome<> GetControl() override { return kDone; }

  Outcome<> SetControl(std::uint32_t bits_per_second, const Framing& framing) override {
    line_.parts_.push_back(
        {.what = "port", .words = PortWords(port_number_, bits_per_second, framing)});
    bits_per_second_ = bits_per_second;
    return kDone;
  }

  Outcome<SerialTimeouts> GetTimeouts() override { return timeouts_; }

  Outcome<> SetTimeouts(const SerialTimeouts& timeouts) override {
    timeouts_ = timeouts;
    return kDone;
  }

  Outcome<> Write(std::string_view bytes) override {
    const PaperStep step = line_.NextStep();
    line_.parts_.push_back({.what = std::string(step.what), .bytes = std::string(bytes)});
    unsent_ += bytes.size();
    answer_ += step.answer;
    return kDone;
  }

  Outcome<std::size_t> Read(std::span<char> buffer) override {
    line_.clock_.Count(ReadTime(timeouts_, buffer.size(), answer_.size()));
    const std::size_t count = answer_.copy(buffer.data(), buffer.size());
    answer_.erase(0, count);
    return count;
  }

  void Flush() override {
    constexpr std::uint64_t kMillisecondsOfASecond = 1000;
    line_.clock_.Count(std::exchange(unsent_, 0) * kBitsOfAByte * kMillisecondsOfASecond /
                       std::max<std::uint32_t>(bits_per_second_, 1));
  }

 private:
  PaperLine& line_;
  std::uint32_t port_number_;
  std::uint32_t bits_per_second_ = 0;
  SerialTimeouts timeouts_;
  std::uint64_t unsent_ = 0;
  std::string answer_;
};

Outcome<std::unique_ptr<SerialDevice>> PaperLine::Open(std::uint32_t port_number) {
  return std::make_unique<Device>(*this, port_number);
}

PaperStep PaperLine::NextStep() {
  if (steps_.empty()) return {.what = "further bytes", .answer = ""};
  const PaperStep step = steps_.front();
  steps_ = steps_.subspan(1);
  return step;
}

}  // namespace brantel::host
