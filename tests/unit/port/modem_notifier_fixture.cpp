#include "tests/unit/port/modem_notifier_fixture.h"

#include <gmock/gmock.h>

#include <new>
#include <ostream>
#include <utility>

#include "tests/unit/failing_allocations.h"
#include "tests/unit/notifier/acting_host.h"
#include "text/string_table.h"

namespace brantel {

using ::testing::Each;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

void PrintTo(const FaultCase& fault_case, std::ostream* stream) {
  *stream << fault_case.session << ' ' << fault_case.name;
}

ModemNotifierFixture::ModemNotifierFixture(const ClassDescription& notifier_class,
                                           std::optional<std::uint32_t> trigger_word,
                                           std::deque<FakeNotifierHost::Expansion> expansions)
    : instance_(notifier_class.instances.fields.size()),
      class_(notifier_class),
      trigger_word_(trigger_word),
      expansions_(std::move(expansions)) {
  host_ = MakeHost();
}

FakeNotifierHost ModemNotifierFixture::MakeHost() const {
  FakeNotifierHost host;
  host.trigger_word = trigger_word_.value_or(0);
  host.expansions = expansions_;
  return host;
}

Result ModemNotifierFixture::SendOn(Notifier& notifier, NotifierHost& host) {
  files_.files["alert"] = EncodeInstance(class_.instances, instance_);
  return notifier.Send({u"alert", "alert"}, &host);
}

void ModemNotifierFixture::Set(const std::string& name, const std::string& text) {
  settings_.keys[LoadText(class_.settings.key_text_id)][name] = {SettingType::kText, text};
}

void ModemNotifierFixture::ExpectFailureWithoutAHost() {
  files_.files["alert"] = EncodeInstance(class_.instances, instance_);
  EXPECT_EQ(notifier_->Send({u"alert", "alert"}, nullptr), kFail);
  files_.files.clear();
  EXPECT_EQ(notifier_->Send({u"alert", "alert"}, nullptr), kFail);
  EXPECT_THAT(settings_.calls, IsEmpty());
  EXPECT_EQ(modem_.transfers, 0U);
}

Result ModemNotifierFixture::SendInside(std::string_view line, Notifier& inner,
                                        NotifierHost& inner_host) {
  Result result = kOk;
  ActingHost host;
  host.trigger_word = trigger_word_;
  host.at_log = [&](std::string_view text) {
    if (text == line) result = SendOn(inner, inner_host);
  };
  EXPECT_EQ(SendOn(*notifier_, host), kOk);
  return result;
}

void ModemNotifierFixture::ExpectDeliveryWithoutMemoryForALine(std::size_t lines) {
  std::size_t logged = 0;
  std::size_t throws_at = lines;
  ActingHost host;
  host.trigger_word = trigger_word_;
  host.at_log = [&](std::string_view) {
    if (logged++ == throws_at) throw std::bad_alloc();
  };
  BeginAnew();
  ASSERT_EQ(SendOn(*notifier_, host), kOk);
  ASSERT_EQ(logged, lines);
  const std::vector<std::string> written = modem_.written;
  for (throws_at = 0; throws_at < lines; ++throws_at) {
    logged = 0;
    BeginAnew();
    EXPECT_EQ(SendOn(*notifier_, host), kOk) << throws_at;
    EXPECT_EQ(logged, lines) << throws_at;
    EXPECT_EQ(modem_.written, written) << throws_at;
    EXPECT_THAT(modem_.open_ports, IsEmpty()) << throws_at;
  }
}

std::vector<std::size_t> ModemNotifierFixture::SendWithoutMemoryForTheLog(
    Result expected, const std::vector<std::string>& written) {
  std::vector<std::size_t> line_counts;
  ForEachLogAllocation([&](std::size_t allocation) {
    BeginAnew();
    FakeNotifierHost host = MakeHost();
    EXPECT_EQ(SendOn(*notifier_, host), expected) << allocation;
    EXPECT_EQ(modem_.written, written) << allocation;
    EXPECT_THAT(modem_.open_ports, IsEmpty()) << allocation;
    line_counts.push_back(host.log.size());
  });
  return line_counts;
}

void ModemNotifierFixture::ExpectOneLineLost(std::vector<std::size_t> line_counts,
                                             std::size_t lines) {
  ASSERT_GT(line_counts.size(), lines);
  EXPECT_EQ(line_counts.back(), lines);
  line_counts.pop_back();
  EXPECT_THAT(line_counts, Each(lines - 1));
}

void ModemNotifierFixture::ExpectTruthAtEachTransfer(const FaultCase& fault_case) {
  const std::string_view results = fault_case.results;
  ASSERT_EQ(Send(), kOk);
  ASSERT_EQ(modem_.transfers, results.size());

  for (std::size_t transfer = 0; transfer < results.size(); ++transfer) {
    BreakAt(transfer, fault_case);
    EXPECT_EQ(Send(), results[transfer] == 'S' ? kOk : kFail) << transfer;
    EXPECT_THAT(modem_.open_ports, IsEmpty()) << transfer;

    Repair();
    host_.log.clear();
    EXPECT_EQ(Send(), kOk) << transfer;
    EXPECT_THAT(host_.log, Each(Not(StartsWith("port in use")))) << transfer;
  }
}

// A lasting fault ends with the line broken: a centre that never stops talking is listened to
// without end.
void ModemNotifierFixture::BreakAt(std::size_t transfer, const FaultCase& fault_case) {
  constexpr std::size_t kLasting = 50;
  modem_.transfers = 0;
  modem_.fault_at = [&fault_case,
                     transfer](std::size_t current) -> std::optional<FakeModem::Fault> {
    if (current < transfer) return std::nullopt;
    if (current == transfer) return fault_case.fault;
    if (!fault_case.lasting) return std::nullopt;
    return current < transfer + kLasting ? fault_case.fault : kBroken;
  };
}

void ModemNotifierFixture::Repair() {
  modem_.fault_at = [](std::size_t) { return std::nullopt; };
}

}  // namespace brantel
