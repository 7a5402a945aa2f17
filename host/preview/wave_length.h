#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "telephone/wave_system.h"

namespace brantel::host {

// How many milliseconds samples of a format, a wave file's "fmt " chunk, sound; 0 where the format
// does not say.
std::uint64_t WaveMilliseconds(std::span<const std::byte> format, std::size_t bytes_of_samples);

// What people are told of a wave file that sounds for so long.
std::string WaveWords(std::string_view path, std::uint64_t milliseconds);

// A number of milliseconds for people, in seconds and tenths that are rounded up: "2.5 s".
std::string SecondsText(std::uint64_t milliseconds);

// The wave files of this computer. A file of another one is not looked at, since that would already
// offer it this account's credentials; in its place stands one that sounds for no time.
class LocalWaves final : public RiffFiles {
 public:
  // The files must outlive the object.
  explicit LocalWaves(RiffFiles& files) : files_(files) {}

  std::unique_ptr<RiffFile> Open(const std::string& path) override;

 private:
  RiffFiles& files_;
};

}  // namespace brantel::host
