#pragma once

#include <windows.h>

#include <string_view>

#include "host/text/text_sink.h"

namespace brantel::host {

// One of the process's standard streams. Text is UTF-8 with LF line ends and is out when Write
// returns, in a console as well as in a file or a pipe.
class OutputStream final : public TextSink {
 public:
  // STD_OUTPUT_HANDLE or STD_ERROR_HANDLE.
  explicit OutputStream(DWORD standard_stream) noexcept;

  // That nobody reads any more is no reason to stop an alert: a failure to write is ignored.
  void Write(std::string_view text) const override;

  // Whether colours are wanted here: on a console that shows them, and not where the environment
  // variable NO_COLOR has a value.
  [[nodiscard]] bool TakesColours() const;

 private:
  HANDLE handle_;
  bool is_console_ = false;
};

}  // namespace brantel::host
