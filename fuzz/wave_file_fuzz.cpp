// Wave files: whatever a file holds, it is closed and all memory is given back; what was read of
// it stands in the file, and zeros stand behind the format, as far as drivers may look.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "fuzz/fuzz_input.h"
#include "telephone/wave_file.h"
#include "tests/unit/telephone/fake_voice_system.h"

namespace brantel {
namespace {

// The fixed part of a format, and as much as that can say that follows.
constexpr std::size_t kZerosBehindFormat = 18 + 0xFFFF;

std::string_view TextOf(std::span<const std::byte> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

void CheckWave(const Wave& wave, std::string_view file) {
  const std::string_view samples = TextOf(wave.samples.bytes());
  Require(!samples.empty() && file.find(samples) != std::string_view::npos);
  const std::string_view format = TextOf(wave.format.bytes());
  Require(format.size() >= kZerosBehindFormat);
  const std::size_t size = format.size() - kZerosBehindFormat;
  Require(file.find(format.substr(0, size)) != std::string_view::npos);
  Require(format.find_first_not_of('\0', size) == std::string_view::npos);
}

}  // namespace
}  // namespace brantel

// The file.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace brantel;
  FakeRiffFiles files;
  files.files["wave"] = std::string(data, data + size);
  CountingMemory memory;
  memory.most = 1 << 17;
  {
    const auto wave = ReadWaveFile(files, memory, "wave");
    Require(files.calls.size() == 2 && files.calls.back() == "close wave");
    if (wave) CheckWave(*wave, files.files.at("wave"));
  }
  Require(memory.in_use() == 0);
  return 0;
}
