#include "sim/dial_string.h"

#include "sim/digits.h"

namespace brantel::sim {
namespace {

bool IsTone(char c) {
  return IsDigit(c) || c == '*' || c == '#';
}

bool IsPause(char c) {
  return c == ',' || c == 'W' || c == 'w';
}

}  // namespace

std::vector<DialStep> ParseDialString(std::string_view text) {
  std::vector<DialStep> steps;
  std::string number;
  bool called = false;
  const auto call = [&] {
    steps.push_back({DialStep::Kind::kCall, '\0', number});
    called = true;
  };
  for (const char c : text) {
    if (IsTone(c)) {
      steps.push_back({DialStep::Kind::kTone, c});
      if (!called) number += c;
    } else if (IsPause(c)) {
      if (!called && number.size() > 1) call();
      if (!called) number.clear();
      steps.push_back({DialStep::Kind::kPause});
    }
  }
  if (!called) call();
  return steps;
}

}  // namespace brantel::sim
