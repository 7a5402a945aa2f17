#pragma once

#include <deque>
#include <string>
#include <vector>

#include "notifier/notifier_host.h"

namespace brantel {

// A host that answers as the test says and keeps what it was told, in order.
class FakeNotifierHost final : public NotifierHost {
 public:
  struct Expansion {
    Result result = kOk;
    std::string text;
  };

  // What the next expansions answer; when there is none left, the text comes back unchanged.
  std::deque<Expansion> expansions;
  Result trigger_result = kOk;
  std::uint32_t trigger_word = 0;

  std::vector<std::string> expanded_templates;
  std::vector<EmptyText> empty_texts;  // as each of these would have gone out
  std::vector<std::string> log;
  // "expand", "trigger" and "log" in the order of the calls.
  std::vector<std::string> calls;

  Result ExpandMessage(std::string& text, EmptyText empty_text) override {
    calls.emplace_back("expand");
    empty_texts.push_back(empty_text);
    expanded_templates.push_back(text);
    if (expansions.empty()) return kOk;
    const Expansion expansion = expansions.front();
    expansions.pop_front();
    if (!Failed(expansion.result)) text = expansion.text;
    return expansion.result;
  }

  void LogMessage(std::string_view text) override {
    calls.emplace_back("log");
    log.emplace_back(text);
  }

  void LogMessage(std::u16string_view text) override {
    calls.emplace_back("log");
    log.emplace_back(text.begin(), text.end());  // tests log ASCII this way
  }

  Result GetAlertTrigger(std::uint32_t& word) override {
    calls.emplace_back("trigger");
    if (!Failed(trigger_result)) word = trigger_word;
    return trigger_result;
  }
};

}  // namespace brantel
