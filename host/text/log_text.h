#pragma once

#include <string>
#include <string_view>

namespace brantel::host {

// Makes the texts of one alert's log fit for a terminal. The log is one stream: line breaks are
// part of the texts, so a line may come in several of them and one text may hold several lines.
class LogText {
 public:
  // What to print for the next text of the log (UTF-8). A line ends at LF, at CR LF, also when the
  // two come in separate texts, and at a CR alone. Every other control character is shown by its
  // number.
  std::string Render(std::string_view text);

  // True unless the text so far ends within a line.
  [[nodiscard]] bool at_line_start() const { return at_line_start_; }

 private:
  void AppendLineEnd(std::string& rendered);

  bool at_line_start_ = true;
  bool after_carriage_return_ = false;
};

}  // namespace brantel::host
