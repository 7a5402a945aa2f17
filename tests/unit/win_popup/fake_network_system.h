#pragma once

#include <memory>
#include <set>
#include <string>
#include <vector>

#include "win_popup/network_library.h"

namespace brantel {

// A Windows with a network library of which the test says what is in it.
class FakeNetworkSystem final : public NetworkSystem {
 public:
  struct SentMessage {
    std::u16string name;
    std::u16string buffer;

    friend bool operator==(const SentMessage&, const SentMessage&) = default;
  };

  WindowsFamily family = WindowsFamily::kWindowsNt;
  bool has_library = true;
  std::set<NetworkEntry> missing;
  bool sends = true;
  std::vector<std::u16string> message_names;

  // "load NAME", "free" and "names", in order.
  std::vector<std::string> calls;
  std::vector<SentMessage> sent;

  WindowsFamily Family() override { return family; }

  std::unique_ptr<NetworkLibrary> Load(std::string_view name) override {
    calls.push_back("load " + std::string(name));
    return has_library ? std::make_unique<Library>(*this) : nullptr;
  }

 private:
  class Library final : public NetworkLibrary {
   public:
    explicit Library(FakeNetworkSystem& system) : system_(system) {}
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
    ~Library() override { system_.calls.emplace_back("free"); }

    [[nodiscard]] bool Has(NetworkEntry entry) const override {
      return !system_.missing.contains(entry);
    }
    bool SendMessageBuffer(const std::u16string& name, std::u16string_view buffer) override {
      system_.sent.push_back({name, std::u16string(buffer)});
      return system_.sends;
    }
    std::vector<std::u16string> MessageNames() override {
      system_.calls.emplace_back("names");
      return system_.message_names;
    }

   private:
    FakeNetworkSystem& system_;
  };
};

}  // namespace brantel
