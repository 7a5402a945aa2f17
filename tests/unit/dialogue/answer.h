#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "notifier/notifier_host.h"
#include "tests/unit/dialogue/dialogue.h"

namespace brantel {

std::uint32_t ToNumber(const std::string& word);

// A result as dialogues have it.
std::string ResultWord(Result result);

// The answer that a dialogue has to a call. Throws DialogueMismatch for what cannot be one.
class Answer {
 public:
  Answer(Dialogue& dialogue, const Words& call)
      : words_(dialogue.Expect(call)), place_(dialogue.Place()) {}

  [[nodiscard]] bool Is(std::string_view kind) const;

  // There must be none.
  void Nothing() const;

  // Whether the flag is there, beside which nothing may be.
  [[nodiscard]] bool Flag(const std::string& flag) const;

  // The number behind "fails", or nothing where there is no answer.
  [[nodiscard]] std::optional<std::uint32_t> Failure() const;

  // The only word behind `kind`.
  [[nodiscard]] const std::string& Text(std::string_view kind) const;
  [[nodiscard]] std::uint32_t Number(std::string_view kind) const { return ToNumber(Text(kind)); }

  [[nodiscard]] const std::string& Word(std::size_t index) const;
  [[nodiscard]] std::size_t size() const { return words_.size(); }

 private:
  Words words_;
  std::string place_;
};

// A host whose part is in the dialogue.
class DialogueHost final : public NotifierHost {
 public:
  explicit DialogueHost(Dialogue& dialogue) : dialogue_(dialogue) {}

  Result ExpandMessage(std::string& text, EmptyText /*empty_text*/) override;
  void LogMessage(std::string_view text) override;
  void LogMessage(std::u16string_view text) override;
  Result GetAlertTrigger(std::uint32_t& word) override;

 private:
  Dialogue& dialogue_;
};

}  // namespace brantel
