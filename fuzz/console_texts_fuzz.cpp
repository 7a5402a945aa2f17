// Texts that the web console reads and writes: what is encoded is decoded to the same, forms are
// read without an end of memory, and an escaped text has no mark of HTML.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/fuzz_input.h"
#include "host/console/console_events.h"
#include "host/console/form_text.h"
#include "host/console/module_form.h"
#include "host/console/page_template.h"
#include "host/console/password_record.h"
#include "module/class_descriptions.h"
#include "web/form_fields.h"

namespace brantel::host {
namespace {

void CheckEncoding(std::string_view text) {
  const std::string encoded = EncodePercents(text);
  Require(encoded.find_first_of("/\\?#&=+<>\"' \r\n") == std::string::npos);
  const auto decoded = DecodePercents(encoded);
  Require(!decoded || *decoded == text);
}

void CheckTarget(std::string_view text) {
  const auto target = ParseTarget(text);
  if (!target) return;
  for (const std::string& segment : target->segments) {
    Require(!segment.empty() && segment != "." && segment != ".." &&
            segment.find_first_of("/\\:") == std::string::npos &&
            segment.find('\0') == std::string::npos);
  }
}

void CheckEscaping(std::string_view text) {
  const std::string escaped = EscapeHtml(text);
  Require(escaped.find_first_of("<>\"'") == std::string::npos);
  PageValues values;
  values.Set("text", text);
  const auto no_parts = [](std::string_view) { return std::string_view(); };
  Require(FillTemplate("{{text}}", values, no_parts) == escaped);
}

// What is handed to the module is read by it as it was typed.
void CheckModuleForm(std::string_view text) {
  const auto posted = FormValues::Parse(text);
  if (!posted) return;
  for (const ClassDescription* const notifier_class : ClassDescriptions()) {
    if (!notifier_class->web_form) continue;
    const auto form = FormForModule(*notifier_class, *posted);
    if (!form) continue;
    for (const InstanceField& field : notifier_class->instances.fields) {
      if (field.form.input == FormInput::kNone) continue;
      const bool has_lines = field.form.input == FormInput::kMultiLine;
      Require(FormField(*form, field.form.name,
                        has_lines ? ValueEnd::kNothing : ValueEnd::kLineBreak) ==
              posted->Get(field.form.name));
    }
  }
}

// No text ends its message or begins another field of it.
void CheckEvent(std::string_view text) {
  const std::string message = EventMessage("log", text);
  Require(message.find("\n\n") == message.size() - 2);
  for (std::size_t at = message.find('\n'); at + 2 < message.size();
       at = message.find('\n', at + 1))
    Require(std::string_view(message).substr(at + 1).starts_with("data: "));
}

}  // namespace
}  // namespace brantel::host

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace brantel::host;
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  CheckEncoding(text);
  CheckTarget(text);
  CheckEscaping(text);
  CheckModuleForm(text);
  CheckEvent(text);
  const auto record = PasswordRecord::Parse(text);
  if (record)
    brantel::Require(text.starts_with(record->Text().substr(0, record->Text().size() - 1)));
  return 0;
}
