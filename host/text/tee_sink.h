#pragma once

#include "host/text/text_sink.h"

namespace brantel::host {

// Writes to one sink and, where there is one, also to another. Both must outlive the object.
class TeeSink final : public TextSink {
 public:
  TeeSink(const TextSink& first, const TextSink* second) : first_(first), second_(second) {}

  void Write(std::string_view text) const override {
    first_.Write(text);
    if (second_ != nullptr) second_->Write(text);
  }

 private:
  const TextSink& first_;
  const TextSink* second_;
};

}  // namespace brantel::host
