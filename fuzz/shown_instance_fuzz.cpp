// Instance files as the host shows them: whatever a file holds, no control character of it reaches
// the terminal, its JSON form can be read, and an instance made of what that says is the one that
// the file held.
#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/fuzz_input.h"
#include "host/instances/class_fields.h"
#include "host/instances/instance_file.h"
#include "host/instances/instance_text.h"
#include "host/outcome/command_failure.h"
#include "module/class_descriptions.h"

namespace brantel::host {
namespace {

// Code page 28591 (Latin-1), in which every byte is a character.
std::string Decode(std::string_view text) {
  std::string decoded;
  for (const char c : text) {
    const auto byte = static_cast<std::uint8_t>(c);
    if (byte < 0x80) {
      decoded += c;
    } else {
      decoded += static_cast<char>(0xC0U | (byte >> 6U));
      decoded += static_cast<char>(0x80U | (byte & 0x3FU));
    }
  }
  return decoded;
}

std::optional<std::string> Encode(std::string_view text) {
  std::string encoded;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<std::uint8_t>(text[i]);
    if (byte < 0x80) {
      encoded += text[i];
    } else {
      const auto next = static_cast<std::uint8_t>(text.at(++i));
      encoded += static_cast<char>(((byte & 3U) << 6U) | (next & 0x3FU));
    }
  }
  return encoded;
}

std::u16string DecodeToUtf16(std::string_view text) {
  return {text.begin(), text.end()};
}

void CheckForTerminal(std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<std::uint8_t>(text[i]);
    Require(byte == '\n' || (byte >= 0x20 && byte != 0x7F));
    // The control characters behind U+007F.
    if (byte == 0xC2) Require(static_cast<std::uint8_t>(text.at(++i)) >= 0xA0);
  }
}

std::vector<FieldValue> ValuesOf(const nlohmann::json& fields) {
  std::vector<FieldValue> values;
  for (const auto& [name, value] : fields.items()) {
    const std::string text =
        value.is_string() ? value.get<std::string>() : std::to_string(value.get<int>());
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
  const auto object = nlohmann::json::parse(JsonLine(InstanceRecord(file)));
  Require(object.at("class") == file.layout->class_name && object.at("name") == file.name);
  const auto stored = DecodeInstance(*file.layout, content);
  Require(stored.has_value());
  if (!CanBeMadeAgain(*file.layout, *stored)) return;
  Require(MakeInstance(*file.layout, ValuesOf(object.at("fields")), Encode) == *stored);
}

class KeptText final : public TextSink {
 public:
  void Write(std::string_view text) const override { text_ += text; }
  [[nodiscard]] const std::string& text() const { return text_; }

 private:
  mutable std::string text_;
};

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
      host::ExamineInstanceFile(host::Decode(name), source, host::Decode);
  Require(file.instance.has_value() || !file.fault.empty());
  host::CheckForTerminal(host::TableOf(file));
  if (!file.instance) return 0;
  host::CheckForTerminal(host::InstanceText(file));
  host::CheckJson(file, content);
  return 0;
}
