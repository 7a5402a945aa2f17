#include "beeper/beeper.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <new>

#include "beeper/beeper_description.h"
#include "instance/instance_codec.h"
#include "tests/unit/failing_allocations.h"
#include "tests/unit/instance/fake_instance_files.h"
#include "tests/unit/notifier/fake_notifier_host.h"
#include "tests/unit/port/fake_modem.h"
#include "tests/unit/system/fake_settings_store.h"
#include "tests/unit/system/virtual_clock.h"

namespace brantel {
namespace {

using namespace std::string_literals;
using ::testing::Contains;
using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

// Runs out of memory at one of its log lines.
class ThrowingHost final : public NotifierHost {
 public:
  std::size_t throws_at = 0;
  std::size_t lines = 0;

  Result ExpandMessage(std::string&, EmptyText) override { return kOk; }
  void LogMessage(std::string_view) override { Count(); }
  void LogMessage(std::u16string_view) override { Count(); }
  Result GetAlertTrigger(std::uint32_t& word) override {
    word = 1;
    return kOk;
  }

 private:
  void Count() {
    if (lines++ == throws_at) throw std::bad_alloc();
  }
};

// Calls back into the module while it is called from it.
class ReentrantHost final : public NotifierHost {
 public:
  std::function<void(std::string_view)> at_log = [](std::string_view) {};

  Result ExpandMessage(std::string&, EmptyText) override { return kOk; }
  void LogMessage(std::string_view text) override { at_log(text); }
  void LogMessage(std::u16string_view) override {}
  Result GetAlertTrigger(std::uint32_t& word) override {
    word = 1;
    return kOk;
  }
};

class BeeperTest : public ::testing::Test {
 protected:
  BeeperTest() {
    instance_.set_text(beeper_field::kBeeperNumber, "5551234");
    instance_.set_text(beeper_field::kUpCode, "1");
    instance_.set_text(beeper_field::kDownCode, "2");
    instance_.set_text(beeper_field::kTrapCode, "3");
    host_.trigger_word = 2;
    host_.expansions = {{kOk, ""}};
  }

  Result Send() { return SendOn(beeper_, host_); }

  Result SendOn(Beeper& beeper, NotifierHost& host) {
    files_.files["alert"] = EncodeInstance(kBeeper.instances, instance_);
    return beeper.Send({u"alert", "alert"}, &host);
  }

  void Set(const std::string& name, const std::string& text) {
    settings_.keys["SOFTWARE\\Brantel\\Vantrel\\notification\\Beeper"][name] = {SettingType::kText,
                                                                                text};
  }

