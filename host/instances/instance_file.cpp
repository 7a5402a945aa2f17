#include "host/instances/instance_file.h"

#include <cstddef>
#include <utility>

#include "host/outcome/command_failure.h"
#include "instance/instance_name.h"
#include "module/class_descriptions.h"

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

std::string FaultText(const InstanceLayout& layout, const FlawedField& flaw, bool is_readable) {
  return (is_readable ? "is damaged: " : "is refused by " + std::string(layout.class_name) + ": ") +
         FlawText(layout, flaw);
}

Instance DecodeTexts(const Instance& stored, const InstanceLayout& layout, CodePageDecoder decode) {
  Instance decoded = stored;
  for (std::size_t i = 0; i < layout.fields.size(); ++i) {
    decoded.set_text(i, decode(stored.text(i)));
  }
  return decoded;
}

}  // namespace

InstanceFile ExamineInstanceFile(std::string name, ByteSource& content, CodePageDecoder decode) {
  InstanceReader reader(content);
  const ClassDescription* const notifier_class = FindClassOfFile(reader.magic());
  if (notifier_class == nullptr) return {.name = std::move(name), .fault = "is no instance"};
  const InstanceLayout* const layout = &notifier_class->instances;
  auto stored = reader.Read(*layout);
  const auto flaw = reader.flaw();
  std::string fault = flaw ? FaultText(*layout, *flaw, stored.has_value()) : "";
  std::optional<Instance> instance;
  if (stored) instance = DecodeTexts(*stored, *layout, decode);
  return {std::move(name), layout, std::move(instance), std::move(stored), std::move(fault)};
}

void CheckInstanceFileName(const std::string& file, Utf16Decoder decode) {
  const std::string name = file.substr(file.find_last_of("\\/") + 1);
  if (IsValidInstanceName(decode(name))) return;
  throw CommandFailure(ExitCode::kWrongUsage,
                       "FILE: '" + name + "' cannot be the name of an instance");
}

}  // namespace brantel::host
