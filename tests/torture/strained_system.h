#pragma once

#include <memory>
#include <stdexcept>
#include <string>

#include "dialog/sound_recorder.h"
#include "launch_program/process_starter.h"
#include "sound/sound_player.h"
#include "system/machine_name.h"
#include "system/sockets_library.h"
#include "tests/torture/faults.h"
#include "tests/unit/allocation_counter.h"
#include "tests/unit/system/fake_settings_store.h"

namespace brantel {

// A registry whose calls may fail.
class StrainedSettings final : public SettingsStore {
 public:
  explicit StrainedSettings(Faults& faults) : faults_(faults) {}

  FakeSettingsStore registry;
  int open_keys = 0;

  std::unique_ptr<SettingsKey> Open(const std::string& path, SettingsAccess access) override {
    if (faults_.Strike()) return nullptr;
    std::unique_ptr<SettingsKey> key;
    {
      const MemoryOfOthers others;
      key = registry.Open(path, access);
    }
    return std::make_unique<Key>(*this, std::move(key));
  }

 private:
  class Key final : public SettingsKey {
   public:
    Key(StrainedSettings& settings, std::unique_ptr<SettingsKey> key)
        : settings_(settings), key_(std::move(key)) {
      ++settings_.open_keys;
    }
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;
    ~Key() override { --settings_.open_keys; }

    std::optional<StoredSetting> Read(const std::string& name) override {
      if (settings_.faults_.Strike()) return std::nullopt;
      std::optional<StoredSetting> setting;
      {
        const MemoryOfOthers others;
        setting = key_->Read(name);
      }
      return {setting};  // in memory of the caller's
    }

    bool Write(const std::string& name, const StoredSetting& setting) override {
      const MemoryOfOthers others;
      return !settings_.faults_.Strike() && key_->Write(name, setting);
    }

   private:
    StrainedSettings& settings_;
    std::unique_ptr<SettingsKey> key_;
  };

  Faults& faults_;
};

// A sockets library that may not start.
class StrainedSockets final : public SocketsLibrary {
 public:
  explicit StrainedSockets(Faults& faults) : faults_(faults) {}

  int users = 0;

  bool Start() override {
    if (faults_.Strike()) return false;
    ++users;
    return true;
  }
  void Stop() noexcept override { --users; }

 private:
  Faults& faults_;
};

class StrainedMachineName final : public MachineName {
 public:
  explicit StrainedMachineName(Faults& faults) : faults_(faults) {}

  std::optional<std::string> TcpipParameter(const std::string& name, std::size_t) override {
    if (faults_.Strike()) return std::nullopt;
    return name == "Hostname" ? "a-computer-with-a-long-name" : "with-a-domain.example.org";
  }
  std::optional<std::string> SocketsHostName() override {
    if (faults_.Strike()) return std::nullopt;
    return "the-sockets-library-knows-this-name";
  }

 private:
  Faults& faults_;
};

// Loudspeakers, and programs that are started.
class StrainedPlayer final : public SoundPlayer {
 public:
  explicit StrainedPlayer(Faults& faults) : faults_(faults) {}

  int sounds = 0;

  bool PlayOnce(const std::string& file) override { return Play(file); }
  bool PlayLoop(const std::string& file) override { return Play(file); }
  bool Stop() override { return !faults_.Strike(); }

 private:
  bool Play(const std::string& file) {
    const std::u16string converted(file.begin(), file.end());  // as the system's own does
    if (faults_.Strike()) return false;
    ++sounds;
    return true;
  }

  Faults& faults_;
};

class StrainedStarter final : public ProcessStarter {
 public:
  explicit StrainedStarter(Faults& faults) : faults_(faults) {}

  int programs = 0;

  bool Start(const std::string& command_line, const std::string&) override {
    const std::u16string converted(command_line.begin(), command_line.end());
    if (faults_.Strike()) return false;
    ++programs;
    return true;
  }
  bool CanStartIn(const std::string&) override { return !faults_.Strike(); }

 private:
  Faults& faults_;
};

class StrainedRecorder final : public RecorderSystem {
 public:
  explicit StrainedRecorder(Faults& faults) : faults_(faults) {}

  std::string ConfiguredRecorder() override {
    return faults_.Strike() ? "" : R"(C:\Program Files\Recorder\recorder.exe)";
  }
  std::string SystemDirectory() override { return faults_.Strike() ? "" : "C:\\WINDOWS\\system32"; }
  bool Run(const std::string&) override { return !faults_.Strike(); }

 private:
  Faults& faults_;
};

}  // namespace brantel
