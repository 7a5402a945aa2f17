#include "host/instance_file.h"

#include <cstddef>
#include <utility>

#include "framework/instance_name.h"
#include "host/command_failure.h"
#include "module/class_layouts.h"

namespace brantel::host {
namespace {

std::string FlawText(const InstanceLayout& layout, const FlawedField& flawed) {
  const std::string field = "field '" + std::string(layout.fields[flawed.field].name) + "'";
  switch (flawed.flaw) {
    case FileFlaw::kTextTooLong:
      return "its " + field + " is longer than " + std::to_string(LongestText(layout)) + " bytes";
    case FileFlaw::kEndsEarly:
      return "it ends before the end of its " + field;
  }
  return {};
}

std::string FindFault(const InstanceLayout& layout, std::string_view content, bool is_readable) {
  const auto flaw = FindFlaw(layout, content);
  if (!flaw) return {};
  return (is_readable ? "is damaged: " : "is refused by " + std::string(layout.class_name) + ": ") +
         FlawText(layout, *flaw);
}

Instance DecodeTexts(const Instance& stored, const InstanceLayout& layout, CodePageDecoder decode) {
  Instance decoded = stored;
  for (std::size_t i = 0; i < layout.fields.size(); ++i) {
    decoded.set_text(i, decode(stored.text(i)));
  }
  return decoded;
}

}  // namespace

InstanceFile ExamineInstanceFile(std::string name, std::string_view content,
                                 CodePageDecoder decode) {
  const InstanceLayout* const layout = FindLayoutOfFile(content);
  if (layout == nullptr) return {std::move(name), nullptr, std::nullopt, "is no instance"};
  auto instance = DecodeInstance(*layout, content);
  if (instance) instance = DecodeTexts(*instance, *layout, decode);
  return {std::move(name), layout, instance, FindFault(*layout, content, instance.has_value())};
}

void CheckInstanceFileName(const std::string& file) {
  const std::string name = file.substr(file.find_last_of("\\/") + 1);
  // In UTF-8 no byte of a longer character looks like another one.
  constexpr auto kIsLeadByte = [](char) { return false; };
  if (IsValidInstanceName(name, kIsLeadByte)) return;
  throw CommandFailure(ExitCode::kWrongUsage,
                       "FILE: '" + name + "' cannot be the name of an instance");
}

}  // namespace brantel::host
