#include "tests/unit/dialogue/dialogue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <set>

#include "tests/unit/dialogue/replay.h"

namespace brantel {
namespace {

using ::testing::AllOf;
using ::testing::HasSubstr;

// A folder of dialogues of the test's own.
class DialogueTest : public ::testing::Test {
 public:
  DialogueTest(const DialogueTest&) = delete;
  DialogueTest& operator=(const DialogueTest&) = delete;

 protected:
  DialogueTest() { std::filesystem::remove_all(root_); }
  ~DialogueTest() override { std::filesystem::remove_all(root_); }

  void Write(const std::string& file, const std::string& text) const {
    std::filesystem::create_directories((root_ / file).parent_path());
    std::ofstream(root_ / file, std::ios::binary) << text;
  }

  [[nodiscard]] Dialogue Open(const std::string& file,
                              Dialogue::Use use = Dialogue::Use::kReplay) const {
    return {root_, file, use};
  }

  // All lines of a dialogue, in one text.
  [[nodiscard]] std::string Lines(const std::string& file) const {
    Dialogue dialogue = Open(file);
    std::string text;
    while (!dialogue.AtEnd())
      text += JoinWords(dialogue.TakeLine()) + "\n";
    return text;
  }

  static std::string MismatchOf(const std::function<void()>& run) {
    try {
      run();
    } catch (const DialogueMismatch& mismatch) {
      return mismatch.what();
    }
    return "no mismatch";
  }

  [[nodiscard]] std::string MismatchOfLines(const std::string& file) const {
    return MismatchOf([&] { static_cast<void>(Lines(file)); });
  }

  // The dialogue after a recording, in which a line "run" is followed by these calls.
  [[nodiscard]] std::string Recorded(const std::string& file,
                                     const std::vector<Words>& calls) const {
    Dialogue dialogue = Open(file, Dialogue::Use::kRecord);
    while (dialogue.TakeLine() != Words{"run"}) {
    }
    for (const Words& call : calls) {
      dialogue.Expect(call);
    }
    dialogue.ExpectEnd();
    return dialogue.Recorded();
  }

