#include "tests/unit/dialogue/dialogue.h"

#include <algorithm>
#include <utility>

namespace brantel {
namespace {

constexpr std::string_view kLastCall = "result";

bool BeginsWith(const Words& words, const Words& call) {
  return std::ranges::mismatch(words, call).in2 == call.end();
}

// What a line has behind a call of so many words.
Words AnswerBehind(const Words& words, std::size_t count) {
  if (words.size() <= count) return {};
  return {words.begin() + static_cast<std::ptrdiff_t>(count), words.end()};
}

}  // namespace

Dialogue::Dialogue(const std::filesystem::path& root, const std::filesystem::path& file, Use use)
    : file_(ReadDialogueFile(root, file)), name_(file.generic_string()), use_(use) {}

const Words& Dialogue::TakeLine() {
  ThrowMismatch();
  if (AtEnd()) throw DialogueMismatch(name_ + ": the dialogue ends too early");
  const std::size_t line = next_++;
  if (use_ == Use::kRecord) recorded_.push_back(file_->lines[line].words);
  return Take(line);
}

const Words& Dialogue::TakeEvent(const std::string& wait,
                                 std::initializer_list<std::string_view> kinds) {
  if (use_ == Use::kReplay) return TakeLine();
  ThrowMismatch();
  std::size_t& from = next_of_kind_["events of " + wait];
  from = std::max(from, FirstUntaken(wait));
  const std::size_t end = std::min(FindKind(wait, from), FindKind(kLastCall, from));
  for (std::size_t line = from; line < end; ++line) {
    if (std::ranges::find(kinds, file_->lines[line].words[0]) == kinds.end()) continue;
    from = line + 1;
    recorded_.push_back(file_->lines[line].words);
    return Take(line);
  }
  throw DialogueMismatch(Place() + ": nothing is left that could end the wait");
}

Words Dialogue::Expect(const Words& call) {
  ThrowMismatch();
  if (use_ == Use::kRecord) return Record(call);
  if (AtEnd()) {
    throw DialogueMismatch(name_ + ": the dialogue is over, but then came:\n  " + JoinWords(call));
  }
  const Words& words = TakeLine();
  if (!BeginsWith(words, call)) {
    throw DialogueMismatch(Place() + ": expected\n  " + JoinWords(words) + "\nbut then came\n  " +
                           JoinWords(call));
  }
  return AnswerBehind(words, call.size());
}

void Dialogue::ExpectWithoutThrowing(const Words& call) noexcept {
  if (!mismatch_.empty()) return;
  try {
    if (!Expect(call).empty()) mismatch_ = Place() + ": too many words";
  } catch (const DialogueMismatch& mismatch) {
    mismatch_ = mismatch.what();
  }
}

void Dialogue::ExpectEnd() {
  if (AtEnd()) return;
  const Words& words = TakeLine();
  throw DialogueMismatch(Place() + ": expected\n  " + JoinWords(words) + "\nbut then came nothing");
}

std::string Dialogue::Place() const {
  return last_ == nullptr ? name_ + ":1" : last_->place;
}

const Words& Dialogue::Take(std::size_t line) {
  last_ = &file_->lines[line];
  return last_->words;
}

void Dialogue::ThrowMismatch() {
  if (!mismatch_.empty()) throw DialogueMismatch(std::exchange(mismatch_, {}));
}

Words Dialogue::Record(const Words& call) {
  const auto line = FindCall(call);
  const Words answer = line ? AnswerBehind(Take(*line), call.size()) : Words{};
  recorded_.push_back(call);
  recorded_.back().insert(recorded_.back().end(), answer.begin(), answer.end());
  if (call[0] == kLastCall) {
    next_ = std::min(FindKind(kLastCall, next_) + 1, file_->lines.size());
    next_of_kind_.clear();
  } else if (line) {
    next_of_kind_[call[0]] = *line + 1;
    if (*line == next_) ++next_;
  }
  return answer;
}

std::optional<std::size_t> Dialogue::FindCall(const Words& call) const {
  const std::size_t end = std::min(FindKind(kLastCall, next_) + 1, file_->lines.size());
  const std::size_t first = FindKind(call[0], FirstUntaken(call[0]));
  for (std::size_t line = first; line < end; ++line) {
    if (BeginsWith(file_->lines[line].words, call)) return line;
  }
  if (first < end) return first;
  return std::nullopt;
}

std::size_t Dialogue::FirstUntaken(const std::string& kind) const {
  const auto found = next_of_kind_.find(kind);
  return found == next_of_kind_.end() ? next_ : std::max(next_, found->second);
}

// The first line of a kind there or behind; past the last one if there is none.
std::size_t Dialogue::FindKind(std::string_view kind, std::size_t from) const {
  while (from < file_->lines.size() && file_->lines[from].words[0] != kind)
    ++from;
  return from;
}

}  // namespace brantel
