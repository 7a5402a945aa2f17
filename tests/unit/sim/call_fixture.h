#pragma once

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <string_view>

#include "sim/hayes_modem.h"
#include "sim/timeline.h"
#include "sim/transcript.h"

namespace brantel::sim {

// A caller with a modem, on a timeline that the test moves.
class CallFixture : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(Answer("ATE0\r"), "ATE0\r\r\nOK\r\n"); }

  // Calls a number with seven digits that answers after a second; dialling takes 700 ms.
  void Call(const std::string& number) {
    ASSERT_EQ(Answer("ATDT" + number + "\r", 1700), "\r\nCONNECT\r\n");
  }

  // What comes back within so many milliseconds of these bytes.
  std::string Answer(std::string_view bytes, int milliseconds = 0) {
    received_.clear();
    modem_.Receive(bytes);
    timeline_.AdvanceTo(timeline_.now() + Time(milliseconds));
    return received_;
  }

  std::string AnswerWithin(int milliseconds) { return Answer("", milliseconds); }

  // Ends the call as a caller does.
  void HangUp() {
    AnswerWithin(1000);
    ASSERT_EQ(Answer("+++", 1000), "\r\nOK\r\n");
    ASSERT_EQ(Answer("ATH0\r"), "\r\nOK\r\n");
  }

  // What the centre did, without the times: its lines of the transcript since the last look.
  std::string CentreNotes() {
    std::istringstream lines(stream_.str());
    stream_.str({});
    std::string notes;
    constexpr std::string_view kCentre = "  centre ";
    for (std::string line; std::getline(lines, line);) {
      const std::size_t start = line.find(kCentre);
      if (start != std::string::npos) notes += line.substr(start + kCentre.size()) + "\n";
    }
    return notes;
  }

 private:
  Timeline timeline_;
  std::ostringstream stream_;
  Transcript transcript_{stream_, timeline_};
  std::string received_;
  HayesModem modem_{
      timeline_, transcript_, {}, [this](std::string_view bytes) { received_ += bytes; }, [] {}};
};

}  // namespace brantel::sim
