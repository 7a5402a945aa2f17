// Files of settings that the host imports: whatever a file holds, it is refused as wrong usage or
// gives names and texts, and what of those are settings is read again from what export makes of it.
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/fuzz_input.h"
#include "host/outcome/command_failure.h"
#include "host/settings/settings_change.h"

namespace brantel::host {
namespace {

// A code page that holds every text as it is.
std::optional<std::string> Encode(std::string_view text) {
  return std::string(text);
}

std::string Decode(std::string_view bytes) {
  return std::string(bytes);
}

class NoSettings final : public SettingsStore {
 public:
  std::unique_ptr<SettingsKey> Open(const std::string&, SettingsAccess) override { return nullptr; }
};

std::vector<FieldValue> ReadAgain(const ClassDescription& notifier_class,
                                  const std::vector<SettingChange>& changes) {
  NoSettings nothing;
  const auto settings = Changed(ReadProfile(nothing, notifier_class, 0), changes);
  return ReadExport(notifier_class, ExportText(notifier_class, settings, Decode));
}

void CheckChanges(const ClassDescription& notifier_class,
                  const std::vector<SettingChange>& changes) {
  std::size_t stored = 0;
  const auto again = ReadAgain(notifier_class, changes);
  for (const SettingChange& change : changes) {
    if (change.text.empty()) continue;
    ++stored;
    bool is_there = false;
    for (const FieldValue& value : again)
      is_there = is_there || (value.field == change.guide->name && value.value == change.text);
    Require(is_there);
  }
  Require(again.size() == stored);
}

void CheckImport(const ClassDescription& notifier_class, std::string_view text) {
  try {
    const auto values = ReadExport(notifier_class, text);
    CheckChanges(notifier_class, SettingChanges(notifier_class, values, Encode));
  } catch (const CommandFailure& failure) {
    Require(failure.exit_code() == ExitCode::kWrongUsage);
  }
}

}  // namespace
}  // namespace brantel::host

// The file that is imported for the Pager.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace brantel;
  const std::string bytes(data, data + size);
  host::CheckImport(host::FindClassWithSettings("Pager", 0), bytes);
  return 0;
}