 private:
  std::filesystem::path root_ = std::filesystem::temp_directory_path() /
                                (std::string("brantel_dialogues_") +
                                 ::testing::UnitTest::GetInstance()->current_test_info()->name());
};

TEST_F(DialogueTest, IncludesTheLinesOfABlock) {
  Write("modem/shared.txt", "# Remarks say nothing.\nblock ready\n\nflush\nlog OK\n");
  Write("modem/one.txt", "run\ninclude ready\nresult 0\n");
  EXPECT_EQ(Lines("modem/one.txt"), "run\nflush\nlog OK\nresult 0\n");
}

TEST_F(DialogueTest, PutsArgumentsInThePlaceOfParameters) {
  Write("shared.txt", "block sent TEXT\nlog \"sending \\\"$TEXT\\\"\\r\\n\"\nwrite $TEXT\n");
  Write("one.txt", "include sent \"A $TEXT\\r\"\n");
  EXPECT_EQ(Lines("one.txt"), "log \"sending \\\"A $TEXT\\r\\\"\\r\\n\"\nwrite \"A $TEXT\\r\"\n");
}

TEST_F(DialogueTest, IncludesBlocksOfTheFoldersAroundAndWithinBlocks) {
  Write("shared.txt", "block sent TEXT\nwrite $TEXT\n");
  Write("modem/shared.txt", "block dialled NUMBER\ninclude sent ATDT$NUMBER\nflush\n");
  Write("modem/tap/one.txt", "include dialled 55\n");
  EXPECT_EQ(Lines("modem/tap/one.txt"), "write ATDT55\nflush\n");
}

TEST_F(DialogueTest, DoesNotSeeTheBlocksOfOtherFolders) {
  Write("voice/shared.txt", "block sent\nwrite 1\n");
  Write("modem/one.txt", "\ninclude sent\n");
  EXPECT_EQ(MismatchOfLines("modem/one.txt"),
            "modem/one.txt:2: there is no such block before this line");
}

TEST_F(DialogueTest, RefusesABlockThatIncludesItselfOrOneBehindIt) {
  Write("itself/shared.txt", "block sent\nflush\ninclude sent\n");
  Write("itself/one.txt", "");
  EXPECT_EQ(MismatchOfLines("itself/one.txt"),
            "itself/shared.txt:3: there is no such block before this line");
  Write("behind/shared.txt", "block sent\ninclude later\nblock later\n");
  Write("behind/one.txt", "");
  EXPECT_EQ(MismatchOfLines("behind/one.txt"),
            "behind/shared.txt:2: there is no such block before this line");
}

TEST_F(DialogueTest, RefusesASecondBlockOfAName) {
  Write("shared.txt", "block sent\nflush\n");
  Write("modem/shared.txt", "block sent\nclose\n");
  Write("modem/one.txt", "");
  EXPECT_EQ(MismatchOfLines("modem/one.txt"),
            "modem/shared.txt:1: the block is there already: shared.txt: sent");
}

TEST_F(DialogueTest, RefusesOtherNumbersOfArgumentsAndUnknownParameters) {
  Write("shared.txt", "block sent TEXT\nwrite $TEXT\nblock odd\nwrite $NUMBER\n");
  Write("few.txt", "include sent\n");
  Write("many.txt", "include sent 1 2\n");
  Write("unknown.txt", "include odd\n");
  EXPECT_EQ(MismatchOfLines("few.txt"), "few.txt:1: shared.txt: sent has 1 parameters");
  EXPECT_EQ(MismatchOfLines("many.txt"), "many.txt:1: shared.txt: sent has 1 parameters");
  EXPECT_EQ(MismatchOfLines("unknown.txt"), "unknown.txt:1: there is no parameter $NUMBER");
}

TEST_F(DialogueTest, RefusesLinesBeforeTheFirstBlock) {
  Write("shared.txt", "flush\n");
  Write("one.txt", "");
  EXPECT_EQ(MismatchOfLines("one.txt"), "shared.txt:1: expected a block");
}

TEST_F(DialogueTest, NamesFileAndLineOfAMismatch) {
  Write("modem/one.txt", "# a remark\nrun\nwrite 1\n");
  EXPECT_EQ(MismatchOf([&] {
              Dialogue dialogue = Open("modem/one.txt");
              dialogue.TakeLine();
              dialogue.Expect({"write", "2"});
            }),
            "modem/one.txt:3: expected\n  write 1\nbut then came\n  write 2");
}

TEST_F(DialogueTest, NamesTheIncludesOfAMismatch) {
  Write("shared.txt", "block sent TEXT\nwrite $TEXT\nflush\n");
  Write("modem/shared.txt", "block dialled\nlog x\ninclude sent ATDT\n");
  Write("modem/one.txt", "run\ninclude dialled\n");
  EXPECT_THAT(MismatchOf([&] {
                Dialogue dialogue = Open("modem/one.txt");
                dialogue.TakeLine();
                dialogue.Expect({"log", "x"});
                dialogue.Expect({"write", "ATDT"});
                dialogue.Expect({"read"});
              }),
              AllOf(HasSubstr("modem/one.txt:2 (dialled, modem/shared.txt:3 (sent, shared.txt:3))"),
                    HasSubstr("expected\n  flush\nbut then came\n  read")));
}

TEST_F(DialogueTest, RecordsWhatIsUnchangedAsItIsWritten) {
  Write("shared.txt", "block sent TEXT\nwrite $TEXT\nflush\n");
  const std::string text =
      "# What it is about.\nsetting \"0\"\n\nrun\n# A remark.\ninclude sent \"1\"\n"
      "read 100 gives \"\"\nresult 0\n# The end.\n";
  Write("one.txt", text);
  EXPECT_EQ(Recorded("one.txt", {{"write", "1"}, {"flush"}, {"read", "100"}, {"result", "0"}}),
            text);
}

TEST_F(DialogueTest, RecordsCallsThatAreNewChangedOrGone) {
  Write("one.txt", "run\nwrite 1\nflush\nlog x\nread 100 gives OK\nresult 0\n");
  EXPECT_EQ(Recorded("one.txt", {{"open", "1"},
                                 {"write", "2"},
                                 {"log", "x"},
                                 {"log", "y"},
                                 {"read", "100"},
                                 {"result", "1"}}),
            "run\nopen 1\nwrite 2\nlog x\nlog y\nread 100 gives OK\nresult 1\n");
}

TEST_F(DialogueTest, RecordsAnIncludeInFullWhereItGoesOtherwise) {
  Write("shared.txt", "block sent TEXT\nlog x\nwrite $TEXT\nflush\n");
  Write("one.txt", "run\ninclude sent 1\ninclude sent 2\nresult 0\n");
  EXPECT_EQ(Recorded("one.txt", {{"log", "x"},
                                 {"write", "1"},
                                 {"flush"},
                                 {"log", "x"},
                                 {"write", "3"},
                                 {"flush"},
                                 {"result", "0"}}),
            "run\ninclude sent 1\nlog x\nwrite 3\nflush\nresult 0\n");
}

TEST_F(DialogueTest, AnswersAChangedCallAsTheOneBeforeIt) {
  Write("one.txt", "run\nwrite 1\nwrite 2 fails 5\nresult 0\n");
  Dialogue dialogue = Open("one.txt", Dialogue::Use::kRecord);
  dialogue.TakeLine();
  EXPECT_EQ(dialogue.Expect({"write", "1"}), Words());
  EXPECT_EQ(dialogue.Expect({"write", "3"}), (Words{"fails", "5"}));
}

TEST_F(DialogueTest, RecordsANewDialogueFromItsAnswers) {
  Write("one.txt", "run\nread 100 gives OK\n");
  EXPECT_EQ(Recorded("one.txt", {{"open", "1"}, {"read", "100"}, {"log", "OK"}, {"result", "0"}}),
            "run\nopen 1\nread 100 gives OK\nlog OK\nresult 0\n");
}

TEST_F(DialogueTest, RecordsRunsApart) {
  const std::string text = "run\nread gives 1\nresult 0\nwaited 5\nfield x\nrun\nread gives 2\n";
  Write("one.txt", text + "result 0\n");
  Dialogue dialogue = Open("one.txt", Dialogue::Use::kRecord);
  dialogue.TakeLine();
  dialogue.Expect({"result", "0"});
  dialogue.Expect({"waited", "5"});
  EXPECT_EQ(dialogue.TakeLine(), (Words{"field", "x"}));
  dialogue.TakeLine();
  EXPECT_EQ(dialogue.Expect({"read"}), (Words{"gives", "2"}));
  dialogue.Expect({"result", "0"});
  EXPECT_TRUE(dialogue.AtEnd());
  EXPECT_EQ(dialogue.Recorded(), "run\nresult 0\nwaited 5\nfield x\nrun\nread gives 2\nresult 0\n");
}

TEST_F(DialogueTest, RecordsWhatHappensDuringAWait) {
  Write("one.txt", "run\npump\nlog old\ntell 1\ntell 2\npumped\npump\ndone\npumped\nresult 0\n");
  Dialogue dialogue = Open("one.txt", Dialogue::Use::kRecord);
  dialogue.TakeLine();
  dialogue.Expect({"pump"});
  EXPECT_EQ(dialogue.TakeEvent("pump", {"tell", "done"}), (Words{"tell", "1"}));
  dialogue.Expect({"log", "new"});
  dialogue.Expect({"pumped"});
  dialogue.Expect({"pump"});
  EXPECT_EQ(dialogue.TakeEvent("pump", {"tell", "done"}), (Words{"done"}));
  EXPECT_THAT(MismatchOf([&] {
                dialogue.TakeEvent("pump", {"tell", "done"});
              }),
              HasSubstr("one.txt:8: nothing is left that could end the wait"));
  EXPECT_EQ(dialogue.Recorded(), "run\npump\ntell 1\nlog new\npumped\npump\ndone\n");
}

// A block that no dialogue includes any more is dead.
TEST(DialogueFilesTest, IncludeEveryBlock) {
  std::set<std::filesystem::path> folders;
  std::set<std::string> included;
  for (const auto& file : DialogueFiles({""})) {
    folders.insert(file.parent_path());
    included.merge(std::set(ReadDialogueFile(DialogueRoot(), file)->included));
  }
  std::set<std::string> blocks;
  for (const auto& folder : folders)
    blocks.merge(BlocksOf(DialogueRoot(), folder));
  EXPECT_EQ(included, blocks);
}

}  // namespace
}  // namespace brantel
