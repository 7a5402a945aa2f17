#include "host/preview/paper_player.h"

#include <cstdint>
#include <optional>

#include "host/preview/wave_length.h"
#include "telephone/memory_blocks.h"
#include "telephone/wave_file.h"

namespace brantel::host {
namespace {

// Nothing of a file that cannot be read as a wave.
std::optional<std::uint64_t> LengthOf(RiffFiles& waves, const std::string& file) {
  SystemMemoryBlocks memory;
  const auto wave = ReadWaveFile(waves, memory, file);
  if (!wave) return std::nullopt;
  return WaveMilliseconds((*wave).format.bytes(), (*wave).samples.bytes().size());
}

std::string LengthWords(const std::string& file, const std::optional<std::uint64_t>& length) {
  return length ? WaveWords(file, *length)
                : "cannot be read as a wave, and the system plays its default sound";
}

}  // namespace

bool PaperPlayer::PlayOnce(const std::string& file) {
  const auto length = LengthOf(waves_, file);
  clock_.Count(length.value_or(0));
  parts_.push_back(
      {.what = "sound", .words = "played once; " + LengthWords(file, length), .bytes = file});
  return true;
}

bool PaperPlayer::PlayLoop(const std::string& file) {
  parts_.push_back(
      {.what = "sound",
       .words = "played over and over, until another sound ends it or the host does; " +
                LengthWords(file, LengthOf(waves_, file)),
       .bytes = file});
  return true;
}

}  // namespace brantel::host
