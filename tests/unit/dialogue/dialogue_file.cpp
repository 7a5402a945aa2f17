#include "tests/unit/dialogue/dialogue_file.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>
#include <span>
#include <string_view>
#include <utility>

namespace brantel {
namespace {

constexpr std::string_view kParameterLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ-";

using Arguments = std::map<std::string, std::string, std::less<>>;

struct Block {
  std::string id;  // its file and name
  std::vector<std::string> parameters;
  std::vector<DialogueLine> lines;  // parameters are still to be replaced
  std::set<std::string> included;
};

// A word of a block with its $PARAMETERs replaced.
std::string Substitute(std::string_view word, const Arguments& arguments) {
  std::string text;
  for (auto at = word.find('$'); at != std::string_view::npos; at = word.find('$')) {
    text += word.substr(0, at);
    word.remove_prefix(at + 1);
    const std::string_view name =
        word.substr(0, std::min(word.find_first_not_of(kParameterLetters), word.size()));
    const auto argument = arguments.find(name);
    if (argument == arguments.end()) {
      throw DialogueMismatch("there is no parameter $" + std::string(name));
    }
    text += argument->second;
    word.remove_prefix(name.size());
  }
  return text.append(word);
}

std::vector<DialogueLine> Expand(const Block& block, const Words& include,
                                 const std::string& place) {
  if (include.size() != block.parameters.size() + 2) {
    throw DialogueMismatch(block.id + " has " + std::to_string(block.parameters.size()) +
                           " parameters");
  }
  Arguments arguments;
  for (std::size_t i = 0; i < block.parameters.size(); ++i) {
    arguments[block.parameters[i]] = include[i + 2];
  }
  std::vector<DialogueLine> lines = block.lines;
  for (DialogueLine& line : lines) {
    line.place = place + " (" + include[1] + ", " + line.place + ")";
    for (std::string& word : line.words) {
      word = Substitute(word, arguments);
    }
  }
  return lines;
}

// Reads a file line by line, and says where a line is when it cannot be read.
template <typename Take>
void ForEachLine(const std::filesystem::path& root, const std::filesystem::path& file, Take take) {
  std::ifstream stream(root / file);
  if (!stream) throw DialogueMismatch("cannot read " + (root / file).string());
  std::size_t number = 0;
  for (std::string text; std::getline(stream, text);) {
    if (text.ends_with('\r')) text.pop_back();
    const std::string place = file.generic_string() + ":" + std::to_string(++number);
    try {
      take(text, text.starts_with('#') ? Words{} : ReadWords(text), place);
    } catch (const std::exception& mismatch) {
      throw DialogueMismatch(place + ": " + mismatch.what());
    }
  }
}

class Blocks {
 public:
  explicit Blocks(std::filesystem::path root) : root_(std::move(root)) {}

  // Those of a folder and of the folders around it, up to the root.
  void ReadAround(const std::filesystem::path& folder) {
    if (!folder.empty()) ReadAround(folder.parent_path());
    const auto file = folder / kSharedFileName;
    if (std::filesystem::exists(root_ / file)) Read(file);
  }

  void Read(const std::filesystem::path& file) {
    open_ = nullptr;
    ForEachLine(root_, file, [&](const std::string&, const Words& words, const std::string& place) {
      if (words.empty()) return;
      if (words[0] == "block") {
        open_ = &Define(file, words);
        return;
      }
      if (open_ == nullptr) throw DialogueMismatch("expected a block");
      std::ranges::move(Resolve(words, place, open_->included), std::back_inserter(open_->lines));
    });
    open_ = nullptr;
  }

  // What a line stands for: those of a block, of which `included` takes note, or itself.
  std::vector<DialogueLine> Resolve(const Words& words, const std::string& place,
                                    std::set<std::string>& included) const {
    if (words.at(0) != "include") return {{words, place}};
    const auto block = words.size() < 2 ? blocks_.end() : blocks_.find(words[1]);
    if (block == blocks_.end() || &block->second == open_) {
      throw DialogueMismatch("there is no such block before this line");
    }
    included.insert(block->second.id);
    included.insert(block->second.included.begin(), block->second.included.end());
    return Expand(block->second, words, place);
  }

  [[nodiscard]] std::set<std::string> Ids() const {
    std::set<std::string> ids;
    for (const auto& [name, block] : blocks_) {
      ids.insert(block.id);
    }
    return ids;
  }

