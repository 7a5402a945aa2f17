#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "description/class_description.h"
#include "instance/instance_codec.h"
#include "notifier/notifier.h"
#include "tests/unit/instance/fake_instance_files.h"
#include "tests/unit/notifier/fake_notifier_host.h"
#include "tests/unit/port/fake_modem.h"
#include "tests/unit/system/fake_settings_store.h"
#include "tests/unit/system/virtual_clock.h"

namespace brantel {

// What can be wrong with a read or write.
inline const FakeModem::Fault kBroken = {Failure{1117}, ""};
inline const FakeModem::Fault kSilent = {std::nullopt, ""};
inline const FakeModem::Fault kRubbish = {std::nullopt, "\xFF\x01%s%n\x1B[2J O K"};
inline const FakeModem::Fault kFull = {std::nullopt, std::string(100, 'O')};
inline const FakeModem::Fault kLost = {std::nullopt, "\r\nNO CARRIER\r\n"};

// A session's reads and writes with something wrong at one of them, or at this one and those that
// follow. `results` has a letter for each of them: S when the alert counts as delivered, F when it
// fails.
struct FaultCase {
  const char* name;
  std::string_view session;  // which one it is, in the class's own terms
  FakeModem::Fault fault;
  bool lasting;
  std::string_view results;
};

void PrintTo(const FaultCase& fault_case, std::ostream* stream);

// A notifier class that calls through a modem, on a machine in memory.
class ModemNotifierFixture : public ::testing::Test {
 protected:
  // The word tells the kind of event of each alert, if the class asks for it; the expansions are
  // what the host answers in one.
  ModemNotifierFixture(const ClassDescription& notifier_class,
                       std::optional<std::uint32_t> trigger_word,
                       std::deque<FakeNotifierHost::Expansion> expansions);

  void SetUp() override { notifier_ = Make(); }
  void TearDown() override { notifier_.reset(); }

  virtual std::unique_ptr<Notifier> Make() = 0;

  // Forgets what earlier alerts have left behind in the process and at the modem.
  virtual void BeginAnew() { modem_.written.clear(); }

  Result Send() { return SendOn(*notifier_, host_); }
  Result SendOn(Notifier& notifier, NotifierHost& host);

  // Sets it for profile 0.
  void Set(const std::string& name, const std::string& text);

  void ExpectFailureWithoutAHost();

  // An alert logs this line, and meanwhile another notifier, or the same, has an alert of its own.
  // The result of the latter; the former is delivered.
  Result SendInside(std::string_view line, Notifier& inner, NotifierHost& inner_host);

  // The alert is delivered whichever of so many lines of its log finds no memory.
  void ExpectDeliveryWithoutMemoryForALine(std::size_t lines);

  // Has the alert end in the same way, with the same written to the modem, whatever is allocated
  // for its log finds no memory. How many lines got through each time.
  std::vector<std::size_t> SendWithoutMemoryForTheLog(Result expected,
                                                      const std::vector<std::string>& written);

  // That costs one line of so many each time, but the last one, when all memory was found.
  static void ExpectOneLineLost(std::vector<std::size_t> line_counts, std::size_t lines);

  // With the fault at each of a session's reads and writes in turn, what is told of the alert is
  // true and the port is free for the next one.
  void ExpectTruthAtEachTransfer(const FaultCase& fault_case);

  Instance instance_;
  FakeInstanceFiles files_;
  FakeSettingsStore settings_;
  FakeModem modem_;
  VirtualClock clock_;
  FakeNotifierHost host_;
  std::unique_ptr<Notifier> notifier_;

 private:
  void BreakAt(std::size_t transfer, const FaultCase& fault_case);
  void Repair();
  [[nodiscard]] FakeNotifierHost MakeHost() const;

  const ClassDescription& class_;
  const std::optional<std::uint32_t> trigger_word_;
  const std::deque<FakeNotifierHost::Expansion> expansions_;
};

}  // namespace brantel
