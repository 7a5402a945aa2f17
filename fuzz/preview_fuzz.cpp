// What an alert would send, shown for whatever an instance file holds: it comes to an end, writes
// nothing, no control character of it reaches the terminal, its JSON form can be read, and
// passwords are not in it.
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/fuzz_input.h"
#include "fuzz/latin1_text.h"
#include "host/instances/field_guide.h"
#include "host/preview/preview_report.h"
#include "host/report/json_text.h"
#include "module/class_descriptions.h"
#include "tests/unit/host/preview/previewed_machine.h"
#include "tests/unit/host/report/kept_text.h"
#include "text/string_table.h"

namespace brantel::host {
namespace {

std::string DecodeUtf16(std::u16string_view text) {
  return DecodeLatin1(std::string(text.begin(), text.end()));
}

std::string Written(const Preview& preview, ReportForm form) {
  const KeptText kept;
  WritePreview(ReportWriter(kept, form, false), preview);
  return kept.text();
}

void CheckJson(std::string_view lines) {
  while (!lines.empty()) {
    const std::string_view line = lines.substr(0, lines.find('\n'));
    const auto record = ParseJson(line);
    Require(record && record->Particulars().Find("part") != nullptr);
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
  machine.variables.Assign("C=" + DecodeLatin1(input.Field()));
  machine.variables.Assign("n=" + DecodeLatin1(input.Field()));
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

// Whether its instances hold a password: what others send has none to be hidden.
bool HasPassword(const ClassDescription& notifier_class) {
  for (std::size_t field = 0; field < notifier_class.instances.fields.size(); ++field)
    if (GuideOf(notifier_class, field).secrecy == Secrecy::kSecret) return true;
  return false;
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
  machine.texts = {DecodeLatin1, EncodeLatin1, host::DecodeUtf16};
  host::SetUp(machine, input);
  machine.files.files["alert"] += std::string(input.Take(size));

  host::Preview preview = machine.Look();
  host::CheckMachine(machine);
  RequireFitForTerminal(host::Written(preview, host::ReportForm::kText));
  RequireFitForTerminal(host::LogWords(preview));
  host::CheckJson(host::Written(preview, host::ReportForm::kJson));

  if (!host::HasPassword(*machine.notifier_class)) return 0;
  // No text that is sent has such a word by itself.
  host::HideSecrets(preview, {"geheim"}, machine.texts);
  Require(host::Written(preview, host::ReportForm::kText).find("geheim") == std::string::npos);
  return 0;
}
