#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "notifier/notifier_host.h"

namespace brantel {

// A host that lets the test act at each log line, and keeps nothing.
class ActingHost final : public NotifierHost {
 public:
  std::function<void(std::string_view)> at_log = [](std::string_view) {};
  // The kind of the event; nothing where it does not matter, and nobody asks.
  std::optional<std::uint32_t> trigger_word;

  Result ExpandMessage(std::string&, EmptyText) override { return kOk; }
  void LogMessage(std::string_view text) override { at_log(text); }
  void LogMessage(std::u16string_view) override {}
  Result GetAlertTrigger(std::uint32_t& word) override {
    EXPECT_TRUE(trigger_word) << "the event does not matter";
    word = trigger_word.value_or(0);
    return trigger_word ? kOk : kFail;
  }
};

}  // namespace brantel
