#include "sim/tap_centre.h"

#include <gmock/gmock.h>

#include "tests/unit/sim/call_fixture.h"

namespace brantel::sim {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

const std::string kGoAhead = "\x06\r\x1B[p\r";
const std::string kLogIn = "\x1BPG1\r";
const std::string kBlock =
    "\x02"
    "123\rABC\r\x03"
    "17;\r";
const std::string kAck = "\x06\r";
const std::string kNak = "\x15\r";
const std::string kGoodbye = "\x1B\x04\r";
const std::string kNoCarrier = "\r\nNO CARRIER\r\n";

class TapCentreTest : public CallFixture {
 protected:
  void LogIn(const std::string& number) {
    Call(number);
    ASSERT_EQ(Answer("\r", 300), "ID=");
    ASSERT_EQ(Answer(kLogIn, 300), kGoAhead);
    CentreNotes();
  }
};

TEST_F(TapCentreTest, TakesAPageAndShowsIt) {
  Call("5550200");
  EXPECT_EQ(AnswerWithin(60000), "") << "the caller speaks first";
  EXPECT_EQ(Answer("\r", 299), "");
  EXPECT_EQ(AnswerWithin(1), "ID=");
  EXPECT_EQ(Answer("\x1BPG1secret\r", 300), kGoAhead);
  EXPECT_EQ(Answer(kBlock, 300), kAck);
  EXPECT_EQ(Answer("\x04\r", 800), kGoodbye + kNoCarrier);
  EXPECT_EQ(CentreNotes(),
            "\"ID=\"\n"
            "is logged in to with password \"secret\"\n"
            "\"\\x06\\r\"\n"
            "\"\\x1B[p\\r\"\n"
            "takes a page for 123: \"ABC\"\n"
            "\"\\x06\\r\"\n"
            "\"\\x1B\\x04\\r\"\n");
}

TEST_F(TapCentreTest, TakesWhatComesByteForByte) {
  Call("5550200");
  std::string answers;
  for (const char c : "\r" + kLogIn + kBlock + "\x04\r") {
    answers += Answer(std::string_view(&c, 1), 500);
  }
  EXPECT_EQ(answers, "ID=" + kGoAhead + kAck + kGoodbye);
}

TEST_F(TapCentreTest, PromptsOnceForCallersWhoAskSeveralTimes) {
  Call("5550202");
  EXPECT_EQ(Answer("\r", 2000), "");
  EXPECT_EQ(Answer("\r\r", 5999), "");
  EXPECT_EQ(AnswerWithin(1), "ID=");
  EXPECT_EQ(AnswerWithin(60000), "");
  EXPECT_EQ(Answer("\r", 8000), "ID=");
  EXPECT_EQ(Answer("M\r", 8000), "ID=");
}

TEST_F(TapCentreTest, WantsThePassword) {
  Call("5550201");
  EXPECT_EQ(Answer(kLogIn, 300), kNak);
  EXPECT_EQ(Answer("\x1BPG1secre\r", 300), kNak);
  EXPECT_EQ(Answer("\x1BPG1secret\r", 300), kGoAhead);
}

TEST_F(TapCentreTest, HangsUpOnTheThirdWrongPassword) {
  Call("5550201");
  Answer(kLogIn + kLogIn, 300);
  EXPECT_EQ(Answer(kLogIn, 800), kGoodbye + kNoCarrier);
}

TEST_F(TapCentreTest, KeepsItsPromptsToItself) {
  Call("5550203");
  EXPECT_EQ(Answer("\r", 60000), "");
}

TEST_F(TapCentreTest, WantsTheLogInTwice) {
  Call("5550204");
  EXPECT_EQ(Answer("\r", 300), "ID=");
  EXPECT_EQ(Answer(kLogIn, 300), "ID=");
  EXPECT_EQ(Answer(kLogIn, 300), kGoAhead);
}

TEST_F(TapCentreTest, GoesAheadLateOrNever) {
  Call("5550205");
  EXPECT_EQ(Answer(kLogIn, 14999), kAck);
  EXPECT_EQ(AnswerWithin(1), "\x1B[p\r");
  Answer("\x04\r", 1000);
  Call("5550206");
  EXPECT_EQ(Answer(kLogIn, 60000), kAck);
}

TEST_F(TapCentreTest, RefusesSoManyBlocks) {
  LogIn("5550208");
  EXPECT_EQ(Answer(kBlock, 300), kNak);
  EXPECT_EQ(Answer(kBlock, 300), kNak);
  EXPECT_EQ(Answer(kBlock, 300), kAck);
  EXPECT_EQ(CentreNotes(),
            "refuses the block: this time\n\"\\x15\\r\"\n"
            "refuses the block: this time\n\"\\x15\\r\"\n"
            "takes a page for 123: \"ABC\"\n\"\\x06\\r\"\n");
}

TEST_F(TapCentreTest, RefusesEveryBlock) {
  LogIn("5550209");
  for (int i = 0; i < 10; ++i) {
    EXPECT_EQ(Answer(kBlock, 300), kNak);
  }
}

TEST_F(TapCentreTest, RefusesABlockThatIsNotInOrder) {
  LogIn("5550200");
  EXPECT_EQ(Answer("\x02"
                   "123\rABC\r\x03"
                   "17:\r",
                   300),
            kNak);
  EXPECT_EQ(Answer("\x02\rABC\r\x03"
                   "0>5\r",
                   300),
            "\x1E\r");
  EXPECT_EQ(Answer("\x02" + std::string(2000, 'x'), 300), kNak);
  EXPECT_EQ(Answer(kBlock, 300), kAck);
  EXPECT_EQ(Answer("what\r", 300), "");
  EXPECT_THAT(CentreNotes(), HasSubstr("does not understand \"what\"\n"));
}

TEST_F(TapCentreTest, AnswersBlocksInOtherWays) {
  LogIn("5550210");
  EXPECT_EQ(Answer(kBlock, 300), "\x1E\r");
  Answer("\x04\r", 1000);
  LogIn("5550211");
  EXPECT_EQ(Answer(kBlock, 800), kGoodbye + kNoCarrier);
  LogIn("5550212");
  EXPECT_EQ(Answer(kBlock, 60000), "");
}

TEST_F(TapCentreTest, TakesNoPageThatItDoesNotAcknowledge) {
  const std::string kUntaken = "does not take the page for 123: \"ABC\"\n";
  for (const char* const number : {"5550210", "5550212"}) {
    LogIn(number);
    Answer(kBlock, 1000);
    EXPECT_THAT(CentreNotes(), StartsWith(kUntaken)) << number;
    HangUp();
  }
  LogIn("5550211");
  EXPECT_EQ(Answer(kBlock, 1000), kGoodbye + kNoCarrier);
  EXPECT_THAT(CentreNotes(), StartsWith(kUntaken));
  LogIn("5550216");
  EXPECT_EQ(Answer(kBlock, 1000), kNoCarrier);
  EXPECT_EQ(CentreNotes(), "");
  LogIn("5550209");
  EXPECT_EQ(Answer(kBlock, 1000), kNak);
  EXPECT_THAT(CentreNotes(), Not(HasSubstr("take")));
}

TEST_F(TapCentreTest, TakesNoPageOfACallerWhoHangsUpFirst) {
  Call("5550220");
  EXPECT_EQ(Answer(kLogIn, 30000), kGoAhead);
  EXPECT_EQ(Answer(kBlock, 1000), "");
  CentreNotes();
  HangUp();
  AnswerWithin(60000);
  EXPECT_EQ(CentreNotes(), "");
}

TEST_F(TapCentreTest, LosesTheCarrierInsteadOfGoingOn) {
  Call("5550213");
  EXPECT_EQ(Answer("\r", 800), kNoCarrier);
  Call("5550214");
  EXPECT_EQ(Answer("\r", 300), "ID=");
  EXPECT_EQ(Answer(kLogIn, 800), kNoCarrier);
  LogIn("5550215");
  EXPECT_EQ(AnswerWithin(500), kNoCarrier);
  LogIn("5550216");
  EXPECT_EQ(Answer(kBlock, 800), kNoCarrier);
}

TEST_F(TapCentreTest, SaysSlow) {
  Call("5550217");
  EXPECT_EQ(Answer("\r", 300), "Slow\r");
  HangUp();
  Call("5550222");
  EXPECT_EQ(Answer("\r", 11999), "");
  EXPECT_EQ(AnswerWithin(1), "Slow ID=");
}

TEST_F(TapCentreTest, TakesItsTime) {
  for (const auto& [number, pace] :
       {std::pair("5550218", 3000), std::pair("5550219", 8000), std::pair("5550220", 30000)}) {
    Call(number);
    for (const std::string& said : {std::string("\r"), kLogIn, kBlock}) {
      EXPECT_EQ(Answer(said, pace - 1), "");
      EXPECT_NE(AnswerWithin(1), "");
    }
    EXPECT_THAT(Answer("\x04\r", pace + 500), StartsWith(kGoodbye));
  }
}

TEST_F(TapCentreTest, SaysNothingMoreWhenTheCallerHasHungUp) {
  Call("5550205");
  Answer(kLogIn, 1000);
  HangUp();
  EXPECT_EQ(AnswerWithin(60000), "");
}

TEST_F(TapCentreTest, IsBusyOnce) {
  EXPECT_EQ(Answer("ATDT5550221\r", 1700), "\r\nBUSY\r\n");
  EXPECT_EQ(Answer("ATDT5550221\r", 1700), "\r\nCONNECT\r\n");
  EXPECT_EQ(Answer("\r", 300), "ID=");
}

}  // namespace
}  // namespace brantel::sim
