#pragma once

#include <string>
#include <string_view>

#include "host/system/rotated_file_win32.h"
#include "host/text/line_assembler.h"
#include "host/text/text_sink.h"

namespace brantel::host {

// A copy of what is told, each line with its time before it and without colours.
class LogFile final : public TextSink {
 public:
  // What keeps the file from being written goes to `errors`, once. They must outlive the object.
  LogFile(std::wstring path, const TextSink& errors);
  LogFile(const LogFile&) = delete;
  LogFile& operator=(const LogFile&) = delete;
  ~LogFile() override;

  void Write(std::string_view text) const override;

 private:
  void Complain(const std::string& error) const;

  const RotatedFile file_;
  const TextSink& errors_;
  mutable LineAssembler lines_;
  mutable bool has_complained_ = false;
};

}  // namespace brantel::host
