#include "pager/pager.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "pager/pager_description.h"
#include "tests/unit/allocation_counter.h"
#include "tests/unit/notifier/acting_host.h"
#include "tests/unit/port/modem_notifier_fixture.h"

namespace brantel {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

// What a modem and the centres of all protocols say to what they are sent.
std::string AnswerTo(const std::string& sent) {
  if (sent.starts_with("ATDT")) return "\r\nCONNECT 2400\r\n";
  if (sent.starts_with("AT")) return "\r\nOK\r\n";
  if (sent.starts_with("\x1BPG1")) return "\x06\r\x1B[p\r";
  if (sent.starts_with("\x02"
                       "123\r"))
    return "\x06\r";
  if (sent.starts_with('\x02')) return "\x02/R/02/A/\x03";
  if (sent.starts_with("8000C00000")) return "28";
  if (sent == "\r") return "ID= READY";
  return "";
}

class PagerTest : public ModemNotifierFixture {
 protected:
  PagerTest() : ModemNotifierFixture(kPager, std::nullopt, {}) {
    instance_.set_text(pager_field::kPagerNumber, "5550200");
    instance_.set_text(pager_field::kPagerId, "123");
    instance_.set_text(pager_field::kMessage, "HI");
    instance_.set_text(pager_field::kProtocol, "TAP");
    modem_.answer_to = AnswerTo;
  }

  std::unique_ptr<Notifier> Make() override {
    return std::make_unique<Pager>(files_, settings_, modem_, clock_, ucp_counter_);
  }

  // UCP frames are numbered.
  void BeginAnew() override {
    ModemNotifierFixture::BeginAnew();
    ucp_counter_ = 0;
  }

  void SetProtocol(std::string_view name) {
    instance_.set_text(pager_field::kProtocol, std::string(name));
  }

