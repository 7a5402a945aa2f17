#pragma once

#include <string>

namespace brantel::host {

// Tells from one look at a file to the next whether it has another text. What is not the same twice
// is still being written: half of a plan may be right as well, and would have the watch forget how
// it stands with the items of the other half.
class SettledText {
 public:
  explicit SettledText(const std::string& text) : taken_(text), seen_(text) {}

  // Whether the text has settled as another one than before, once for each.
  bool TakeIfChanged(const std::string& text);

 private:
  std::string taken_;
  std::string seen_;  // at the last look
};

}  // namespace brantel::host
