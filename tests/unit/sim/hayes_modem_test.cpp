#include "sim/hayes_modem.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

namespace brantel::sim {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class HayesModemTest : public ::testing::Test {
 protected:
  void Use(HayesModem::Options options) {
    modem_.emplace(
        timeline_, transcript_, options, [this](std::string_view bytes) { sent_ += bytes; },
        [this] { unplugged_ = true; });
  }

  void SetUp() override { Use({}); }

  void Pass(int milliseconds) { timeline_.AdvanceTo(timeline_.now() + Time(milliseconds)); }

  // What the modem sends at once, and within so many milliseconds.
  std::string Answer(std::string_view bytes, int milliseconds = 0) {
    sent_.clear();
    modem_->Receive(bytes);
    Pass(milliseconds);
    return sent_;
  }

  std::string AnswerWithin(int milliseconds) { return Answer("", milliseconds); }

  // The rest of a call is tested without the echo.
  void Prepare() { ASSERT_EQ(Answer("ATE0\r"), "ATE0\r\r\nOK\r\n"); }

  // Dialling seven digits takes 700 ms, and this number answers after a second.
  void ConnectToEcho() {
    Prepare();
    ASSERT_EQ(Answer("ATDT5550109\r", 1699), "");
    ASSERT_EQ(AnswerWithin(1), "\r\nCONNECT\r\n");
  }

