#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "host/course/alert_course.h"
#include "host/text/log_text.h"
#include "notifier/notifier_host.h"
#include "tests/unit/host/course/told_course.h"

namespace brantel::host {

// A host whose event is that an item went down, which has what it is told followed and written
// down: the lines of the log, and the phase that has begun with one behind it.
class FollowingHost final : public NotifierHost {
 public:
  explicit FollowingHost(AlertCourse course) : course_(std::move(course)) {}

  Result ExpandMessage(std::string& text, EmptyText) override {
    if (text == "%C") text = "17";
    return kOk;
  }

  void LogMessage(std::string_view bytes) override {
    const std::string text = InUtf8(bytes);
    written_ += lines_.Render(text);
    if (const auto phase = course_.Take(text)) phases_ += "   > " + *phase + "\n";
    if (lines_.at_line_start()) written_ += std::exchange(phases_, "");
  }
  void LogMessage(std::u16string_view text) override {
    LogMessage(std::string(text.begin(), text.end()));
  }

  Result GetAlertTrigger(std::uint32_t& word) override {
    word = 2;
    return kOk;
  }

  // That, and what has become of the alert.
  std::string Finish(AttemptEnd end, std::optional<Result> result) {
    if (!lines_.at_line_start()) written_ += "\n";
    return written_ + phases_ + TextOf(course_.Finish(end, result));
  }

 private:
  AlertCourse course_;
  LogText lines_;
  std::string written_;
  std::string phases_;  // that have begun in the line that is not at its end
};

}  // namespace brantel::host
