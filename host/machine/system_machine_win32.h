#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/checks/checked_system.h"
#include "system/registry_settings_win32.h"

namespace brantel::host {

// This computer.
class SystemMachine final : public CheckedSystem {
 public:
  // With the module file of --module (UTF-8), or without one. It must outlive the object.
  explicit SystemMachine(const std::optional<std::string>& module_file)
      : module_file_(module_file) {}

  [[nodiscard]] std::optional<std::string> ToCodePage(std::string_view text) const override;
  [[nodiscard]] std::string FromCodePage(std::string_view bytes) const override;
  [[nodiscard]] PathKind KindOf(const std::string& path) const override;
  [[nodiscard]] std::string FirstBytes(const std::string& path) const override;
  [[nodiscard]] bool FindsProgram(const std::string& name) const override;
  [[nodiscard]] SettingsStore& settings() const override { return settings_; }
  [[nodiscard]] bool HasPort(std::uint32_t number) const override;
  [[nodiscard]] bool HasSoundDevice() const override;
  [[nodiscard]] Registration RegistrationOf(const Guid& clsid) const override;
  [[nodiscard]] MessengerState Messenger() const override;
  [[nodiscard]] VoiceLineState VoiceLine() const override;
  std::string RelayGreeting(const std::string& address) override;
  std::optional<std::string> ModemAnswer(const LineSetup& setup) override;
  bool ProbeVoiceLine() override;

 private:
  const std::optional<std::string>& module_file_;
  struct AskedModem {
    LineSetup setup;
    std::optional<std::string> answer;
  };

  // Several rules ask one modem, and several instances.
  std::vector<AskedModem> asked_modems_;
  // Nothing is made where nothing is: who looks at a computer leaves it as it is.
  mutable RegistrySettings settings_{MissingKey::kLeftMissing};
};

}  // namespace brantel::host
