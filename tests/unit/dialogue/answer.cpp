#include "tests/unit/dialogue/answer.h"

#include "text/format_text.h"

namespace brantel {

std::uint32_t ToNumber(const std::string& word) {
  return static_cast<std::uint32_t>(std::stoul(word, nullptr, 0));
}

std::string ResultWord(Result result) {
  if (result == kOk) return "S_OK";
  if (result == kFail) return "E_FAIL";
  return FormatText("0x%08X", {static_cast<std::uint32_t>(result)});
}

bool Answer::Is(std::string_view kind) const {
  return !words_.empty() && words_[0] == kind;
}

void Answer::Nothing() const {
  if (!words_.empty()) throw DialogueMismatch(place_ + ": too many words");
}

bool Answer::Flag(const std::string& flag) const {
  if (words_ == Words{flag}) return true;
  Nothing();
  return false;
}

std::optional<std::uint32_t> Answer::Failure() const {
  if (Is("fails")) return Number("fails");
  Nothing();
  return std::nullopt;
}

const std::string& Answer::Text(std::string_view kind) const {
  if (!Is(kind) || words_.size() != 2) {
    throw DialogueMismatch(place_ + ": expected \"" + std::string(kind) + "\" and its value");
  }
  return words_[1];
}

const std::string& Answer::Word(std::size_t index) const {
  if (index >= words_.size()) throw DialogueMismatch(place_ + ": a word is missing");
  return words_[index];
}

Result DialogueHost::ExpandMessage(std::string& text, EmptyText /*empty_text*/) {
  const Answer answer(dialogue_, {"expand", text});
  if (answer.Is("fails")) return static_cast<Result>(answer.Number("fails"));
  if (!answer.Is("gives") || answer.size() != 3) {
    text = answer.Text("gives");
    return kOk;
  }
  text = answer.Word(1);
  return static_cast<Result>(ToNumber(answer.Word(2)));
}

void DialogueHost::LogMessage(std::string_view text) {
  dialogue_.ExpectWithoutThrowing({"log", std::string(text)});
}

void DialogueHost::LogMessage(std::u16string_view text) {
  LogMessage(std::string(text.begin(), text.end()));  // dialogues log ASCII this way
}

Result DialogueHost::GetAlertTrigger(std::uint32_t& word) {
  const Answer answer(dialogue_, {"trigger"});
  if (answer.Is("fails")) return static_cast<Result>(answer.Number("fails"));
  word = answer.Number("gives");
  return kOk;
}

}  // namespace brantel
