#pragma once

#include <windows.h>

#include <string_view>

namespace brantel::host {

// One of the process's standard streams. Text is UTF-8 with LF line ends and is out when Write
// returns, in a console as well as in a file or a pipe.
class OutputStream {
 public:
  // STD_OUTPUT_HANDLE or STD_ERROR_HANDLE.
  explicit OutputStream(DWORD standard_stream) noexcept;

  // That nobody reads any more is no reason to stop an alert: a failure to write is ignored.
  void Write(std::string_view text) const;

 private:
  HANDLE handle_;
  bool is_console_ = false;
};

}  // namespace brantel::host