  Timeline timeline_;
  std::ostringstream stream_;
  Transcript transcript_{stream_, timeline_};
  std::string sent_;
  bool unplugged_ = false;
  std::optional<HayesModem> modem_;
};

TEST_F(HayesModemTest, EchoesUntilItIsToldNotTo) {
  EXPECT_EQ(Answer("A"), "A");
  EXPECT_EQ(Answer("T"), "T");
  EXPECT_EQ(Answer("E0\r"), "E0\r\r\nOK\r\n");
  EXPECT_EQ(Answer("AT\r"), "\r\nOK\r\n");
  EXPECT_EQ(Answer("ATE1\r"), "\r\nOK\r\n");
  EXPECT_EQ(Answer("at\r"), "at\r\r\nOK\r\n");
}

TEST_F(HayesModemTest, LooksAtSevenBitsOfACommand) {
  EXPECT_EQ(Answer("\xC1\xD4"
                   "E0\x8D"),
            "\xC1\xD4"
            "E0\x8D\r\nOK\r\n");
}

TEST_F(HayesModemTest, KeepsAStuckEcho) {
  Use({.echo_is_stuck = true});
  EXPECT_EQ(Answer("ATE0\r"), "ATE0\r\r\nOK\r\n");
  EXPECT_EQ(Answer("AT\r"), "AT\r\r\nOK\r\n");
}

TEST_F(HayesModemTest, AnswersInNumbersOrNotAtAll) {
  Prepare();
  EXPECT_EQ(Answer("ATV0\r"), "0\r");
  EXPECT_EQ(Answer("ATY\r"), "4\r");
  EXPECT_EQ(Answer("ATS8?\r"), "002\r\n0\r");
  EXPECT_EQ(Answer("ATQ1\r"), "");
  EXPECT_EQ(Answer("ATQ0V1\r"), "\r\nOK\r\n");
}

TEST_F(HayesModemTest, RefusesWhatItDoesNotKnow) {
  Prepare();
  for (const char* const line : {"ATY\r", "ATE2\r", "ATX5\r", "ATS\r", "ATS99?\r", "ATS8=256\r",
                                 "ATS8\r", "AT&\r", "ATS8=99999999999\r"}) {
    EXPECT_EQ(Answer(line), "\r\nERROR\r\n") << line;
  }
  EXPECT_EQ(Answer("AT" + std::string(300, 'M') + "\r"), "\r\nERROR\r\n");
}

TEST_F(HayesModemTest, TakesTheUsualInitialisation) {
  EXPECT_EQ(Answer("ATE0Q0V1X4\r"), "ATE0Q0V1X4\r\r\nOK\r\n");
  EXPECT_EQ(Answer("AT&F E0 L1 M0 S0=0 &C1\r"), "\r\nOK\r\n");
  EXPECT_EQ(Answer("ATS7=30 S7?\r"), "\r\n030\r\n\r\nOK\r\n");
  EXPECT_EQ(Answer("ATX\b\r"), "\r\nOK\r\n");
  EXPECT_EQ(Answer("noise AATZ\r"), "\r\nOK\r\n");
  EXPECT_EQ(Answer("AT\r"), "AT\r\r\nOK\r\n");
  EXPECT_EQ(Answer("ATA\r"), "ATA\r\r\nNO CARRIER\r\n");
}

TEST_F(HayesModemTest, PagesANumericPager) {
  Prepare();
  EXPECT_EQ(Answer("ATDT5550100,,42*7#\r", 6000), "");
  EXPECT_THAT(stream_.str(), HasSubstr("    2.200  line   is answered\n"));
  EXPECT_THAT(stream_.str(), HasSubstr("    5.100  pager  shows 42-7\n"));
  // A pager has no modem: nothing more is heard of it.
  EXPECT_EQ(AnswerWithin(40000), "");
  EXPECT_EQ(AnswerWithin(20000), "\r\nNO CARRIER\r\n");
}

TEST_F(HayesModemTest, KeysInVainBeforeAnybodyHasAnswered) {
  Prepare();
  EXPECT_EQ(Answer("ATDT5550112,12#\r", 20000), "");
  EXPECT_THAT(stream_.str(), HasSubstr("is answered"));
  EXPECT_THAT(stream_.str(), Not(HasSubstr("shows")));
}

TEST_F(HayesModemTest, ShowsADigitThatNoHashFollowsWhenTheCallerHangsUp) {
  Prepare();
  Answer("ATDT5550100,7\r", 5000);
  EXPECT_THAT(stream_.str(), Not(HasSubstr("shows")));
  EXPECT_EQ(Answer("+++"), "\r\nNO CARRIER\r\n");
  EXPECT_THAT(stream_.str(), HasSubstr("pager  shows 7\n"));
  EXPECT_EQ(Answer("ATH0\r"), "\r\nOK\r\n");
}

TEST_F(HayesModemTest, PausesAsLongAsItsRegisterSays) {
  Prepare();
  ASSERT_EQ(Answer("ATS8=1DT5550100,,7#\r", 2799), "");
  EXPECT_THAT(stream_.str(), Not(HasSubstr("shows")));
  Pass(1);
  EXPECT_THAT(stream_.str(), HasSubstr("    2.800  pager  shows 7\n"));
}

struct NumberCase {
  const char* number;
  int milliseconds;  // from the dial command to the answer
  const char* answer;
};

void PrintTo(const NumberCase& number_case, std::ostream* stream) {
  *stream << number_case.number;
}

class TelephoneNumberTest : public HayesModemTest,
                            public ::testing::WithParamInterface<NumberCase> {};

TEST_P(TelephoneNumberTest, DoesWhatTheTelephoneBookSays) {
  Prepare();
  const std::string command = std::string("ATDT") + GetParam().number + "\r";
  EXPECT_EQ(Answer(command, GetParam().milliseconds - 1), "");
  EXPECT_EQ(AnswerWithin(1), GetParam().answer);
}

INSTANTIATE_TEST_SUITE_P(Numbers, TelephoneNumberTest,
                         ::testing::Values(NumberCase{"5550100", 50700, "\r\nNO CARRIER\r\n"},
                                           NumberCase{"5550101", 1700, "\r\nBUSY\r\n"},
                                           NumberCase{"5550102", 3700, "\r\nNO CARRIER\r\n"},
                                           NumberCase{"5550103", 1200, "\r\nNO DIALTONE\r\n"},
                                           NumberCase{"5550104", 6700, "\r\nNO ANSWER\r\n"},
                                           NumberCase{"5550106", 40700, "\r\nCONNECT\r\n"},
                                           NumberCase{"5550108", 1700, "\r\nBUSY\r\n"},
                                           NumberCase{"5550109", 1700, "\r\nCONNECT\r\n"},
                                           NumberCase{"5550110", 1700, "\r\nCONNECT\r\n"},
                                           NumberCase{"5559999", 3700, "\r\nNO CARRIER\r\n"}));

TEST_F(HayesModemTest, SaysNothingOfASilentCallUntilItIsAborted) {
  Prepare();
  EXPECT_EQ(Answer("ATDT5550105\r", 600000), "");
  EXPECT_EQ(Answer("A"), "\r\nNO CARRIER\r\n");
  EXPECT_EQ(Answer("AT\r"), "\r\nOK\r\n");
}

TEST_F(HayesModemTest, SaysGarbageWithoutAnEnd) {
  Prepare();
  EXPECT_EQ(Answer("ATDT5550107\r", 600000), std::string(120, '\xFE'));
}

TEST_F(HayesModemTest, IsBusyTwiceAndThenConnects) {
  Prepare();
  EXPECT_EQ(Answer("ATDT5550108\r", 2000), "\r\nBUSY\r\n");
  EXPECT_EQ(Answer("ATDT5550108\r", 2000), "\r\nBUSY\r\n");
  EXPECT_EQ(Answer("ATDT5550108\r", 2000), "\r\nCONNECT\r\n");
}

TEST_F(HayesModemTest, HearsTonesOfTheLineAsItsLevelAllows) {
  Prepare();
  struct Level {
    const char* busy;
    const char* dead;
  };
  const Level levels[] = {{"NO CARRIER", "NO CARRIER"},
                          {"NO CARRIER", "NO CARRIER"},
                          {"NO CARRIER", "NO DIALTONE"},
                          {"BUSY", "NO CARRIER"},
                          {"BUSY", "NO DIALTONE"}};
  int number = 0;
  for (const Level& level : levels) {
    const std::string dial = "ATX" + std::to_string(number++) + "DT";
    EXPECT_EQ(Answer(dial + "5550101\r", 2000), std::string("\r\n") + level.busy + "\r\n");
    EXPECT_EQ(Answer(dial + "5550103\r", 2000), std::string("\r\n") + level.dead + "\r\n");
  }
}

TEST_F(HayesModemTest, IsUnpluggedByOneNumber) {
  Prepare();
  Answer("ATDT5550111\r", 1699);
  EXPECT_FALSE(unplugged_);
  Pass(1);
  EXPECT_TRUE(unplugged_);
}

TEST_F(HayesModemTest, CarriesDataWhenItIsConnected) {
  ConnectToEcho();
  EXPECT_EQ(Answer("AT\r"), "AT\r");
  EXPECT_EQ(Answer(std::string_view("a\0b", 3)), std::string("a\0b", 3));
}

TEST_F(HayesModemTest, ComesBackToItsCommandsByPlusSignsBetweenPauses) {
  ConnectToEcho();
  Answer("data", 1000);
  EXPECT_EQ(Answer("+++", 1000), "+++\r\nOK\r\n");
  EXPECT_EQ(Answer("ATO\r"), "\r\nCONNECT\r\n");
  EXPECT_EQ(Answer("data", 1000), "data");
  EXPECT_EQ(Answer("+", 100), "+");
  EXPECT_EQ(Answer("++", 1000), "++\r\nOK\r\n");
  EXPECT_EQ(Answer("ATH0\r"), "\r\nOK\r\n");
  EXPECT_THAT(stream_.str(), HasSubstr("line   is hung up"));
  EXPECT_EQ(Answer("ATO\r"), "\r\nNO CARRIER\r\n");
}

TEST_F(HayesModemTest, TakesPlusSignsWithoutPausesForData) {
  ConnectToEcho();
  Answer("data", 800);
  EXPECT_EQ(Answer("+++", 5000), "+++") << "too soon after data";
  EXPECT_EQ(Answer("+++", 800), "+++");
  EXPECT_EQ(Answer("ATH0\r", 5000), "ATH0\r") << "too soon before data";
  EXPECT_EQ(Answer("+++x", 5000), "+++x");
  EXPECT_EQ(Answer("++++", 5000), "++++");
}

TEST_F(HayesModemTest, LosesTheCarrierOfAComputerThatGoesDown) {
  Prepare();
  ASSERT_EQ(Answer("ATDT5550110\r", 1700), "\r\nCONNECT\r\n");
  EXPECT_EQ(AnswerWithin(2999), "");
  EXPECT_EQ(AnswerWithin(1), "\r\nNO CARRIER\r\n");
  EXPECT_EQ(Answer("AT\r"), "\r\nOK\r\n");
}

// With DTR a host leaves its call, whatever it was doing.
TEST_F(HayesModemTest, EndsADialledCallWhenItLosesDtr) {
  Prepare();
  Answer("ATDT5550109\r", 300);
  modem_->LoseDtr();
  EXPECT_EQ(AnswerWithin(60000), "");
  EXPECT_EQ(Answer("AT\r"), "\r\nOK\r\n");
  EXPECT_THAT(stream_.str(), Not(HasSubstr("is answered")));
}

TEST_F(HayesModemTest, EndsAConnectionWhenItLosesDtr) {
  ConnectToEcho();
  modem_->LoseDtr();
  EXPECT_THAT(stream_.str(), HasSubstr("modem  loses DTR\n    1.700  line   is hung up\n"));
  EXPECT_EQ(Answer("ATO\r"), "\r\nNO CARRIER\r\n");
}

TEST_F(HayesModemTest, EndsAnEscapedConnectionWhenItLosesDtr) {
  ConnectToEcho();
  Answer("", 1000);
  Answer("+++", 500);
  modem_->LoseDtr();
  EXPECT_EQ(AnswerWithin(60000), "");
  EXPECT_EQ(Answer("AT\r"), "\r\nOK\r\n");
}

TEST_F(HayesModemTest, ForgetsHalfACommandWhenItLosesDtr) {
  Prepare();
  Answer("ATDT555");
  modem_->LoseDtr();
  EXPECT_EQ(Answer("0109\r", 60000), "");
  EXPECT_EQ(Answer("AT\r"), "\r\nOK\r\n") << "what was set stays";
}

TEST_F(HayesModemTest, FetchesAnOutsideLine) {
  Prepare();
  EXPECT_EQ(Answer("ATDT9,5550101\r", 5000), "\r\nBUSY\r\n");
}

TEST_F(HayesModemTest, IsDeaf) {
  Use({.answering = Answering::kNone});
  EXPECT_EQ(Answer("AT\r", 60000), "");
}

TEST_F(HayesModemTest, AnswersLate) {
  Use({.answering = Answering::kLate});
  EXPECT_EQ(Answer("AT\r", 2499), "AT\r");
  EXPECT_EQ(AnswerWithin(1), "\r\nOK\r\n");
}

TEST_F(HayesModemTest, AnswersGarbage) {
  Use({.answering = Answering::kGarbage});
  EXPECT_EQ(Answer("AT\r"), "\xC1\xD4\x8D\x8D\x8A\xCF\xCB\x8D\x8A");
}

TEST_F(HayesModemTest, AnswersWithoutAnEnd) {
  Use({.answering = Answering::kFlood});
  EXPECT_EQ(Answer("AT\r"), "AT\r" + std::string(300, 'U'));
}

TEST_F(HayesModemTest, WritesWhatHappensWithTheTime) {
  Pass(12345);
  Answer("AT\x01\"\\\r");
  EXPECT_EQ(stream_.str(),
            "   12.345  host   \"AT\\x01\\\"\\\\\\r\"\n"
            "   12.345  modem  \"AT\\x01\\\"\\\\\\r\"\n"
            "   12.345  modem  \"\\r\\nERROR\\r\\n\"\n");
}

}  // namespace
}  // namespace brantel::sim
