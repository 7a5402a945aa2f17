// The log of an alert, whatever far ends have said in it: what is told of it fits into a line, the
// log may be cut anywhere, and whether the alert counts as delivered is the result's word alone.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "fuzz/fuzz_input.h"
#include "host/course/alert_course.h"
#include "host/text/control_characters.h"
#include "module/class_descriptions.h"
#include "pager/pager_description.h"

namespace brantel::host {
namespace {

constexpr std::array<std::string_view, 5> kProtocols = {"TAP", "SMS-TAP", "UCP-SMS", "NTT", ""};
constexpr std::array<std::int32_t, 5> kResults = {0, 2, static_cast<std::int32_t>(0x80004005),
                                                  static_cast<std::int32_t>(0x80140001),
                                                  static_cast<std::int32_t>(0x8007000E)};
constexpr std::array kEnds = {AttemptEnd::kReturned, AttemptEnd::kTimedOut,
                              AttemptEnd::kInterrupted, AttemptEnd::kProcessDied};

// Far more than the words of the table and what is quoted in them.
constexpr std::size_t kLongestWords = 2000;

void CheckWords(const std::string& words) {
  Require(words.size() < kLongestWords);
  Require(ShowControlCharacters(words) == words);
}

std::string TextOf(const Verdict& verdict) {
  return verdict.words + "\n" + verdict.advice;
}

// What the host has been told up to here.
void CheckVerdicts(const AlertCourse& course) {
  for (const AttemptEnd end : kEnds) {
    for (const std::int32_t result : kResults) {
      const Verdict verdict = course.Finish(end, result);
      Require(verdict.delivered == (end == AttemptEnd::kReturned && result >= 0));
      Require(!verdict.words.empty());
      CheckWords(verdict.words);
      CheckWords(verdict.advice);
    }
  }
}

std::optional<Instance> MakeInstance(const ClassDescription& notifier_class, FuzzInput& input) {
  const std::uint8_t shape = input.Byte();
  if (shape == 0) return std::nullopt;
  Instance instance(notifier_class.instances.fields.size());
  instance.set_text(0, std::string(input.Field()));
  if (&notifier_class == &kPager) {
    instance.set_text(pager_field::kProtocol,
                      std::string(kProtocols.at(shape % kProtocols.size())));
  }
  return instance;
}

}  // namespace
}  // namespace brantel::host

// A byte for the class, one for how the instance is, its first field, a byte for where the log is
// cut, and the log.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace brantel;
  using namespace brantel::host;
  const std::string bytes(data, data + size);
  FuzzInput input(bytes);
  const auto classes = ClassDescriptions();
  const ClassDescription& notifier_class = *classes[input.Byte() % classes.size()];
  const std::optional<Instance> instance = MakeInstance(notifier_class, input);
  const std::size_t place = input.Byte();
  const std::string_view log = input.Take(size);

  AlertCourse whole(notifier_class.instances.class_name, instance);
  const auto phase = whole.Take(log);
  if (phase) CheckWords(*phase);
  CheckVerdicts(whole);

  AlertCourse pieces(notifier_class.instances.class_name, instance);
  pieces.Take(log.substr(0, place));
  CheckVerdicts(pieces);
  pieces.Take(log.substr(std::min(place, log.size())));
  for (const AttemptEnd end : kEnds) {
    for (const std::int32_t result : kResults) {
      Require(TextOf(whole.Finish(end, result)) == TextOf(pieces.Finish(end, result)));
    }
  }
  return 0;
}
