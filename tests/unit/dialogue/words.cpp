#include "tests/unit/dialogue/words.h"

#include <algorithm>
#include <array>

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

Words ReadWords(std::string_view line) {
  return LineReader(line).Read();
}

std::string JoinWords(const Words& words) {
  std::string line;
  for (const std::string& word : words) {
    line += (line.empty() ? "" : " ") + ToWord(word);
  }
  return line;
}

}  // namespace brantel
