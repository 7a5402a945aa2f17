#include "host/preview/wave_length.h"

#include <algorithm>
#include <array>
#include <optional>

#include "host/checks/system_checks.h"

namespace brantel::host {
namespace {

// Where a format has how many bytes of samples make a second.
constexpr std::size_t kBytesOfASecond = 8;

constexpr std::uint64_t kMillisecondsOfASecond = 1000;

std::uint32_t LittleEndianWord(std::span<const std::byte> bytes) {
  constexpr unsigned kByte = 8;
  std::uint32_t word = 0;
  for (std::size_t i = sizeof word; i > 0; --i)
    word = word << kByte | std::to_integer<std::uint32_t>(bytes[i - 1]);
  return word;
}

// One sample of silence in a format that says nothing of its length.
class UnseenWave final : public RiffFile {
 public:
  bool DescendIntoForm(const char (&/*type*/)[5]) override { return true; }
  std::optional<std::uint32_t> DescendIntoChunk(const char (&/*name*/)[5]) override { return 1; }

  std::size_t Read(std::span<std::byte> bytes) override {
    std::ranges::fill(bytes, std::byte{0});
    return bytes.size();
  }

  void Ascend() override {}
};

}  // namespace

std::uint64_t WaveMilliseconds(std::span<const std::byte> format, std::size_t bytes_of_samples) {
  if (format.size() < kBytesOfASecond + sizeof(std::uint32_t)) return 0;
  const std::uint64_t rate = LittleEndianWord(format.subspan(kBytesOfASecond));
  return rate == 0 ? 0 : bytes_of_samples * kMillisecondsOfASecond / rate;
}

std::string WaveWords(std::string_view path, std::uint64_t milliseconds) {
  if (LeadsToAnotherComputer(path)) return "on another computer, and not looked at";
  return milliseconds == 0 ? "of a length that is not known" : SecondsText(milliseconds) + " long";
}

std::string SecondsText(std::uint64_t milliseconds) {
  constexpr std::uint64_t kMillisecondsOfATenth = 100;
  constexpr std::uint64_t kTenths = 10;
  const std::uint64_t tenths = (milliseconds + kMillisecondsOfATenth - 1) / kMillisecondsOfATenth;
  const std::string whole = std::to_string(tenths / kTenths);
  const std::uint64_t rest = tenths % kTenths;
  return rest == 0 ? whole + " s" : whole + "." + std::to_string(rest) + " s";
}

std::unique_ptr<RiffFile> LocalWaves::Open(const std::string& path) {
  if (LeadsToAnotherComputer(path)) return std::make_unique<UnseenWave>();
  return files_.Open(path);
}

}  // namespace brantel::host
