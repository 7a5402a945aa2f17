#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "bench/posix_file.h"
#include "bench/sample_page.h"
#include "instance/instance_files.h"
#include "notifier/notifier_host.h"
#include "port/serial_device.h"
#include "system/clock.h"
#include "system/settings_store.h"

namespace brantel {

// A machine whose modem has replied before anybody asks, on which no time passes, and whose
// settings are the defaults. Its files can be read, and nothing else.
class ReplyingMachine final : public InstanceFiles,
                              public SettingsStore,
                              public SerialPorts,
                              public Clock {
 public:
  // What the replies are of must outlive the object.
  explicit ReplyingMachine(std::span<const ModemReply> replies) : replies_(replies) {}

  std::unique_ptr<ByteSource> Open(const std::string& path) override {
    return std::make_unique<PosixFile>(path.c_str());
  }
  bool Write(const std::string&, std::string_view) override { return false; }
  bool Overwrite(const std::string&, std::string_view) override { return false; }
  bool Delete(const std::string&) override { return false; }
  bool Rename(const std::string&, const std::string&) override { return false; }
  [[nodiscard]] bool Exists(const std::string&) const override { return true; }
  [[nodiscard]] std::optional<std::string> StoredName(const std::string&) const override {
    return std::nullopt;
  }
  [[nodiscard]] bool IsValidName(const std::string&) const override { return true; }

  std::unique_ptr<SettingsKey> Open(const std::string&, SettingsAccess) override {
    return std::make_unique<EmptyKey>();
  }
  Outcome<std::unique_ptr<SerialDevice>> Open(std::uint32_t) override {
    return std::unique_ptr<SerialDevice>(std::make_unique<Modem>(replies_));
  }
  void Wait(std::uint32_t) override {}

 private:
  class EmptyKey final : public SettingsKey {
   public:
    std::optional<StoredSetting> Read(const std::string&) override { return std::nullopt; }
    bool Write(const std::string&, const StoredSetting&) override { return false; }
  };

  class Modem final : public SerialDevice {
   public:
    explicit Modem(std::span<const ModemReply> replies) : replies_(replies) {}

    Outcome<> GetControl() override { return kDone; }
    Outcome<> SetControl(std::uint32_t, const Framing&) override { return kDone; }
    Outcome<SerialTimeouts> GetTimeouts() override { return SerialTimeouts(); }
    Outcome<> SetTimeouts(const SerialTimeouts&) override { return kDone; }
    Outcome<> Write(std::string_view bytes) override {
      unread_ = ReplyTo(bytes, replies_);
      return kDone;
    }
    Outcome<std::size_t> Read(std::span<char> buffer) override {
      const std::size_t count = unread_.copy(buffer.data(), buffer.size());
      unread_.remove_prefix(count);
      return count;
    }
    void Flush() override {}

   private:
    std::span<const ModemReply> replies_;
    std::string_view unread_;
  };

  std::span<const ModemReply> replies_;
};

// A host that has nothing to fill in and reads no log.
class SilentHost final : public NotifierHost {
 public:
  Result ExpandMessage(std::string&, EmptyText) override { return kOk; }
  void LogMessage(std::string_view) override {}
  void LogMessage(std::u16string_view) override {}
  Result GetAlertTrigger(std::uint32_t&) override { return kFail; }
};

}  // namespace brantel
