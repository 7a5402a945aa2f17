#pragma once

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "tests/unit/dialogue/dialogue.h"

namespace brantel {

// The dialogues stand below tests/unit/dialogues, in folders by notifier and protocol. They are
// read and compared, unless the program is started with --record-dialogues. Then each that a test
// would replay is written anew as the code went. To record:
//
//   build/native/tests/unit/unit_tests --record-dialogues --gtest_filter='*pager_tap*'
//
// and then read the difference. A new dialogue needs no more than how things stand before, the
// "run", and the calls that are answered. What goes otherwise within an include is written out in
// its place; where the shared block itself is to say something else, change that first. Such a run
// fails: it has tested nothing.

// The folder of all dialogues.
std::filesystem::path DialogueRoot();

// The dialogues of some folders and of all below them, in the order of their paths; "" is the root.
std::vector<std::filesystem::path> DialogueFiles(const std::vector<std::string>& folders);

// The name of a dialogue's test.
std::string DialogueName(const std::filesystem::path& file);

// From now on dialogues are recorded, and the tests end as failed.
void RecordDialogues();

bool RecordsDialogues();

// Has a dialogue replayed, or recorded, and reports how that went as the result of the test.
void ReplayDialogue(const std::filesystem::path& file,
                    const std::function<void(Dialogue&)>& replay);

}  // namespace brantel
