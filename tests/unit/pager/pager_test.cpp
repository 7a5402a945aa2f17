#include "pager/pager.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>

#include "instance/instance_codec.h"
#include "pager/pager_description.h"
#include "tests/unit/allocation_counter.h"
#include "tests/unit/failing_allocations.h"
#include "tests/unit/instance/fake_instance_files.h"
#include "tests/unit/notifier/fake_notifier_host.h"
#include "tests/unit/port/fake_modem.h"
#include "tests/unit/system/fake_settings_store.h"
#include "tests/unit/system/virtual_clock.h"

namespace brantel {
namespace {

using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

// Keeps nothing, and lets the test act at each log line.
class ForgetfulHost final : public NotifierHost {
 public:
  std::function<void(std::string_view)> at_log = [](std::string_view) {};

  Result ExpandMessage(std::string&, EmptyText) override { return kOk; }
  void LogMessage(std::string_view text) override { at_log(text); }
  void LogMessage(std::u16string_view) override {}
  Result GetAlertTrigger(std::uint32_t&) override {
    ADD_FAILURE() << "the event does not matter";
    return kFail;
  }
};

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

class PagerTest : public ::testing::Test {
 protected:
  PagerTest() {
    instance_.set_text(pager_field::kPagerNumber, "5550200");
    instance_.set_text(pager_field::kPagerId, "123");
    instance_.set_text(pager_field::kMessage, "HI");
    instance_.set_text(pager_field::kProtocol, "TAP");
    modem_.answer_to = AnswerTo;
  }

  Result Send() { return SendOn(pager_, host_); }

  Result SendOn(Pager& pager, NotifierHost& host) {
    files_.files["alert"] = EncodeInstance(kPager.instances, instance_);
    return pager.Send({u"alert", "alert"}, &host);
  }

  void SetProtocol(std::string_view name) {
    instance_.set_text(pager_field::kProtocol, std::string(name));
  }

