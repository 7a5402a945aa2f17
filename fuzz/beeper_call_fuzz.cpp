// Whole alerts by Beeper, with arbitrary instances, settings and texts of the host, through a modem
// that sends arbitrary bytes: each ends and frees the port, none succeeds unless the modem has said
// OK and was given the dial command, and no text of the host brings a control character into that.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "beeper/beeper.h"
#include "beeper/beeper_description.h"
#include "fuzz/fuzz_input.h"
#include "fuzz/fuzzed_modem.h"
#include "instance/instance_codec.h"
#include "tests/unit/instance/fake_instance_files.h"
#include "tests/unit/system/fake_settings_store.h"
#include "text/text_end.h"

namespace brantel {
namespace {

class Host final : public NotifierHost {
 public:
  explicit Host(FuzzInput& input)
      : trigger_word_(input.Byte()), answers_(input.Byte()), text_(input.Field()) {}

  Result ExpandMessage(std::string& text, EmptyText) override {
    if ((answers_ & 1U) != 0) return kFail;
    text = text_;
    return kOk;
  }
  void LogMessage(std::string_view) override {}
  void LogMessage(std::u16string_view) override {}
  Result GetAlertTrigger(std::uint32_t& word) override {
    if ((answers_ & 2U) != 0) return kFail;
    word = trigger_word_;
    return kOk;
  }

 private:
  std::uint32_t trigger_word_;
  unsigned answers_;
  std::string text_;
};

Instance MakeInstance(FuzzInput& input) {
  Instance instance(beeper_field::kFieldCount);
  for (std::size_t i = 0; i < beeper_field::kSettingsProfile; ++i) {
    instance.set_text(i, std::string(input.Field()));
  }
  return instance;
}

// Settings that are left empty have their defaults.
FakeSettingsStore::Values MakeSettings(FuzzInput& input) {
  FakeSettingsStore::Values values;
  for (const SettingRow& row : kBeeper.settings.rows) {
    values[std::string(row.name)] = {SettingType::kText, std::string(input.Field())};
  }
  return values;
}

// Every key has the same values.
class Settings final : public SettingsStore {
 public:
  explicit Settings(const FakeSettingsStore::Values& values) : values_(values) {}

  std::unique_ptr<SettingsKey> Open(const std::string& path, SettingsAccess access) override {
    store_.keys[path] = values_;
    return store_.Open(path, access);
  }

 private:
  const FakeSettingsStore::Values& values_;
  FakeSettingsStore store_;
};

// As a modem sees them on a line of seven bits.
std::size_t CountControls(std::string_view text) {
  return static_cast<std::size_t>(std::ranges::count_if(text, [](char c) {
    const auto seven_bits = static_cast<std::uint8_t>(c) & 0x7FU;
    return seven_bits < 0x20 || seven_bits == 0x7F;
  }));
}

// Those that the operator has put into what the dial command is made of.
std::size_t OperatorsControls(const Instance& instance, const FakeSettingsStore::Values& values) {
  std::size_t count = CountControls(UpToNul(values.at("Settings_DialString").data));
  for (const std::size_t field : {beeper_field::kBeeperNumber, beeper_field::kUpCode,
                                  beeper_field::kDownCode, beeper_field::kTrapCode}) {
    count += CountControls(instance.text(field));
  }
  return count;
}

// What is written before the modem hangs up; nothing where it does not.
const std::string* DialCommand(const std::vector<FuzzedPorts::Transfer>& transfers) {
  const auto hang_up = std::ranges::find(transfers, "+++", &FuzzedPorts::Transfer::bytes);
  if (hang_up == transfers.end() || hang_up == transfers.begin()) return nullptr;
  const auto before = std::prev(hang_up);
  return before->is_written ? &before->bytes : nullptr;
}

bool SaidOk(const std::vector<FuzzedPorts::Transfer>& transfers) {
  return std::ranges::any_of(transfers, [](const FuzzedPorts::Transfer& transfer) {
    return !transfer.is_written && UpToNul(transfer.bytes).find("OK") != std::string_view::npos;
  });
}

}  // namespace
}  // namespace brantel

// A byte for the modem, two for the host and its text, the instance's texts, the settings, and what
// comes over the line.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace brantel;
  const std::string bytes(data, data + size);
  FuzzInput input(bytes);
  const bool modem_works = input.Byte() % 2 == 1;
  Host host(input);
  const Instance instance = MakeInstance(input);
  const FakeSettingsStore::Values values = MakeSettings(input);
  FakeInstanceFiles files;
  files.files["C:\\a"] = EncodeInstance(kBeeper.instances, instance);
  Settings settings(values);
  FuzzedPorts ports(input, modem_works);
  ClockWithoutTime clock;
  Beeper beeper(files, settings, ports, clock);

  const bool succeeded = beeper.Send({u"C:\\a", "C:\\a"}, &host) == kOk;
  const int opened = ports.opened();
  Require(opened <= 1 && ports.closed() == opened);
  if (opened == 0) return 0;
  if (succeeded) {
    const std::string* const command = DialCommand(ports.transfers());
    Require(SaidOk(ports.transfers()) && command != nullptr && command->ends_with('\r'));
    Require(CountControls(*command) <= OperatorsControls(instance, values) + 1);
  }
  // The next alert finds the port free.
  beeper.Send({u"C:\\a", "C:\\a"}, &host);
  Require(ports.opened() == 2 && ports.closed() == 2);
  return 0;
}
