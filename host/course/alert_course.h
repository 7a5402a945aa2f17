#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "instance/instance_codec.h"

namespace brantel::host {

// How an attempt at an alert ended.
enum class AttemptEnd {
  kReturned,     // Send has returned
  kTimedOut,     // whoever waited for it gave up
  kInterrupted,  // by the person who started it
  kProcessDied,  // the process in which it ran ended by itself
};

// What became of an alert. Texts are UTF-8 without control characters, and begin with a small
// letter and end without a full stop.
struct Verdict {
  bool delivered = false;  // Send has returned, and not with a failure
  std::string words;       // "not delivered: the centre refused the log-in"
  std::string advice;      // "check the terminal password"; often empty
};

// Follows one alert by the texts that its notifier logs. It knows no more than these: a far end, or
// an event, whose words read like the module's own can change the words of phase and verdict, and
// never whether the alert counts as delivered.
class AlertCourse {
 public:
  // The class by its name in any letter case, and the instance if it could be read, with its texts
  // in UTF-8 (InstanceFile::instance). Sound without an instance is taken to end the sound that it
  // repeats. Passwords of the instance are not used.
  AlertCourse(std::string_view class_name, const std::optional<Instance>& instance);
  AlertCourse(AlertCourse&&) noexcept;
  AlertCourse& operator=(AlertCourse&&) noexcept;
  ~AlertCourse();

  // The next text of the log, as the notifier logged it (UTF-8). The log is one stream: where it is
  // cut into texts does not matter. Returns the phase in which the alert is now, if the text has
  // begun another one, in words that fit behind "while": "dialling 5550100", "logging in".
  std::optional<std::string> Take(std::string_view text);

  // `result` is what Send returned, where it did.
  [[nodiscard]] Verdict Finish(AttemptEnd end, std::optional<std::int32_t> result) const;

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace brantel::host