  Instance instance_{kBeeper.instances.fields.size()};
  FakeInstanceFiles files_;
  FakeSettingsStore settings_;
  FakeModem modem_;
  VirtualClock clock_;
  FakeNotifierHost host_;
  Beeper beeper_{files_, settings_, modem_, clock_};
};

TEST_F(BeeperTest, ReadsItsSettingsInTheirOrder) {
  instance_.set_integer(beeper_field::kSettingsProfile, 7);
  ASSERT_EQ(Send(), kOk);
  EXPECT_THAT(settings_.calls,
              ElementsAre("open SOFTWARE\\Brantel\\Vantrel\\notification\\Beeper\\07",
                          "read Settings_COMPort", "read Settings_Baud", "read Settings_DialString",
                          "read Settings_ModemString", "read Settings_Timeout"));
}

TEST_F(BeeperTest, UsesTheDefaultsWhenTheSettingsCannotBeOpened) {
  settings_.opens = false;
  EXPECT_EQ(Send(), kOk);
  EXPECT_THAT(modem_.written, ElementsAre("ATE0Q0V1X4\r", "ATDT5551234,,,,2#\r", "+++", "ATH0\r"));
}

TEST_F(BeeperTest, ReadsInstanceAndSettingsAnewForEachAlert) {
  ASSERT_EQ(Send(), kOk);
  instance_.set_text(beeper_field::kBeeperNumber, "5559999");
  Set("Settings_DialString", "ATDP%s,%s");
  Set("Settings_Baud", "9600");
  host_.expansions = {{kOk, ""}};
  ASSERT_EQ(Send(), kOk);
  EXPECT_THAT(modem_.written, Contains("ATDP5559999,2\r"));
  EXPECT_THAT(modem_.rates, ElementsAre(300U, 9600U));
}

TEST_F(BeeperTest, ReadsASettingThatIsStoredAsANumber) {
  settings_.keys["SOFTWARE\\Brantel\\Vantrel\\notification\\Beeper"]["Settings_Baud"] = {
      SettingType::kNumber, "\5\0\0\0"s};
  ASSERT_EQ(Send(), kOk);
  EXPECT_THAT(modem_.rates, ElementsAre(14400U));
}

TEST_F(BeeperTest, CutsTheCompleteMessageToItsBuffer) {
  Set("Settings_DialString", "%s");
  host_.expansions = {{kOk, std::string(2000, '7')}};
  ASSERT_EQ(Send(), kOk);
  EXPECT_THAT(host_.log, Contains("2" + std::string(1022, '7')));
}

TEST_F(BeeperTest, CutsTheDialCommandToItsBufferAndEndsItAllTheSame) {
  host_.expansions = {{kOk, std::string(1100, '7')}};
  ASSERT_EQ(Send(), kOk);
  EXPECT_EQ(modem_.written.at(1), "ATDT5551234,,,,2" + std::string(1007, '7') + "\r");
  EXPECT_EQ(modem_.written.at(1).size(), 1024U);
}

TEST_F(BeeperTest, EndsTheHostsTextAtANul) {
  host_.expansions = {{kOk, "77\0 88"s}};
  ASSERT_EQ(Send(), kOk);
  EXPECT_EQ(modem_.written.at(1), "ATDT5551234,,,,277#\r");
}

// Each byte but NUL, which ends a text, and "%", which begins a directive.
TEST_F(BeeperTest, KeepsControlCharactersOfTheHostsTextFromTheModem) {
  for (int byte = 0x01; byte <= 0xFF; ++byte) {
    if (byte == '%') continue;
    const std::string text(1, static_cast<char>(byte));
    const bool is_control = byte < 0x20 || byte == 0x7F;
    modem_.written.clear();
    host_.expansions = {{kOk, "7" + text + "8"}};
    ASSERT_EQ(Send(), kOk);
    EXPECT_EQ(modem_.written.at(1), "ATDT5551234,,,,27" + (is_control ? "" : text) + "8#\r");
    EXPECT_THAT(host_.log, Contains("27" + text + "8"));
  }
}

TEST_F(BeeperTest, SendsAnAbsentCodeAsNothing) {
  instance_.set_text(beeper_field::kDownCode, "");
  host_.expansions = {{kOk, "55"}};
  ASSERT_EQ(Send(), kOk);
  EXPECT_EQ(modem_.written.at(1), "ATDT5551234,,,,55#\r");
}

TEST_F(BeeperTest, FailsWithoutAHostAndTouchesNothing) {
  files_.files["alert"] = EncodeInstance(kBeeper.instances, instance_);
  EXPECT_EQ(beeper_.Send({u"alert", "alert"}, nullptr), kFail);
  files_.files.clear();
  EXPECT_EQ(beeper_.Send({u"alert", "alert"}, nullptr), kFail);
  EXPECT_THAT(settings_.calls, IsEmpty());
  EXPECT_EQ(modem_.transfers, 0U);
}

TEST_F(BeeperTest, LetsASecondAlertOfTheSameObjectWaitAndThenFail) {
  ReentrantHost host;
  Result inner = kOk;
  FakeNotifierHost inner_host;
  inner_host.trigger_word = 1;
  host.at_log = [&](std::string_view text) {
    if (text == "Delaying\r\n") inner = SendOn(beeper_, inner_host);
  };
  EXPECT_EQ(SendOn(beeper_, host), kOk);
  EXPECT_EQ(inner, kFail);
  ASSERT_EQ(inner_host.log.size(), 30U);
  EXPECT_EQ(inner_host.log.at(10), "port in use, delaying 19\r\n");
  EXPECT_EQ(inner_host.log.back(), "port in use, delaying 0\r\n");
  EXPECT_THAT(modem_.open_ports, IsEmpty());
  EXPECT_EQ(SendOn(beeper_, host), kOk);
}

TEST_F(BeeperTest, LetsASecondObjectOnTheSamePortFailAtOnce) {
  ReentrantHost host;
  Result inner = kOk;
  FakeNotifierHost inner_host;
  inner_host.trigger_word = 1;
  Beeper second(files_, settings_, modem_, clock_);
  host.at_log = [&](std::string_view text) {
    if (text == "Delaying\r\n") inner = SendOn(second, inner_host);
  };
  EXPECT_EQ(SendOn(beeper_, host), kOk);
  EXPECT_EQ(inner, kFail);
  EXPECT_EQ(inner_host.log.back(), "open error 5\r\n");
  EXPECT_EQ(SendOn(second, inner_host), kOk);
}

TEST_F(BeeperTest, MakesTheCallWhicheverLineOfTheLogFindsNoMemory) {
  ThrowingHost host;
  host.throws_at = 1000;
  ASSERT_EQ(SendOn(beeper_, host), kOk);
  const std::size_t lines = host.lines;
  ASSERT_EQ(lines, 22U);
  const std::vector<std::string> written = modem_.written;
  for (std::size_t line = 0; line < lines; ++line) {
    host.throws_at = line;
    host.lines = 0;
    modem_.written.clear();
    EXPECT_EQ(SendOn(beeper_, host), kOk) << line;
    EXPECT_EQ(host.lines, lines) << line;
    EXPECT_EQ(modem_.written, written) << line;
    EXPECT_THAT(modem_.open_ports, IsEmpty()) << line;
  }
}

TEST_F(BeeperTest, MakesTheCallWhateverIsAllocatedForTheLogFindsNoMemory) {
  const std::vector<std::string> written = {"ATE0Q0V1X4\r", "ATDT5551234,,,,2#\r", "+++", "ATH0\r"};
  std::vector<std::size_t> line_counts;
  ForEachLogAllocation([&](std::size_t allocation) {
    modem_.written.clear();
    FakeNotifierHost host;
    host.trigger_word = 2;
    host.expansions = {{kOk, ""}};
    EXPECT_EQ(SendOn(beeper_, host), kOk) << allocation;
    EXPECT_EQ(modem_.written, written) << allocation;
    EXPECT_THAT(modem_.open_ports, IsEmpty()) << allocation;
    line_counts.push_back(host.log.size());
  });
  // The last of these has found all memory that it wanted.
  ASSERT_GT(line_counts.size(), 22U);
  EXPECT_EQ(line_counts.back(), 22U);
  line_counts.pop_back();
  EXPECT_THAT(line_counts, Each(21U));
}

// A session's reads and writes with something wrong at one of them, or from it on. `results` has a
// letter for each of them: S when the alert still counts as delivered, F when it fails.
struct FaultCase {
  const char* name;
  bool ok_only_to_plain_at;
  FakeModem::Fault fault;
  bool lasting;
  std::string_view results;
};

void PrintTo(const FaultCase& fault_case, std::ostream* stream) {
  *stream << fault_case.name;
}

class BeeperFaultTest : public BeeperTest, public ::testing::WithParamInterface<FaultCase> {
 protected:
  void BreakAt(std::size_t transfer) {
    const FaultCase& fault_case = GetParam();
    modem_.transfers = 0;
    modem_.fault_at = [&fault_case,
                       transfer](std::size_t current) -> std::optional<FakeModem::Fault> {
      const bool now = fault_case.lasting ? current >= transfer : current == transfer;
      return now ? std::optional(fault_case.fault) : std::nullopt;
    };
  }

