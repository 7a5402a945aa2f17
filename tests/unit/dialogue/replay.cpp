#include "tests/unit/dialogue/replay.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include "tests/unit/project_file.h"

namespace brantel {
namespace {

constexpr const char* kFolder = "tests/unit/dialogues";

bool records_dialogues = false;

class FailedRun final : public ::testing::Environment {
 public:
  void TearDown() override { ADD_FAILURE() << "Dialogues were recorded, not replayed."; }
};

void SaveRecorded(const std::filesystem::path& file, const Dialogue& dialogue) {
  const std::string path = kFolder + ("/" + file.generic_string());
  const std::string recorded = dialogue.Recorded();
  if (recorded == ReadProjectFile(path)) return;
  std::ofstream(ProjectFile(path), std::ios::binary) << recorded;
  ADD_FAILURE() << "written anew: " << path;
}

}  // namespace

std::filesystem::path DialogueRoot() {
  return ProjectFile(kFolder);
}

std::vector<std::filesystem::path> DialogueFiles(const std::vector<std::string>& folders) {
  const auto root = DialogueRoot();
  std::vector<std::filesystem::path> files;
  for (const std::string& folder : folders) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root / folder)) {
      if (entry.is_directory() || entry.path().filename() == kSharedFileName) continue;
      files.push_back(entry.path().lexically_relative(root));
    }
  }
  std::ranges::sort(files);
  return files;
}

std::string DialogueName(const std::filesystem::path& file) {
  std::string name = std::filesystem::path(file).replace_extension().generic_string();
  std::ranges::replace(name, '/', '_');
  return name;
}

void RecordDialogues() {
  records_dialogues = true;
  ::testing::AddGlobalTestEnvironment(new FailedRun);
}

bool RecordsDialogues() {
  return records_dialogues;
}

void ReplayDialogue(const std::filesystem::path& file,
                    const std::function<void(Dialogue&)>& replay) {
  try {
    Dialogue dialogue(DialogueRoot(), file,
                      records_dialogues ? Dialogue::Use::kRecord : Dialogue::Use::kReplay);
    replay(dialogue);
    dialogue.ExpectEnd();
    if (records_dialogues) SaveRecorded(file, dialogue);
  } catch (const std::exception& mismatch) {
    ADD_FAILURE() << mismatch.what();
  }
}

}  // namespace brantel
