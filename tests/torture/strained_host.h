#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "notifier/notifier_host.h"
#include "tests/torture/faults.h"
#include "tests/unit/allocation_counter.h"

namespace brantel {

// The host's own object, of which there may be any number of references.
struct HostObject {
  explicit HostObject(Faults& system_faults) : faults(system_faults) {}

  Faults& faults;
  int references = 0;
  std::vector<std::string> log;
  std::uint32_t trigger_word = 2;
};

// The host as it is bound: one reference. As behind COM, every text is converted, which wants
// memory.
class StrainedHost final : public NotifierHost {
 public:
  explicit StrainedHost(HostObject& object) : object_(object) { ++object_.references; }
  StrainedHost(const StrainedHost&) = delete;
  StrainedHost& operator=(const StrainedHost&) = delete;
  ~StrainedHost() override { --object_.references; }

  std::shared_ptr<NotifierHost> AddReference() override {
    return std::make_shared<StrainedHost>(object_);
  }

  Result ExpandMessage(std::string& text, EmptyText) override {
    static constexpr std::array<Result, 3> kErrors = {kFail, static_cast<Result>(0x8007000E),
                                                      static_cast<Result>(0x80010108)};
    const std::u16string converted(text.begin(), text.end());
    if (object_.faults.Strike()) return object_.faults.Choose(kErrors);
    if (text == "%C") {
      text = "a-message-of-the-device.wav";
    } else if (text == "%n") {
      text = "the-name-of-the-device-that-is-down";
    }
    return kOk;
  }

  void LogMessage(std::string_view text) override {
    const std::u16string converted(text.begin(), text.end());
    Append(std::string_view(text));
  }
  void LogMessage(std::u16string_view text) override {
    const std::u16string converted(text);
    Append(text);
  }

  Result GetAlertTrigger(std::uint32_t& word) override {
    if (object_.faults.Strike()) return kFail;
    word = object_.trigger_word;
    return kOk;
  }

 private:
  template <typename Text>
  void Append(Text text) {
    const MemoryOfOthers others;
    object_.log.emplace_back(text.begin(), text.end());
  }

  HostObject& object_;
};

}  // namespace brantel
