#pragma once

#include <cstddef>
#include <filesystem>
#include <initializer_list>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tests/unit/dialogue/dialogue_file.h"
#include "tests/unit/dialogue/words.h"

namespace brantel {

// A scripted dialogue from a file: how things stand before, then a line "run", and behind it every
// call that the code under test makes on its system, in order, with what they answer, up to
// the "result". Several runs may follow each other. words.h says what a line is made of and
// dialogue_file.h how dialogues share lines.
//
// When a dialogue is recorded, nothing is compared. Each call is given the answer that the next
// line with the same call has in this run or, where there is none, the next line of its kind (which
// is its first word). What the code did so takes the place of what the file said.
class Dialogue {
 public:
  enum class Use { kReplay, kRecord };

  // The dialogue at `file`, a path below `root`.
  Dialogue(const std::filesystem::path& root, const std::filesystem::path& file,
           Use use = Use::kReplay);

  [[nodiscard]] bool AtEnd() const { return mismatch_.empty() && next_ == file_->lines.size(); }

  // Takes the next line, whatever it is: of how things stand before, and the "run". Throws at the
  // end.
  const Words& TakeLine();

  // Takes the next line that happens during a call that waits. That is the next one, whatever it
  // is; while recording, the next of these kinds behind the call.
  const Words& TakeEvent(const std::string& wait, std::initializer_list<std::string_view> kinds);

  // Takes the next line, which has to begin with these words, and returns those behind them.
  Words Expect(const Words& call);

  // Takes the next line, which has to be these words, for a call out of which nothing may be
  // thrown: whoever takes a line next is thrown the mismatch.
  void ExpectWithoutThrowing(const Words& call) noexcept;

  // Throws where there are lines left.
  void ExpectEnd();

  // The place of the line that was taken last, as compilers write it.
  [[nodiscard]] std::string Place() const;

  // The file as it has been recorded.
  [[nodiscard]] std::string Recorded() const { return WriteRecorded(*file_, recorded_); }

 private:
  const Words& Take(std::size_t line);
  void ThrowMismatch();
  Words Record(const Words& call);
  [[nodiscard]] std::optional<std::size_t> FindCall(const Words& call) const;
  [[nodiscard]] std::size_t FirstUntaken(const std::string& kind) const;
  [[nodiscard]] std::size_t FindKind(std::string_view kind, std::size_t from) const;

  std::shared_ptr<const DialogueFile> file_;
  std::string name_;
  Use use_;
  std::size_t next_ = 0;
  const DialogueLine* last_ = nullptr;  // that was taken
  std::string mismatch_;                // that is still to be thrown

  // While recording: where the search for lines of a kind goes on in this run, and what there is.
  std::map<std::string, std::size_t, std::less<>> next_of_kind_;
  std::vector<Words> recorded_;
};

}  // namespace brantel