  Instance instance_{kPager.instances.fields.size()};
  FakeInstanceFiles files_;
  FakeSettingsStore settings_;
  FakeModem modem_;
  VirtualClock clock_;
  FakeNotifierHost host_;
  UcpTransactionCounter ucp_counter_ = 0;
  Pager pager_{files_, settings_, modem_, clock_, ucp_counter_};
};

TEST_F(PagerTest, ReadsItsSettingsInTheirOrder) {
  instance_.set_integer(pager_field::kSettingsProfile, 2);
  ASSERT_EQ(Send(), kOk);
  EXPECT_THAT(settings_.calls,
              ElementsAre("open SOFTWARE\\Brantel\\Vantrel\\notification\\Pager\\02",
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
  settings_.keys["SOFTWARE\\Brantel\\Vantrel\\notification\\Pager"]["Settings_Baud"] = {
      SettingType::kText, "9600"};
  ASSERT_EQ(Send(), kOk);
  EXPECT_THAT(modem_.written, Contains("ATDT5550299\r"));
  EXPECT_THAT(modem_.rates, ElementsAre(300U, 9600U));
}

TEST_F(PagerTest, FailsWithoutAHostAndTouchesNothing) {
  files_.files["alert"] = EncodeInstance(kPager.instances, instance_);
  EXPECT_EQ(pager_.Send({u"alert", "alert"}, nullptr), kFail);
  files_.files.clear();
  EXPECT_EQ(pager_.Send({u"alert", "alert"}, nullptr), kFail);
  EXPECT_THAT(settings_.calls, IsEmpty());
  EXPECT_EQ(modem_.transfers, 0U);
}

TEST_F(PagerTest, LetsASecondAlertOfTheSameObjectWaitAndThenFail) {
  ForgetfulHost host;
  FakeNotifierHost inner_host;
  Result inner = kOk;
  host.at_log = [&](std::string_view text) {
    if (text == "Got ID=") inner = SendOn(pager_, inner_host);
  };
  EXPECT_EQ(SendOn(pager_, host), kOk);
  EXPECT_EQ(inner, kFail);
  ASSERT_EQ(inner_host.log.size(), 21U);
  EXPECT_EQ(inner_host.log.at(1), "port in use, delaying 19\r\n");
  EXPECT_EQ(inner_host.log.back(), "port in use, delaying 0\r\n");
  EXPECT_THAT(modem_.open_ports, IsEmpty());
  EXPECT_EQ(SendOn(pager_, host), kOk);
}

TEST_F(PagerTest, LetsASecondObjectOnTheSamePortFailAtOnce) {
  ForgetfulHost host;
  FakeNotifierHost inner_host;
  Result inner = kOk;
  Pager second(files_, settings_, modem_, clock_, ucp_counter_);
  host.at_log = [&](std::string_view text) {
    if (text == "Got ID=") inner = SendOn(second, inner_host);
  };
  EXPECT_EQ(SendOn(pager_, host), kOk);
  EXPECT_EQ(inner, kFail);
  EXPECT_EQ(inner_host.log.back(), "open error 5\r\n");
  EXPECT_EQ(SendOn(second, inner_host), kOk);
}

// The transaction reference of a UCP frame.
std::string ReferenceOf(const std::string& frame) {
  return frame.substr(1, 2);
}

TEST_F(PagerTest, CountsUcpMessagesOfAllObjectsAndBeginsAgainAfterAHundred) {
  SetProtocol("UCP-SMS");
  Pager second(files_, settings_, modem_, clock_, ucp_counter_);
  constexpr std::size_t kFrame = 3;  // behind the two commands to the modem and the call
  for (int message = 0; message < 101; ++message) {
    modem_.written.clear();
    ASSERT_EQ(SendOn(message % 2 == 0 ? pager_ : second, host_), kOk);
    const std::string number = std::to_string(message % 100);
    EXPECT_EQ(ReferenceOf(modem_.written.at(kFrame)), (number.size() < 2 ? "0" : "") + number);
  }
  EXPECT_EQ(ReferenceOf(modem_.written.at(kFrame)), "00");
}

TEST_F(PagerTest, TellsWhenThereIsNoMemoryForAUcpFrame) {
  SetProtocol("UCP-SMS");
  FakeNotifierHost log;
  ForgetfulHost host;
  host.at_log = [&](std::string_view text) {
    log.LogMessage(text);
    if (text.starts_with("returned")) FailNextAllocation();
  };
  instance_.set_text(pager_field::kPagerId, "0041791234567");
  EXPECT_EQ(SendOn(pager_, host), kFail);
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

  // UCP frames are numbered.
  void BeginAnew() {
    modem_.written.clear();
    ucp_counter_ = 0;
  }
};

INSTANTIATE_TEST_SUITE_P(Protocols, PagerProtocolTest,
                         ::testing::Values(ProtocolCase{"TAP", 23, 3000},
                                           ProtocolCase{"SMS-TAP", 23, 3000},
                                           ProtocolCase{"UCP-SMS", 17, 5000},
                                           ProtocolCase{"NTT", 18, 180000}));

TEST_P(PagerProtocolTest, DeliversWhicheverLineOfTheLogFindsNoMemory) {
  ForgetfulHost host;
  std::size_t lines = 0;
  std::size_t throws_at = 1000;
  host.at_log = [&](std::string_view) {
    if (lines++ == throws_at) throw std::bad_alloc();
  };
  ASSERT_EQ(SendOn(pager_, host), kOk);
  ASSERT_EQ(lines, GetParam().log_lines);
  const std::vector<std::string> written = modem_.written;
  for (throws_at = 0; throws_at < GetParam().log_lines; ++throws_at) {
    lines = 0;
    BeginAnew();
    EXPECT_EQ(SendOn(pager_, host), kOk) << throws_at;
    EXPECT_EQ(lines, GetParam().log_lines) << throws_at;
    EXPECT_EQ(modem_.written, written) << throws_at;
    EXPECT_THAT(modem_.open_ports, IsEmpty()) << throws_at;
  }
}

TEST_P(PagerProtocolTest, DeliversWhateverIsAllocatedForTheLogFindsNoMemory) {
  ASSERT_EQ(Send(), kOk);
  const std::vector<std::string> written = modem_.written;
  ASSERT_THAT(written, Contains("+++"));
  std::vector<std::size_t> line_counts;
  ForEachLogAllocation([&](std::size_t allocation) {
    BeginAnew();
    FakeNotifierHost host;
    EXPECT_EQ(SendOn(pager_, host), kOk) << allocation;
    EXPECT_EQ(modem_.written, written) << allocation;
    EXPECT_THAT(modem_.open_ports, IsEmpty()) << allocation;
    line_counts.push_back(host.log.size());
  });
  // The last of these has found all memory that it wanted.
  ASSERT_GT(line_counts.size(), GetParam().log_lines);
  EXPECT_EQ(line_counts.back(), GetParam().log_lines);
  line_counts.pop_back();
  EXPECT_THAT(line_counts, Each(GetParam().log_lines - 1));
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
  ForEachLogAllocation([&](std::size_t allocation) {
    BeginAnew();
    FakeNotifierHost host;
    EXPECT_EQ(SendOn(pager_, host), kFail) << allocation;
    EXPECT_EQ(modem_.written, written) << allocation;
    EXPECT_THAT(modem_.open_ports, IsEmpty()) << allocation;
  });
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
  ForgetfulHost host;
  EXPECT_EQ(SendOn(pager_, host), kOk);
  EXPECT_EQ(waits, kRedials);
  EXPECT_GT(at_first_wait, 0U);
  EXPECT_EQ(at_last_wait, at_first_wait);
}

// A session's reads and writes with something wrong at one of them, or at this one and those that
// follow. `results` has a letter for each of them: S when the page counts as delivered, F when not.
struct FaultCase {
  const char* name;
  const char* protocol;
  FakeModem::Fault fault;
  bool lasting;
  std::string_view results;
};

void PrintTo(const FaultCase& fault_case, std::ostream* stream) {
  *stream << fault_case.protocol << ' ' << fault_case.name;
}

const FakeModem::Fault kBroken = {1117, ""};
const FakeModem::Fault kSilent = {std::nullopt, ""};
const FakeModem::Fault kRubbish = {std::nullopt, "\xFF\x01%s%n\x1B[2J O K"};
const FakeModem::Fault kFull = {std::nullopt, std::string(100, 'O')};
const FakeModem::Fault kLost = {std::nullopt, "\r\nNO CARRIER\r\n"};

class PagerFaultTest : public PagerTest, public ::testing::WithParamInterface<FaultCase> {
 protected:
  // A lasting fault ends with the line broken: a centre that never stops talking is listened to
  // without end.
  void BreakAt(std::size_t transfer) {
    constexpr std::size_t kLasting = 50;
    const FaultCase& fault_case = GetParam();
    modem_.transfers = 0;
    modem_.fault_at = [&fault_case,
                       transfer](std::size_t current) -> std::optional<FakeModem::Fault> {
      if (current < transfer) return std::nullopt;
      if (current == transfer) return fault_case.fault;
      if (!fault_case.lasting) return std::nullopt;
      return current < transfer + kLasting ? fault_case.fault : kBroken;
    };
  }

  void Repair() {
    modem_.fault_at = [](std::size_t) { return std::nullopt; };
  }
};

TEST_P(PagerFaultTest, ClosesThePortAndTellsTheTruth) {
  SetProtocol(GetParam().protocol);
  ASSERT_EQ(Send(), kOk);
  ASSERT_EQ(modem_.transfers, GetParam().results.size());

  for (std::size_t transfer = 0; transfer < GetParam().results.size(); ++transfer) {
    BreakAt(transfer);
    EXPECT_EQ(Send(), GetParam().results[transfer] == 'S' ? kOk : kFail) << transfer;
    EXPECT_THAT(modem_.open_ports, IsEmpty()) << transfer;

    Repair();
    host_.log.clear();
    EXPECT_EQ(Send(), kOk) << transfer;
    EXPECT_THAT(host_.log, Each(Not(StartsWith("port in use")))) << transfer;
  }
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
