#include "host/system/log_file_win32.h"

#include <utility>

#include "host/report/report_writer.h"
#include "host/system/present_time_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {

LogFile::LogFile(std::wstring path, const TextSink& errors)
    : file_(std::move(path), RotatedFile::Durability::kProcess), errors_(errors) {}

LogFile::~LogFile() {
  if (lines_.has_open_line()) Write("\n");
}

void LogFile::Write(std::string_view text) const {
  lines_.Take(text);
  while (const auto line = lines_.NextLine()) {
    const auto error = file_.Append(TimeText(PresentTime()) + " " + WithoutColours(*line) + "\n");
    if (error) Complain(*error);
  }
}

// That it cannot be written is no reason to hold an alert back.
void LogFile::Complain(const std::string& error) const {
  if (std::exchange(has_complained_, true)) return;
  errors_.Write("notifyhost: warning: the log file " + ToUtf8(file_.path()) +
                " cannot be written: " + error + "\n");
}

}  // namespace brantel::host
