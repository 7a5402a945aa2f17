#pragma once

#include <string_view>

namespace brantel {

// Whether a word stands anywhere in what a modem or the far end answered.
inline bool Contains(std::string_view response, std::string_view word) {
  return response.find(word) != std::string_view::npos;
}

}  // namespace brantel
