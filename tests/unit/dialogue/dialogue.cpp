#include "tests/unit/dialogue/dialogue.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <iterator>
#include <utility>

#include "tests/unit/project_file.h"

namespace brantel {
namespace {

constexpr std::string_view kBlanks = " \t\r";

struct Escape {
  char letter;
  char byte;
};

constexpr std::array kEscapes = {Escape{'r', '\r'}, Escape{'n', '\n'}, Escape{'t', '\t'},
                                 Escape{'\\', '\\'}, Escape{'"', '"'}};

class LineReader {
 public:
  explicit LineReader(std::string_view rest) : rest_(rest) {}

  Words Read() {
    Words words;
    for (SkipBlanks(); !rest_.empty(); SkipBlanks()) {
      words.push_back(rest_.front() == '"' ? TakeQuoted() : TakeBare());
    }
    return words;
  }

 private:
  void SkipBlanks() {
    rest_.remove_prefix(std::min(rest_.find_first_not_of(kBlanks), rest_.size()));
  }

  char Take() {
    if (rest_.empty()) throw DialogueMismatch("the line ends within a word");
    const char c = rest_.front();
    rest_.remove_prefix(1);
    return c;
  }

  std::string TakeBare() {
    const std::string_view word = rest_.substr(0, rest_.find_first_of(kBlanks));
    rest_.remove_prefix(word.size());
    return std::string(word);
  }

  char TakeEscaped() {
    const char letter = Take();
    if (letter == 'x') {
      const std::string digits{Take(), Take()};
      return static_cast<char>(std::stoi(digits, nullptr, 16));
    }
    const auto* const escape = std::ranges::find(kEscapes, letter, &Escape::letter);
    if (escape == kEscapes.end()) throw DialogueMismatch("unknown escape in a word");
    return escape->byte;
  }

  std::string TakeQuoted() {
    std::string word;
    Take();
    for (char c = Take(); c != '"'; c = Take()) {
      word += c == '\\' ? TakeEscaped() : c;
    }
    if (!rest_.starts_with('*')) return word;
    rest_.remove_prefix(1);
    std::string repeated;
    for (int left = std::stoi(TakeBare()); left > 0; --left) {
      repeated += word;
    }
    return repeated;
  }

  std::string_view rest_;
};

void AppendByte(std::string& text, char c) {
  const auto* const escape = std::ranges::find(kEscapes, c, &Escape::byte);
  if (escape != kEscapes.end()) {
    text += {'\\', escape->letter};
  } else if (c >= 0x20 && c < 0x7F) {
    text += c;
  } else {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(c);
    text += {'\\', 'x', kDigits[byte / 16U], kDigits[byte % 16U]};
  }
}

std::string ToWord(const std::string& text) {
  std::string word;
  for (const char c : text) {
    AppendByte(word, c);
  }
  const bool bare = !text.empty() && word == text && text.find(' ') == std::string::npos;
  return bare ? word : '"' + word + '"';
}

}  // namespace

std::vector<std::filesystem::path> DialogueFiles(const std::vector<std::string>& folders) {
  std::vector<std::filesystem::path> files;
  for (const std::string& folder : folders) {
    const auto directory = ProjectFile("tests/unit/dialogues/" + folder);
    for (const auto& entry : std::filesystem::directory_iterator(directory)) {
      files.push_back(entry.path());
    }
  }
  std::ranges::sort(files);
  return files;
}

std::string JoinWords(const Words& words) {
  std::string line;
  for (const std::string& word : words) {
    line += (line.empty() ? "" : " ") + ToWord(word);
  }
  return line;
}

Dialogue::Dialogue(const std::filesystem::path& file) : name_(file.filename().string()) {
  std::ifstream stream(file);
  std::size_t number = 0;
  for (std::string text; std::getline(stream, text);) {
    ++number;
    if (text.starts_with('#')) continue;
    Words words = LineReader(text).Read();
    if (!words.empty()) lines_.push_back({number, std::move(words)});
  }
}

const Words& Dialogue::TakeLine() {
  if (!mismatch_.empty()) throw DialogueMismatch(std::exchange(mismatch_, {}));
  if (AtEnd()) throw DialogueMismatch(name_ + ": the dialogue ends too early");
  return lines_[next_++].words;
}

Words Dialogue::Expect(const Words& call) {
  if (AtEnd()) {
    throw DialogueMismatch(name_ + ": the dialogue is over, but then came:\n  " + JoinWords(call));
  }
  const Words& words = TakeLine();
  const auto difference = std::ranges::mismatch(words, call);
  if (difference.in2 != call.end()) {
    throw DialogueMismatch(Place() + ": expected\n  " + JoinWords(words) + "\nbut then came\n  " +
                           JoinWords(call));
  }
  return {difference.in1, words.end()};
}

void Dialogue::ExpectWithoutThrowing(const Words& call) noexcept {
  if (!mismatch_.empty()) return;
  try {
    if (!Expect(call).empty()) mismatch_ = Place() + ": too many words";
  } catch (const DialogueMismatch& mismatch) {
    mismatch_ = mismatch.what();
  }
}

std::string Dialogue::Place() const {
  return name_ + ":" + std::to_string(next_ == 0 ? 1 : lines_[next_ - 1].number);
}

}  // namespace brantel
