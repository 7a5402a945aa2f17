// Instance files as the host shows them: whatever a file holds, no control character of it reaches
// the terminal, its JSON form can be read, and an instance made of what that says is the one that
// the file held.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/fuzz_input.h"
#include "fuzz/latin1_text.h"
#include "host/instances/class_fields.h"
#include "host/instances/instance_file.h"
#include "host/instances/instance_text.h"
#include "host/outcome/command_failure.h"
#include "host/report/json_text.h"
#include "module/class_descriptions.h"
#include "tests/unit/host/report/kept_text.h"

namespace brantel::host {
namespace {

std::optional<std::string> Encode(std::string_view text) {
  return EncodeLatin1(text);
}

std::u16string DecodeToUtf16(std::string_view text) {
  return {text.begin(), text.end()};
}

std::vector<FieldValue> ValuesOf(const Record& fields) {
  std::vector<FieldValue> values;
  for (const auto& [name, value] : fields.members()) {
    const auto* const kept = value.Get<std::string>();
    const std::string text = kept != nullptr ? *kept : std::to_string(value.Whole<int>());
    const auto parsed = FieldValue::Parse(std::string(name).append("=").append(text));
    Require(parsed && parsed->field == name && parsed->value == text);
    values.push_back(*parsed);
  }
  return values;
}

bool CanBeMadeAgain(const InstanceLayout& layout, const Instance& instance) {
  for (std::size_t i = 0; i < layout.fields.size(); ++i) {
    if (instance.text(i).size() > LongestText(layout)) return false;
  }
  return true;
}

void CheckJson(const InstanceFile& file, std::string_view content) {
  const auto json = ParseJson(JsonLine(InstanceRecord(file)));
  Require(json.has_value());
  const Record& record = json->Particulars();
  Require(record.At("class").Text() == file.layout->class_name);
  Require(record.At("name").Text() == file.name);
  const auto stored = DecodeInstance(*file.layout, content);
  Require(stored.has_value());
  if (!CanBeMadeAgain(*file.layout, *stored)) return;
  Require(MakeInstance(*file.layout, ValuesOf(record.At("fields").Particulars()), Encode) ==
          *stored);
}

std::string TableOf(const InstanceFile& file) {
  const KeptText kept;
  WriteInstanceTable(ReportWriter(kept, ReportForm::kText, false), {&file, 1});
  return kept.text();
}

void CheckName(const std::string& name) {
  try {
    CheckInstanceFileName(name, DecodeToUtf16);
  } catch (const CommandFailure& failure) {
    Require(failure.exit_code() == ExitCode::kWrongUsage);
  }
}

std::string Magic(std::uint8_t number) {
  const auto classes = ClassDescriptions();
  // The last number is for files that begin as they like.
  const std::size_t place = number % (classes.size() + 1);
  if (place == classes.size()) return {};
  const auto magic = GuidBytes(classes[place]->instances.magic);
  return {magic.begin(), magic.end()};
}

}  // namespace
}  // namespace brantel::host

// A byte for the class whose magic the file begins with, the file's name, and what is in it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace brantel;
  const std::string bytes(data, data + size);
  FuzzInput input(bytes);
  const std::string magic = host::Magic(input.Byte());
  const std::string name(input.Field());
  const std::string content = magic + std::string(input.Take(size));
  host::CheckName(name);

  MemorySource source(content);
  const host::InstanceFile file =
      host::ExamineInstanceFile(DecodeLatin1(name), source, DecodeLatin1);
  Require(file.instance.has_value() || !file.fault.empty());
  RequireFitForTerminal(host::TableOf(file));
  if (!file.instance) return 0;
  RequireFitForTerminal(host::InstanceText(file));
  host::CheckJson(file, content);
  return 0;
}
