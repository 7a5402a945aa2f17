#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/course/alert_course.h"

namespace brantel::host {

// What AlertCourse tells of one alert.
struct ToldCourse {
  std::vector<std::string> phases;
  Verdict verdict;
};

ToldCourse Tell(AlertCourse course, const std::vector<std::string>& log, AttemptEnd end,
                std::optional<std::int32_t> result);

// A text of the log as the host gets it on a machine whose code page is ISO 8859-1.
std::string InUtf8(std::string_view text);

// What is told as lines of text.
std::string TextOf(const ToldCourse& told);
std::string TextOf(const Verdict& verdict);

}  // namespace brantel::host
