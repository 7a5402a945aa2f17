// What an alert would send, shown for whatever an instance file holds: it comes to an end, writes
// nothing, no control character of it reaches the terminal, its JSON form can be read, and
// passwords are not in it.
#include <cstddef>
#include <cstdint>
#include <nlohmann/json.hpp>
#include <string>
#include <string_view>

#include "fuzz/fuzz_input.h"
#include "host/preview/preview_report.h"
#include "module/class_descriptions.h"
#include "tests/unit/host/preview/previewed_machine.h"
#include "tests/unit/host/report/kept_text.h"
#include "text/string_table.h"

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

// Of what Decode has made, and of the variables, which are such a text too.
std::string Encode(std::string_view text) {
  std::string encoded;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<std::uint8_t>(text[i]);
    const bool is_whole = byte < 0x80 || i + 1 == text.size();
    encoded += is_whole ? text[i] : static_cast<char>(((byte & 3U) << 6U) | (text[++i] & 0x3F));
  }
  return encoded;
}

std::string DecodeUtf16(std::u16string_view text) {
  return Decode(std::string(text.begin(), text.end()));
}

void CheckForTerminal(std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<std::uint8_t>(text[i]);
    Require(byte == '\n' || (byte >= 0x20 && byte != 0x7F));
    // The control characters behind U+007F.
    if (byte == 0xC2) Require(static_cast<std::uint8_t>(text.at(++i)) >= 0xA0);
  }
}

std::string Written(const Preview& preview, ReportForm form) {
  const KeptText kept;
  WritePreview(ReportWriter(kept, form, false), preview);
  return kept.text();
}

void CheckJson(std::string_view lines) {
  while (!lines.empty()) {
    const std::string_view line = lines.substr(0, lines.find('\n'));
    Require(nlohmann::json::parse(line).contains("part"));
    lines.remove_prefix(line.size() + 1);
  }
}

void CheckMachine(const PreviewedMachine& machine) {
  for (const std::string& call : machine.files.calls)
    Require(call == "read alert");
  for (const std::string& call : machine.settings.calls)
    Require(!call.starts_with("write "));
}

// Lets the input say what the computer has, beside the instance.
void SetUp(PreviewedMachine& machine, FuzzInput& input) {
  const auto classes = ClassDescriptions();
  machine.notifier_class = classes[input.Byte() % classes.size()];
  machine.event = AlertEvent{input.Byte()};
  machine.variables.Assign("C=" + Decode(input.Field()));
  machine.variables.Assign("n=" + Decode(input.Field()));
  machine.mail_environment.code_page = input.Byte() % 2 == 0 ? 1252 : 932;
  const SettingsDescription& settings = machine.notifier_class->settings;
  for (const SettingRow& row : settings.rows) {
    machine.settings.keys[LoadText(settings.key_text_id)][std::string(row.name)] = {
        SettingType::kText, std::string(input.Field())};
  }
  machine.waves.files["a.wav"] = WaveBytes("abcdefgh");
  const auto magic = GuidBytes(machine.notifier_class->instances.magic);
  machine.files.files["alert"] = std::string(magic.begin(), magic.end());
}

}  // namespace
}  // namespace brantel::host

// A byte each for class and event, two variables, a byte for the code page of mails, the settings
// of the class, and what the instance has behind its magic.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace brantel;
  const std::string bytes(data, data + size);
  FuzzInput input(bytes);
  host::PreviewedMachine machine;
  machine.texts = {host::Decode, host::Encode, host::DecodeUtf16};
  host::SetUp(machine, input);
  machine.files.files["alert"] += std::string(input.Take(size));

  host::Preview preview = machine.Look();
  host::CheckMachine(machine);
  host::CheckForTerminal(host::Written(preview, host::ReportForm::kText));
  host::CheckForTerminal(host::LogWords(preview));
  host::CheckJson(host::Written(preview, host::ReportForm::kJson));

  // No text that is sent has such a word by itself.
  host::HideSecrets(preview, {"geheim"}, machine.texts);
  Require(host::Written(preview, host::ReportForm::kText).find("geheim") == std::string::npos);
  return 0;
}
