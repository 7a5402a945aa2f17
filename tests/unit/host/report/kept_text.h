#pragma once

#include <string>
#include <string_view>

#include "host/text/text_sink.h"

namespace brantel::host {

// Keeps what is written.
class KeptText final : public TextSink {
 public:
  void Write(std::string_view text) const override { text_ += text; }
  [[nodiscard]] const std::string& text() const { return text_; }

 private:
  mutable std::string text_;
};

}  // namespace brantel::host
