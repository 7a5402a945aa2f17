#include "sim/ntt_centre.h"

#include <gmock/gmock.h>

#include "tests/unit/sim/call_fixture.h"

namespace brantel::sim {
namespace {

using ::testing::HasSubstr;

const std::string kPageLine = "8000C00000********,10000,0312345678AAAAA,0007,002\x82\xA0\r";

class NttCentreTest : public CallFixture {};

TEST_F(NttCentreTest, TakesAPageAndShowsIt) {
  Call("5550528");
  EXPECT_EQ(Answer("\r", 299), "");
  EXPECT_EQ(AnswerWithin(1), "READY\r\n");
  EXPECT_EQ(Answer(kPageLine, 300), "28\r\n");
  EXPECT_EQ(CentreNotes(),
            "\"READY\\r\\n\"\n"
            "is given password \"0007\"\n"
            "takes a page for 0312345678: \"\\x82\\xA0\"\n"
            "\"28\\r\\n\"\n");
}

TEST_F(NttCentreTest, TakesWhatComesByteForByte) {
  Call("5550528");
  std::string answers;
  for (const char c : "\r" + kPageLine) {
    answers += Answer(std::string_view(&c, 1), 500);
  }
  EXPECT_EQ(answers, "READY\r\n28\r\n");
}

TEST_F(NttCentreTest, AnswersWithTheDigitsOfItsNumber) {
  for (const std::string digits : {"00", "10", "17", "28", "99"}) {
    Call("55505" + digits);
    EXPECT_EQ(Answer(kPageLine, 300), digits + "\r\n");
    HangUp();
  }
}

TEST_F(NttCentreTest, TakesNoPageThatItDoesNotAccept) {
  for (const char* const number : {"5550500", "5550517", "5550529", "5550607"}) {
    Call(number);
    Answer(kPageLine, 1000);
    EXPECT_THAT(CentreNotes(), HasSubstr("does not take the page for 0312345678: \"\\x82\\xA0\"\n"))
        << number;
    HangUp();
  }
  Call("5550606");
  Answer(kPageLine, 1000);
  EXPECT_EQ(CentreNotes(), "");
}

TEST_F(NttCentreTest, RefusesALineThatIsNotInOrder) {
  Call("5550528");
  EXPECT_EQ(Answer("hello\r", 300), "17\r\n");
  EXPECT_THAT(CentreNotes(), HasSubstr("refuses the line: layout\n"));
  EXPECT_EQ(Answer(std::string(3000, 'x'), 300), "");
  EXPECT_EQ(Answer(kPageLine, 300), "28\r\n");
}

TEST_F(NttCentreTest, IsReadyLateOrNever) {
  Call("5550600");
  EXPECT_EQ(Answer("\r", 60000), "");
  HangUp();
  Call("5550601");
  EXPECT_EQ(Answer("\r", 4000), "");
  EXPECT_EQ(Answer("\r\r", 3999), "");
  EXPECT_EQ(AnswerWithin(60000), "READY\r\n");
}

TEST_F(NttCentreTest, SaysSomethingElseThanReady) {
  Call("5550602");
  EXPECT_EQ(Answer("\r", 19999), "");
  EXPECT_EQ(AnswerWithin(1), "10\r\n");
  HangUp();
  Call("5550603");
  EXPECT_EQ(Answer("\r", 300), "17\r\n");
  HangUp();
  Call("5550604");
  EXPECT_EQ(Answer("\r", 300), "20\r\n");
  for (int i = 1; i < 10; ++i) {
    EXPECT_EQ(AnswerWithin(3999), "");
    EXPECT_EQ(AnswerWithin(1), "20\r\n");
  }
  EXPECT_EQ(AnswerWithin(60000), "");
}

TEST_F(NttCentreTest, LosesTheCarrierInsteadOfGoingOn) {
  Call("5550605");
  EXPECT_EQ(Answer("\r", 800), "\r\nNO CARRIER\r\n");
  Call("5550606");
  EXPECT_EQ(Answer("\r", 300), "READY\r\n");
  EXPECT_EQ(Answer(kPageLine, 800), "\r\nNO CARRIER\r\n");
}

TEST_F(NttCentreTest, HangsUpBehindItsAnswer) {
  Call("5550610");
  EXPECT_EQ(Answer("\r", 60000), "READY\r\n");
  EXPECT_EQ(Answer(kPageLine, 2299), "28\r\n");
  EXPECT_EQ(AnswerWithin(1), "\r\nNO CARRIER\r\n");
}

TEST_F(NttCentreTest, AnswersLateOrNever) {
  Call("5550607");
  EXPECT_EQ(Answer(kPageLine, 60000), "");
  HangUp();
  Call("5550608");
  EXPECT_EQ(Answer(kPageLine, 7999), "");
  EXPECT_EQ(AnswerWithin(1), "28\r\n");
}

}  // namespace
}  // namespace brantel::sim
