#pragma once

#include <cstddef>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace brantel {

using Words = std::vector<std::string>;

// What went otherwise than a dialogue says: where, what was expected, what came.
class DialogueMismatch : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// A scripted dialogue from a file: how things stand before, and then every call that the code under
// test makes on its system, in order, with what they answer.
//
// A line is a list of words. A word with blanks or control characters stands in quotation marks, in
// which \r \n \t \\ \" and \xHH mean what they do in C; "x"*100 is a hundred of them. Empty lines
// and those that begin with # say nothing.
class Dialogue {
 public:
  explicit Dialogue(const std::filesystem::path& file);

  [[nodiscard]] bool AtEnd() const { return mismatch_.empty() && next_ == lines_.size(); }

  // Takes the next line, whatever it is. Throws at the end.
  const Words& TakeLine();

  // Takes the next line, which has to begin with these words, and returns those behind them.
  Words Expect(const Words& call);

  // Takes the next line, which has to be these words, for a call out of which nothing may be
  // thrown: whoever takes a line next is thrown the mismatch.
  void ExpectWithoutThrowing(const Words& call) noexcept;

  // The place of the line that was taken last, as compilers write it.
  [[nodiscard]] std::string Place() const;

 private:
  struct Line {
    std::size_t number;
    Words words;
  };

  std::string name_;
  std::vector<Line> lines_;
  std::size_t next_ = 0;
  std::string mismatch_;  // that is still to be thrown
};

// The dialogues of some folders of tests/unit/dialogues, in the order of their paths.
std::vector<std::filesystem::path> DialogueFiles(const std::vector<std::string>& folders);

// Words as a line of a dialogue has them.
std::string JoinWords(const Words& words);

}  // namespace brantel
