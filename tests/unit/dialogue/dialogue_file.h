#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "tests/unit/dialogue/words.h"

namespace brantel {

// What many dialogues have in common stands once, as a named block of lines in the shared.txt of
// their folder or of a folder around it:
//
//   block commanded COMMAND ANSWER          a name and the parameters, if any; up to the next block
//   log "sending \"$COMMAND\"\r\n"
//   write $COMMAND
//   read 100 gives $ANSWER
//
// and is included as
//
//   include commanded "ATZ\r" "\r\nOK\r\n"
//
// A block may itself include those that stand before it or in a folder around it. A name stands for
// one block only. Of both kinds of files, empty lines and those that begin with # say nothing.

constexpr std::string_view kSharedFileName = "shared.txt";

// One line of a dialogue, with its includes resolved.
struct DialogueLine {
  Words words;
  // FILE:LINE; for what is included "FILE:LINE (BLOCK, FILE:LINE)", beginning at the dialogue.
  std::string place;
};

// A line of the file as it is written, and the range of `lines` for which it stands: one of its
// own, those of an include, or none.
struct WrittenLine {
  std::string text;
  std::size_t first;
  std::size_t count;
};

struct DialogueFile {
  std::vector<WrittenLine> written;
  std::vector<DialogueLine> lines;
  std::set<std::string> included;  // blocks, as "shared.txt's path: name", also those of blocks
};

// Reads the dialogue at `file`, a path below `root`. Throws DialogueMismatch where a line cannot be
// read or an include cannot be resolved.
std::shared_ptr<const DialogueFile> ReadDialogueFile(const std::filesystem::path& root,
                                                     const std::filesystem::path& file);

// The blocks that the shared.txt of a folder below `root` defines, as `included` names them.
std::set<std::string> BlocksOf(const std::filesystem::path& root,
                               const std::filesystem::path& folder);

// The file with these lines instead of its own. As much as can be stays as it is written: an
// include where all of its lines follow each other, and all comments.
std::string WriteRecorded(const DialogueFile& file, const std::vector<Words>& recorded);

}  // namespace brantel
