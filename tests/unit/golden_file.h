#pragma once

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace brantel {

// The bytes of a file in tests/unit/golden, where expected texts stand that are too long for a
// test.
inline std::string GoldenFile(const std::string& name) {
  std::ifstream file(PROJECT_DIR "/tests/unit/golden/" + name, std::ios::binary);
  if (!file) throw std::runtime_error("cannot read tests/unit/golden/" + name);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace brantel
