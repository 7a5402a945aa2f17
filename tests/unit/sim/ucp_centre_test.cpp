#include "sim/ucp_centre.h"

#include <gmock/gmock.h>

#include "tests/unit/sim/call_fixture.h"

namespace brantel::sim {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

const std::string kMessage =
    "\x02"
    "07/00041/O/02/1/0041791234567///3/4869/C3\x03";
const std::string kAccepted =
    "\x02"
    "07/00032/R/02/A/0041791234567/0C\x03";

class UcpCentreTest : public CallFixture {};

TEST_F(UcpCentreTest, TakesAMessageAndShowsIt) {
  Call("5550400");
  EXPECT_EQ(Answer(kMessage, 299), "");
  EXPECT_EQ(AnswerWithin(1), kAccepted);
  EXPECT_EQ(CentreNotes(),
            "takes a page for 0041791234567: \"Hi\"\n"
            "\"\\x0207/00032/R/02/A/0041791234567/0C\\x03\"\n");
}

TEST_F(UcpCentreTest, TakesWhatComesByteForByteAmongNoise) {
  Call("5550400");
  std::string answers;
  for (const char c : "noise\x03" + kMessage + "+++" + kMessage) {
    answers += Answer(std::string_view(&c, 1), 500);
  }
  EXPECT_EQ(answers, kAccepted + kAccepted);
}

TEST_F(UcpCentreTest, RefusesEveryMessageWithTheErrorOfItsNumber) {
  for (int error = 0; error < 100; ++error) {
    const std::string digits = {static_cast<char>('0' + error / 10),
                                static_cast<char>('0' + error % 10)};
    Call("55503" + digits);
    EXPECT_THAT(Answer(kMessage, 300), StartsWith("\x02"
                                                  "07/00022/R/02/N/" +
                                                  digits + "//"));
    HangUp();
  }
}

TEST_F(UcpCentreTest, RefusesAFrameThatIsNotInOrder) {
  Call("5550400");
  EXPECT_THAT(Answer("\x02"
                     "07/00041/O/02/1/0041791234567///3/4869/C4\x03",
                     300),
              StartsWith("\x02"
                         "07/00022/R/02/N/01//"));
  EXPECT_THAT(CentreNotes(), HasSubstr("refuses the frame: checksum C4 instead of C3\n"));
  EXPECT_EQ(Answer("\x02" + std::string(3000, '7'), 300), "");
  EXPECT_EQ(Answer(kMessage, 300), kAccepted);
}

TEST_F(UcpCentreTest, TakesNoMessageThatItDoesNotAccept) {
  for (const char* const number : {"5550300", "5550317", "5550401", "5550402", "5550403"}) {
    Call(number);
    Answer(kMessage, 1000);
    EXPECT_THAT(CentreNotes(), StartsWith("does not take the page for 0041791234567: \"Hi\"\n"))
        << number;
    HangUp();
  }
  Call("5550404");
  Answer(kMessage, 1000);
  EXPECT_EQ(CentreNotes(), "");
}

TEST_F(UcpCentreTest, AnswersInOtherWays) {
  Call("5550401");
  EXPECT_EQ(Answer(kMessage, 600000), "");
  HangUp();
  Call("5550402");
  EXPECT_EQ(Answer(kMessage, 300), "\x02\x03");
  HangUp();
  Call("5550403");
  EXPECT_EQ(Answer(kMessage, 300), "\x7F~{@}#\r\n");
  HangUp();
  Call("5550404");
  EXPECT_EQ(Answer(kMessage, 800), "\r\nNO CARRIER\r\n");
  Call("5550405");
  EXPECT_EQ(Answer(kMessage, 29999), "");
  EXPECT_EQ(AnswerWithin(1), kAccepted);
}

}  // namespace
}  // namespace brantel::sim