  UcpTransactionCounter ucp_counter_ = 0;
};

TEST_F(PagerTest, ReadsItsSettingsInTheirOrder) {
  instance_.set_integer(pager_field::kSettingsProfile, 2);
  ASSERT_EQ(Send(), kOk);
  EXPECT_THAT(settings_.calls, ElementsAre(R"(open SOFTWARE\Brantel\Vantrel\notification\Pager\02)",
                                           "read Settings_COMPort", "read Settings_Baud",
                                           "read Settings_ModemString", "read Settings_8N1"));
}

TEST_F(PagerTest, UsesTheDefaultsWhenTheSettingsCannotBeOpened) {
  settings_.opens = false;
  EXPECT_EQ(Send(), kOk);
  EXPECT_EQ(modem_.written.at(0), "ATE0Q0V1X4\r");
  EXPECT_THAT(modem_.rates, ElementsAre(300U));
}

TEST_F(PagerTest, ReadsInstanceAndSettingsAnewForEachAlert) {
  ASSERT_EQ(Send(), kOk);
  instance_.set_text(pager_field::kPagerNumber, "5550299");
  Set("Settings_Baud", "9600");
  ASSERT_EQ(Send(), kOk);
  EXPECT_THAT(modem_.written, Contains("ATDT5550299\r"));
  EXPECT_THAT(modem_.rates, ElementsAre(300U, 9600U));
}

TEST_F(PagerTest, FailsWithoutAHostAndTouchesNothing) {
  ExpectFailureWithoutAHost();
}

TEST_F(PagerTest, LetsASecondAlertOfTheSameObjectWaitAndThenFail) {
  FakeNotifierHost inner_host;
  EXPECT_EQ(SendInside("Got ID=", *notifier_, inner_host), kFail);
  ASSERT_EQ(inner_host.log.size(), 21U);
  EXPECT_EQ(inner_host.log.at(1), "port in use, delaying 19\r\n");
  EXPECT_EQ(inner_host.log.back(), "port in use, delaying 0\r\n");
  EXPECT_THAT(modem_.open_ports, IsEmpty());
  EXPECT_EQ(Send(), kOk);
}

TEST_F(PagerTest, LetsASecondObjectOnTheSamePortFailAtOnce) {
  FakeNotifierHost inner_host;
  const auto second = Make();
  EXPECT_EQ(SendInside("Got ID=", *second, inner_host), kFail);
  EXPECT_EQ(inner_host.log.back(), "open error 5\r\n");
  EXPECT_EQ(SendOn(*second, inner_host), kOk);
}

// The transaction reference of a UCP frame.
std::string ReferenceOf(const std::string& frame) {
  return frame.substr(1, 2);
}

TEST_F(PagerTest, CountsUcpMessagesOfAllObjectsAndBeginsAgainAfterAHundred) {
  SetProtocol("UCP-SMS");
  const auto second = Make();
  constexpr std::size_t kFrame = 3;  // behind the two commands to the modem and the call
  for (int message = 0; message < 101; ++message) {
    modem_.written.clear();
    ASSERT_EQ(SendOn(message % 2 == 0 ? *notifier_ : *second, host_), kOk);
    const std::string number = std::to_string(message % 100);
    EXPECT_EQ(ReferenceOf(modem_.written.at(kFrame)), (number.size() < 2 ? "0" : "") + number);
  }
  EXPECT_EQ(ReferenceOf(modem_.written.at(kFrame)), "00");
}

TEST_F(PagerTest, TellsWhenThereIsNoMemoryForAUcpFrame) {
  SetProtocol("UCP-SMS");
  FakeNotifierHost log;
  ActingHost host;
  host.at_log = [&](std::string_view text) {
    log.LogMessage(text);
    if (text.starts_with("returned")) FailNextAllocation();
  };
  instance_.set_text(pager_field::kPagerId, "0041791234567");
  EXPECT_EQ(SendOn(*notifier_, host), kFail);
  EXPECT_EQ(log.log.back(), "Failed alloc memory data\r\n");
  EXPECT_EQ(ucp_counter_, 0U);
  EXPECT_THAT(modem_.open_ports, IsEmpty());
}

struct ProtocolCase {
  const char* name;
  std::size_t log_lines;  // of a page that is delivered
  std::uint32_t busy_wait;
};

void PrintTo(const ProtocolCase& protocol, std::ostream* stream) {
  *stream << protocol.name;
}

class PagerProtocolTest : public PagerTest, public ::testing::WithParamInterface<ProtocolCase> {
 protected:
  PagerProtocolTest() { SetProtocol(GetParam().name); }
};

INSTANTIATE_TEST_SUITE_P(Protocols, PagerProtocolTest,
                         ::testing::Values(ProtocolCase{"TAP", 23, 3000},
                                           ProtocolCase{"SMS-TAP", 23, 3000},
                                           ProtocolCase{"UCP-SMS", 17, 5000},
                                           ProtocolCase{"NTT", 18, 180000}));

TEST_P(PagerProtocolTest, DeliversWhicheverLineOfTheLogFindsNoMemory) {
  ExpectDeliveryWithoutMemoryForALine(GetParam().log_lines);
}

TEST_P(PagerProtocolTest, DeliversWhateverIsAllocatedForTheLogFindsNoMemory) {
  ASSERT_EQ(Send(), kOk);
  const std::vector<std::string> written = modem_.written;
  ASSERT_THAT(written, Contains("+++"));
  ExpectOneLineLost(SendWithoutMemoryForTheLog(kOk, written), GetParam().log_lines);
}

// The line of a page that the centre refuses is as much in need of being hung up.
TEST_P(PagerProtocolTest, HangsUpAfterAFailureWhateverTheLogFindsNoMemoryFor) {
  modem_.answer_to = [](const std::string& sent) {
    return sent.starts_with("AT") || sent == "\r" || sent.starts_with('\x1B')
               ? AnswerTo(sent)
               : "\x02/R/02/N/02\x03";
  };
  ASSERT_EQ(Send(), kFail);
  const std::vector<std::string> written = modem_.written;
  ASSERT_THAT(written, Contains("+++"));
  SendWithoutMemoryForTheLog(kFail, written);
}

// UCP gives up much earlier.
class PagerRedialTest : public PagerProtocolTest {};

INSTANTIATE_TEST_SUITE_P(Protocols, PagerRedialTest,
                         ::testing::Values(ProtocolCase{"TAP", 0, 3000},
                                           ProtocolCase{"SMS-TAP", 0, 3000},
                                           ProtocolCase{"NTT", 0, 180000}));

TEST_P(PagerRedialTest, DoesNotGrowWithABusyNumber) {
  constexpr std::size_t kRedials = 1000;
  std::size_t dialled = 0;
  modem_.answer_to = [&](const std::string& sent) {
    const bool is_busy = sent.starts_with("ATDT") && dialled++ < kRedials;
    return is_busy ? "\r\nBUSY\r\n" : AnswerTo(sent);
  };
  std::size_t waits = 0;
  std::size_t at_first_wait = 0;
  std::size_t at_last_wait = 0;
  clock_.meanwhile = [&] {
    // What the fakes keep is not what is measured.
    modem_.written = {};
    const bool is_redial = clock_.waits == std::vector{GetParam().busy_wait};
    clock_.waits = {};
    if (!is_redial) return;
    at_last_wait = AllocatedBytes();
    if (waits++ == 0) at_first_wait = at_last_wait;
  };
  ActingHost host;
  EXPECT_EQ(SendOn(*notifier_, host), kOk);
  EXPECT_EQ(waits, kRedials);
  EXPECT_GT(at_first_wait, 0U);
  EXPECT_EQ(at_last_wait, at_first_wait);
}

class PagerFaultTest : public PagerTest, public ::testing::WithParamInterface<FaultCase> {};

TEST_P(PagerFaultTest, ClosesThePortAndTellsTheTruth) {
  SetProtocol(GetParam().session);
  ExpectTruthAtEachTransfer(GetParam());
}

// Writes and reads of TAP: initialisation, call, prompt, log-in, block, end of transmission (a
// write and a read each), and the hang-up's two writes and its read.
INSTANTIATE_TEST_SUITE_P(
    Tap, PagerFaultTest,
    ::testing::Values(FaultCase{"fails once", "TAP", kBroken, false, "SSFFFSFFFFSSSSS"},
                      FaultCase{"fails for good", "TAP", kBroken, true, "FFFFFFFFFFSSSSS"},
                      FaultCase{"silent once", "TAP", kSilent, false, "SSSFSSSSSFSSSSS"},
                      FaultCase{"silent for good", "TAP", kSilent, true, "FFFFFFFFFFSSSSS"},
                      FaultCase{"rubbish once", "TAP", kRubbish, false, "SSSFSSSSSFSSSSS"},
                      FaultCase{"rubbish for good", "TAP", kRubbish, true, "FFFFFFFFFFSSSSS"},
                      FaultCase{"100 bytes once", "TAP", kFull, false, "SSSFSSSSSFSSSSS"},
                      FaultCase{"100 bytes for good", "TAP", kFull, true, "FFFFFFFFFFSSSSS"},
                      FaultCase{"no carrier once", "TAP", kLost, false, "SSSFSFSFSFSSSSS"},
                      FaultCase{"no carrier for good", "TAP", kLost, true, "FFFFFFFFFFSSSSS"}));

INSTANTIATE_TEST_SUITE_P(
    SmsTap, PagerFaultTest,
    ::testing::Values(FaultCase{"fails once", "SMS-TAP", kBroken, false, "SSFFFSFFFFSSSSS"},
                      FaultCase{"fails for good", "SMS-TAP", kBroken, true, "FFFFFFFFFFSSSSS"},
                      FaultCase{"silent once", "SMS-TAP", kSilent, false, "SSSFSSSSSFSSSSS"},
                      FaultCase{"silent for good", "SMS-TAP", kSilent, true, "FFFFFFFFFFSSSSS"},
                      FaultCase{"rubbish once", "SMS-TAP", kRubbish, false, "SSSFSSSSSFSSSSS"},
                      FaultCase{"no carrier once", "SMS-TAP", kLost, false, "SSSFSFSFSFSSSSS"}));

// Of UCP: the modem's attention, initialisation, call, frame, and the hang-up's two writes.
INSTANTIATE_TEST_SUITE_P(
    Ucp, PagerFaultTest,
    ::testing::Values(FaultCase{"fails once", "UCP-SMS", kBroken, false, "FFFFFFFFSS"},
                      FaultCase{"fails for good", "UCP-SMS", kBroken, true, "FFFFFFFFSS"},
                      FaultCase{"silent once", "UCP-SMS", kSilent, false, "SSSSSSSSSS"},
                      FaultCase{"silent for good", "UCP-SMS", kSilent, true, "FFFFFFFFSS"},
                      FaultCase{"rubbish once", "UCP-SMS", kRubbish, false, "SSSSSFSFSS"},
                      FaultCase{"rubbish for good", "UCP-SMS", kRubbish, true, "FFFFFFFFSS"},
                      FaultCase{"100 bytes once", "UCP-SMS", kFull, false, "SSSSSFSFSS"},
                      FaultCase{"100 bytes for good", "UCP-SMS", kFull, true, "FFFFFFFFSS"},
                      FaultCase{"no carrier once", "UCP-SMS", kLost, false, "SSSSSFSFSS"},
                      FaultCase{"no carrier for good", "UCP-SMS", kLost, true, "FFFFFFFFSS"}));

// Of NTT: initialisation, call, prompt, line, the read behind its answer, and the hang-up.
INSTANTIATE_TEST_SUITE_P(
    Ntt, PagerFaultTest,
    ::testing::Values(FaultCase{"fails once", "NTT", kBroken, false, "SSFFFSFFSSSS"},
                      FaultCase{"fails for good", "NTT", kBroken, true, "FFFFFFFFSSSS"},
                      FaultCase{"silent once", "NTT", kSilent, false, "SSSFSSSFSSSS"},
                      FaultCase{"silent for good", "NTT", kSilent, true, "FFFFFFFFSSSS"},
                      FaultCase{"rubbish once", "NTT", kRubbish, false, "SSSFSSSFSSSS"},
                      FaultCase{"rubbish for good", "NTT", kRubbish, true, "FFFFFFFFSSSS"},
                      FaultCase{"100 bytes once", "NTT", kFull, false, "SSSFSSSFSSSS"},
                      FaultCase{"100 bytes for good", "NTT", kFull, true, "FFFFFFFFSSSS"},
                      FaultCase{"no carrier once", "NTT", kLost, false, "SSSFSFSFSSSS"},
                      FaultCase{"no carrier for good", "NTT", kLost, true, "FFFFFFFFSSSS"}));

}  // namespace
}  // namespace brantel
