#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "host/checks/checked_system.h"
#include "host/text/letter_case.h"
#include "tests/unit/system/fake_settings_store.h"

namespace brantel::host {

// A computer in memory that is as particular as a real one: files and programs are found in any
// letter case, with either separator, and without the dots and blanks at the end of a name; the
// code page has one byte for U+00A0 to U+00FF and none for its byte 0x81.
class FakeCheckedSystem final : public CheckedSystem {
 public:
  std::map<std::string, std::string> files;  // full paths as FileSystemName makes them
  std::set<std::string> directories;
  std::set<std::string> programs;  // along the path
  std::set<std::uint32_t> ports = {1, 2};
  bool has_sound_device = true;
  Registration registration{"C:\\module.dll", true, true, true};
  MessengerState messenger = MessengerState::kRuns;
  VoiceLineState voice_line = VoiceLineState::kThere;
  std::string greeting = "220 relay ready";
  std::optional<std::string> modem_answer = "\r\nOK\r\n";
  bool voice_line_opens = true;
  // What was tried of devices and the network.
  std::vector<std::string> tried;
  mutable FakeSettingsStore store;

  static std::string FileSystemName(std::string_view path) {
    std::string name;
    for (const char c : path)
      name += c == '/' ? '\\' : LowerCase(c);
    while (!name.empty() && (name.back() == '.' || name.back() == ' '))
      name.pop_back();
    return name;
  }

  void AddFile(std::string_view path, std::string content = "") {
    files[FileSystemName(path)] = std::move(content);
  }
  void AddWave(std::string_view path) { AddFile(path, std::string("RIFF\x24\0\0\0WAVE", 12)); }

  void Set(const std::string& class_name, const std::string& name, const std::string& text) {
    store.keys[R"(SOFTWARE\Brantel\Vantrel\notification\)" + class_name][name] = {
        SettingType::kText, text};
  }

  [[nodiscard]] std::optional<std::string> ToCodePage(std::string_view text) const override {
    std::string bytes;
    for (std::size_t i = 0; i < text.size(); ++i) {
      const auto byte = static_cast<std::uint8_t>(text[i]);
      if (byte < 0x80) {
        bytes += text[i];
      } else if ((byte == 0xC2 || byte == 0xC3) && i + 1 < text.size()) {
        bytes +=
            static_cast<char>((byte & 3U) << 6U | (static_cast<std::uint8_t>(text[++i]) & 0x3FU));
      } else {
        return std::nullopt;
      }
    }
    return bytes;
  }
  [[nodiscard]] std::string FromCodePage(std::string_view bytes) const override {
    std::string text;
    for (const char c : bytes) {
      const auto byte = static_cast<std::uint8_t>(c);
      if (byte == 0x81) {
        text += "\xEF\xBF\xBD";
      } else if (byte < 0x80) {
        text += c;
      } else {
        text += static_cast<char>(0xC0U | byte >> 6U);
        text += static_cast<char>(0x80U | (byte & 0x3FU));
      }
    }
    return text;
  }

  [[nodiscard]] PathKind KindOf(const std::string& path) const override {
    const std::string name = FileSystemName(path);
    if (files.contains(name)) return PathKind::kFile;
    return directories.contains(name) ? PathKind::kDirectory : PathKind::kNothing;
  }
  [[nodiscard]] std::string FirstBytes(const std::string& path) const override {
    return files.at(FileSystemName(path)).substr(0, 12);
  }
  [[nodiscard]] bool FindsProgram(const std::string& name) const override {
    return programs.contains(FileSystemName(name));
  }

  [[nodiscard]] SettingsStore& settings() const override { return store; }
  [[nodiscard]] bool HasPort(std::uint32_t number) const override { return ports.contains(number); }
  [[nodiscard]] bool HasSoundDevice() const override { return has_sound_device; }
  [[nodiscard]] Registration RegistrationOf(const Guid&) const override { return registration; }
  [[nodiscard]] MessengerState Messenger() const override { return messenger; }
  [[nodiscard]] VoiceLineState VoiceLine() const override { return voice_line; }

  std::string RelayGreeting(const std::string& address) override {
    tried.push_back("relay " + address);
    return greeting;
  }
  std::optional<std::string> ModemAnswer(const LineSetup& setup) override {
    tried.push_back("modem COM" + std::to_string(setup.port) + " " +
                    std::to_string(setup.bits_per_second) + (setup.is_8n1 ? " 8N1" : " 7E1"));
    return modem_answer;
  }
  bool ProbeVoiceLine() override {
    tried.emplace_back("voice line");
    return voice_line_opens;
  }
};

}  // namespace brantel::host
