#pragma once

#include <string_view>

namespace brantel::host {

// Takes the text of a report (UTF-8), piece by piece.
class TextSink {
 public:
  virtual ~TextSink() = default;

  virtual void Write(std::string_view text) const = 0;
};

}  // namespace brantel::host
