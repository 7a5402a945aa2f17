#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "tests/module/expected_classes.h"

namespace brantel {

// Pieces of instance files. A class's begin with 16 bytes of its own; LaunchProgram's with these.
inline std::string MagicBytes(const ExpectedClass& expected) {
  const GUID magic = ToGuid(expected.file_magic);
  return {reinterpret_cast<const char*>(&magic), sizeof magic};
}
inline constexpr std::string_view kLaunchProgramMagic(
    "\x6C\x7E\xEC\xEC\x18\x8E\xA2\x4C\xC5\x6F\x53\x34\xC2\xBD\x79\x45", 16);

inline std::string LengthBytes(std::uint32_t length) {
  std::string bytes;
  for (unsigned shift = 0; shift < 32; shift += 8) {
    bytes.push_back(static_cast<char>(static_cast<std::uint8_t>(length >> shift)));
  }
  return bytes;
}

// A text field: its length with the NUL, its bytes, the NUL.
inline std::string TextField(std::string_view text) {
  return LengthBytes(static_cast<std::uint32_t>(text.size() + 1)) + std::string(text) + '\0';
}

// The three fields of a LaunchProgram instance.
struct LaunchProgramTexts {
  std::string program_filename;
  std::string working_path;
  std::string program_arguments;
};

inline std::string InstanceBytes(const LaunchProgramTexts& texts) {
  return std::string(kLaunchProgramMagic) + TextField(texts.program_filename) +
         TextField(texts.working_path) + TextField(texts.program_arguments);
}

}  // namespace brantel