  void Repair() {
    modem_.fault_at = [](std::size_t) { return std::nullopt; };
  }
};

TEST_P(BeeperFaultTest, ClosesThePortAndTellsTheTruth) {
  if (GetParam().ok_only_to_plain_at) {
    modem_.answer_to = [](const std::string& last) {
      return last == "ATE0Q0V1X4\r" ? "" : "\r\nOK\r\n";
    };
  }
  host_.expansions.clear();
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

const FakeModem::Fault kBroken = {1117, ""};
const FakeModem::Fault kSilent = {std::nullopt, ""};
const FakeModem::Fault kRubbish = {std::nullopt, "\xFF\x01%s%n\x1B[2J O K"};
const FakeModem::Fault kFull = {std::nullopt, std::string(100, 'O')};

// Write and read of the initialisation; write of the dial command; the read of nothing; writes of
// the hang-up and its read.
// The longer session has a late read, and write and read of the plain AT, after the first two.
INSTANTIATE_TEST_SUITE_P(
    Faults, BeeperFaultTest,
    ::testing::Values(FaultCase{"fails once", false, kBroken, false, "SSFSSSS"},
                      FaultCase{"fails for good", false, kBroken, true, "FFFSSSS"},
                      FaultCase{"silent once", false, kSilent, false, "SSSSSSS"},
                      FaultCase{"silent for good", false, kSilent, true, "FFSSSSS"},
                      FaultCase{"rubbish once", false, kRubbish, false, "SSSSSSS"},
                      FaultCase{"rubbish for good", false, kRubbish, true, "FFSSSSS"},
                      FaultCase{"100 bytes once", false, kFull, false, "SSSSSSS"},
                      FaultCase{"100 bytes for good", false, kFull, true, "FFSSSSS"},
                      FaultCase{"late, fails once", true, kBroken, false, "SSFFFFSSSS"},
                      FaultCase{"late, fails for good", true, kBroken, true, "FFFFFFSSSS"},
                      FaultCase{"late, silent once", true, kSilent, false, "SSSSFSSSSS"},
                      FaultCase{"late, silent for good", true, kSilent, true, "FFFFFSSSSS"},
                      FaultCase{"late, rubbish once", true, kRubbish, false, "SSSSFSSSSS"},
                      FaultCase{"late, rubbish for good", true, kRubbish, true, "FFFFFSSSSS"},
                      FaultCase{"late, 100 bytes once", true, kFull, false, "SSSSFSSSSS"},
                      FaultCase{"late, 100 bytes for good", true, kFull, true, "FFFFFSSSSS"}));

}  // namespace
}  // namespace brantel
