#include "telephone/wave_file.h"

#include <cstdint>
#include <limits>

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

std::optional<unsigned> ReadFormat(RiffFile& file, MemoryBlocks& memory, MemoryBlock& format) {
  const auto size = file.DescendIntoChunk("fmt ");
  if (!size) return text_id::kNoFormatChunk;
  format = AllocateChunk(memory, *size, kFormatReserve);
  if (!format) return text_id::kNoMemoryForFormat;
  if (!ReadExactly(file, format.bytes().first(*size))) return text_id::kFormatNotRead;
  file.Ascend();
  return std::nullopt;
}

std::optional<unsigned> ReadSamples(RiffFile& file, MemoryBlocks& memory, MemoryBlock& samples) {
  const auto size = file.DescendIntoChunk("data");
  if (!size) return text_id::kNoDataChunk;
  if (*size == 0) return text_id::kDataChunkEmpty;
  samples = AllocateChunk(memory, *size, 0);
  if (!samples) return text_id::kNoMemoryForData;
  if (!ReadExactly(file, samples.bytes())) return text_id::kDataNotRead;
  return std::nullopt;
}

}  // namespace

std::optional<unsigned> ReadWaveFile(RiffFiles& files, MemoryBlocks& memory,
                                     const std::string& path, Wave& wave) {
  const auto file = files.Open(path);
  if (!file) return text_id::kWaveFileNotOpened;
  if (!file->DescendIntoForm("WAVE")) return text_id::kNoWaveForm;
  if (const auto failure = ReadFormat(*file, memory, wave.format)) return failure;
  return ReadSamples(*file, memory, wave.samples);
}

}  // namespace brantel
