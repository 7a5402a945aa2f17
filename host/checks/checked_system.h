#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "host/settings/line_setup.h"
#include "system/settings_store.h"
#include "text/guid.h"

namespace brantel::host {

enum class PathKind { kNothing, kFile, kDirectory };

// How a class is registered for hosts such as this one.
struct Registration {
  std::optional<std::string> module_file{};  // what it is registered for, if it is
  bool is_own_copy = false;       // whether that is the module that the host would register
  bool has_fitting_bits = false;  // whether that is a program of as many bits as this host
  bool is_needed = true;          // alerts through a module that is named by its file go without
};

enum class MessengerState { kRuns, kStopped, kNotInstalled, kNoLibrary };

enum class VoiceLineState { kThere, kNoTelephony, kNoVoiceLine };

// The system as checks see it. Texts are UTF-8; names of files and devices are compared as the
// system does. Only the last three functions touch a device or the network.
class CheckedSystem {
 public:
  virtual ~CheckedSystem() = default;

  // The text in the code page of instance files; nothing when that lacks some of its characters.
  [[nodiscard]] virtual std::optional<std::string> ToCodePage(std::string_view text) const = 0;
  [[nodiscard]] virtual std::string FromCodePage(std::string_view bytes) const = 0;

  [[nodiscard]] virtual PathKind KindOf(const std::string& path) const = 0;
  // Up to 12 bytes; fewer of what cannot be read.
  [[nodiscard]] virtual std::string FirstBytes(const std::string& path) const = 0;
  // Whether the system finds a program of this name without a folder.
  [[nodiscard]] virtual bool FindsProgram(const std::string& name) const = 0;

  [[nodiscard]] virtual SettingsStore& settings() const = 0;
  [[nodiscard]] virtual bool HasPort(std::uint32_t number) const = 0;
  [[nodiscard]] virtual bool HasSoundDevice() const = 0;
  [[nodiscard]] virtual Registration RegistrationOf(const Guid& clsid) const = 0;
  [[nodiscard]] virtual MessengerState Messenger() const = 0;
  [[nodiscard]] virtual VoiceLineState VoiceLine() const = 0;

  // The first line that the mail relay at this address says; empty when it cannot be reached or
  // says nothing.
  virtual std::string RelayGreeting(const std::string& address) = 0;
  // What the modem answers to "AT"; nothing when the port cannot be opened and set up.
  virtual std::optional<std::string> ModemAnswer(const LineSetup& setup) = 0;
  // Whether Voice can open its line and finds the line's wave device.
  virtual bool ProbeVoiceLine() = 0;
};

}  // namespace brantel::host
