#pragma once

#include <numeric>
#include <string_view>

namespace brantel::sim {

// What checksums are made of: the sum of all bytes, each of which counts 0 to 255.
inline unsigned ByteSum(std::string_view bytes) {
  return std::accumulate(bytes.begin(), bytes.end(), 0U,
                         [](unsigned sum, char c) { return sum + static_cast<unsigned char>(c); });
}

}  // namespace brantel::sim
