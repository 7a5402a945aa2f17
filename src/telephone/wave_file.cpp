#include "telephone/wave_file.h"

#include <cstdint>
#include <limits>
#include <utility>

#include "text/string_table.h"

namespace brantel {
namespace {

// Drivers read the fixed part of a format and as many bytes behind it as that says. Neither need be
// in the file: what they then find are zeros.
constexpr std::size_t kFixedFormatSize = 18;
constexpr std::size_t kFormatReserve = kFixedFormatSize + std::numeric_limits<std::uint16_t>::max();

MemoryBlock AllocateChunk(MemoryBlocks& memory, std::uint32_t size, std::size_t reserve) {
  if (size > std::numeric_limits<std::size_t>::max() - reserve) return {};
  return {memory, size + reserve};
}

bool ReadExactly(RiffFile& file, std::span<std::byte> bytes) {
  return file.Read(bytes) == bytes.size();
}

Outcome<MemoryBlock> ReadFormat(RiffFile& file, MemoryBlocks& memory) {
  const auto size = file.DescendIntoChunk("fmt ");
  if (!size) return Failure{text_id::kNoFormatChunk};
  MemoryBlock format = AllocateChunk(memory, *size, kFormatReserve);
  if (!format) return Failure{text_id::kNoMemoryForFormat};
  if (!ReadExactly(file, format.bytes().first(*size))) return Failure{text_id::kFormatNotRead};
  file.Ascend();
  return format;
}

Outcome<MemoryBlock> ReadSamples(RiffFile& file, MemoryBlocks& memory) {
  const auto size = file.DescendIntoChunk("data");
  if (!size) return Failure{text_id::kNoDataChunk};
  if (*size == 0) return Failure{text_id::kDataChunkEmpty};
  MemoryBlock samples = AllocateChunk(memory, *size, 0);
  if (!samples) return Failure{text_id::kNoMemoryForData};
  if (!ReadExactly(file, samples.bytes())) return Failure{text_id::kDataNotRead};
  return samples;
}

}  // namespace

Outcome<Wave> ReadWaveFile(RiffFiles& files, MemoryBlocks& memory, const std::string& path) {
  const auto file = files.Open(path);
  if (!file) return Failure{text_id::kWaveFileNotOpened};
  if (!file->DescendIntoForm("WAVE")) return Failure{text_id::kNoWaveForm};
  auto format = ReadFormat(*file, memory);
  if (!format) return format.failure();
  auto samples = ReadSamples(*file, memory);
  if (!samples) return samples.failure();
  return Wave{std::move(*format), std::move(*samples)};
}

}  // namespace brantel