 private:
  Block& Define(const std::filesystem::path& file, const Words& words) {
    if (words.size() < 2) throw DialogueMismatch("the block has no name");
    const auto [position, is_new] = blocks_.try_emplace(words[1]);
    if (!is_new) throw DialogueMismatch("the block is there already: " + position->second.id);
    position->second.id = file.generic_string() + ": " + words[1];
    position->second.parameters = {words.begin() + 2, words.end()};
    return position->second;
  }

  std::filesystem::path root_;
  std::map<std::string, Block, std::less<>> blocks_;
  Block* open_ = nullptr;  // whose lines are being read
};

// Whether what is written stands for exactly these lines.
bool StandsFor(const WrittenLine& written, const std::vector<DialogueLine>& lines,
               std::span<const Words> recorded) {
  if (recorded.size() < written.count) return false;
  const auto own = std::span(lines).subspan(written.first, written.count);
  return std::ranges::equal(own, recorded.first(written.count), {}, &DialogueLine::words);
}

// Finds out what stays of a file, so that it stands for as many of the recorded lines as possible.
class Alignment {
 public:
  Alignment(const DialogueFile& file, const std::vector<Words>& recorded)
      : file_(file),
        recorded_(recorded),
        kept_(file.written.size() + 1, std::vector<std::size_t>(recorded.size() + 1)) {
    for (std::size_t i = file.written.size(); i-- > 0;) {
      for (std::size_t j = recorded.size() + 1; j-- > 0;) {
        kept_[i][j] = std::max(kept_[i + 1][j], j < recorded.size() ? kept_[i][j + 1] : 0);
        if (Matches(i, j)) kept_[i][j] = std::max(kept_[i][j], KeptIfUsed(i, j));
      }
    }
  }

  [[nodiscard]] std::string Text() const {
    std::string text;
    std::size_t j = 0;
    for (std::size_t i = 0; i < file_.written.size(); ++i) {
      while (kept_[i][j] > std::max(kept_[i + 1][j], Matches(i, j) ? KeptIfUsed(i, j) : 0))
        text += JoinWords(recorded_[j++]) + "\n";
      if (!Matches(i, j) || KeptIfUsed(i, j) < kept_[i][j]) continue;
      text += file_.written[i].text + "\n";
      j += file_.written[i].count;
    }
    for (; j < recorded_.size(); ++j)
      text += JoinWords(recorded_[j]) + "\n";
    return text;
  }

 private:
  // Whether the line of the file may stand there. Comments may anywhere.
  [[nodiscard]] bool Matches(std::size_t i, std::size_t j) const {
    return StandsFor(file_.written[i], file_.lines, std::span(recorded_).subspan(j));
  }

  [[nodiscard]] std::size_t KeptIfUsed(std::size_t i, std::size_t j) const {
    const std::size_t count = file_.written[i].count;
    return count + kept_[i + 1][j + count];
  }

  const DialogueFile& file_;
  const std::vector<Words>& recorded_;
  // How many recorded lines the lines of the file from the first index on can stand for, of those
  // from the second index on.
  std::vector<std::vector<std::size_t>> kept_;
};

}  // namespace

std::shared_ptr<const DialogueFile> ReadDialogueFile(const std::filesystem::path& root,
                                                     const std::filesystem::path& file) {
  Blocks blocks(root);
  blocks.ReadAround(file.parent_path());
  DialogueFile read;
  ForEachLine(root, file,
              [&](const std::string& text, const Words& words, const std::string& place) {
                const std::size_t first = read.lines.size();
                if (!words.empty()) {
                  std::ranges::move(blocks.Resolve(words, place, read.included),
                                    std::back_inserter(read.lines));
                }
                read.written.push_back({text, first, read.lines.size() - first});
              });
  return std::make_shared<const DialogueFile>(std::move(read));
}

std::set<std::string> BlocksOf(const std::filesystem::path& root,
                               const std::filesystem::path& folder) {
  Blocks blocks(root);
  blocks.ReadAround(folder);
  return blocks.Ids();
}

std::string WriteRecorded(const DialogueFile& file, const std::vector<Words>& recorded) {
  return Alignment(file, recorded).Text();
}

}  // namespace brantel
