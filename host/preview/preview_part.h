#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace brantel::host {

// One thing that an alert sends, shows, plays or starts.
struct PreviewPart {
  std::string what;     // as "dial command"
  std::string words{};  // what a person should know of it (UTF-8), if anything
  std::string bytes{};  // as they go out; none of a part that is words alone
  std::string text{};   // the bytes as a person reads them (UTF-8)
  bool hides_secret = false;
};

// In the order in which they go out.
using PreviewParts = std::vector<PreviewPart>;

// Adds to what is said of a part.
inline void AddWords(PreviewPart& part, std::string_view words) {
  if (words.empty()) return;
  if (!part.words.empty()) part.words += "; ";
  part.words += words;
}

}  // namespace brantel::host
