#include "tests/unit/host/course/told_course.h"

#include <utility>

namespace brantel::host {

ToldCourse Tell(AlertCourse course, const std::vector<std::string>& log, AttemptEnd end,
                std::optional<std::int32_t> result) {
  ToldCourse told;
  for (const std::string& text : log) {
    if (auto phase = course.Take(text)) told.phases.push_back(std::move(*phase));
  }
  told.verdict = course.Finish(end, result);
  return told;
}

std::string InUtf8(std::string_view text) {
  std::string utf8;
  for (const char c : text) {
    const auto number = static_cast<unsigned char>(c);
    if (number < 0x80) {
      utf8 += c;
    } else {
      utf8 += static_cast<char>(0xC0U | (number >> 6U));
      utf8 += static_cast<char>(0x80U | (number & 0x3FU));
    }
  }
  return utf8;
}

std::string TextOf(const Verdict& verdict) {
  std::string text = (verdict.delivered ? "0  " : "1  ") + verdict.words + "\n";
  if (!verdict.advice.empty()) text += "   " + verdict.advice + "\n";
  return text;
}

std::string TextOf(const ToldCourse& told) {
  std::string text;
  for (const std::string& phase : told.phases) {
    text += "   > " + phase + "\n";
  }
  return text + TextOf(told.verdict);
}

}  // namespace brantel::host
