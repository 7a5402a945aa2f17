// Alerts through the simulated modem to each number of the simulators' telephone book, and with
// modems that answer in each way: what the notifiers log, and what is told of it. Each stands in
// tests/unit/golden/courses_of_simulators.txt: number, notifier and what is there; the lines of the
// log, and the phase that has begun with one behind it; then the verdict.
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "beeper/beeper.h"
#include "beeper/beeper_description.h"
#include "instance/instance_codec.h"
#include "pager/pager.h"
#include "pager/pager_description.h"
#include "sim/telephone_book.h"
#include "tests/unit/host/course/following_host.h"
#include "tests/unit/host/course/simulated_line.h"
#include "tests/unit/instance/fake_instance_files.h"
#include "tests/unit/made_file.h"
#include "tests/unit/system/fake_settings_store.h"

namespace brantel::host {
namespace {

Instance BeepTo(const std::string& number) {
  Instance instance(beeper_field::kFieldCount);
  instance.set_text(beeper_field::kBeeperNumber, number);
  instance.set_text(beeper_field::kDownCode, "2");
  return instance;
}

Instance PageTo(const std::string& number, const std::string& protocol) {
  Instance instance(pager_field::kFieldCount);
  instance.set_text(pager_field::kPagerNumber, number);
  instance.set_text(pager_field::kTerminalPassword, "wrong");
  instance.set_text(pager_field::kPagerId, "12345");
  instance.set_text(pager_field::kMessage, "router7 is down");
  instance.set_text(pager_field::kProtocol, protocol);
  return instance;
}

constexpr sim::HayesModem::Options kUsualModem;

class Caller {
 public:
  explicit Caller(sim::HayesModem::Options options) : line_(options) {}

  std::string Beep(const std::string& number) {
    const Instance instance = BeepTo(number);
    files_.files["alert"] = EncodeInstance(kBeeper.instances, instance);
    FollowingHost host({"Beeper", instance});
    Beeper beeper(files_, settings_, line_, line_);
    return host.Finish(AttemptEnd::kReturned, beeper.Send({u"alert", "alert"}, &host));
  }

  std::string Page(const std::string& number, const std::string& protocol) {
    const Instance instance = PageTo(number, protocol);
    files_.files["alert"] = EncodeInstance(kPager.instances, instance);
    FollowingHost host({"Pager", instance});
    Pager pager(files_, settings_, line_, line_, ucp_counter_);
    return host.Finish(AttemptEnd::kReturned, pager.Send({u"alert", "alert"}, &host));
  }

 private:
  SimulatedLine line_;
  FakeInstanceFiles files_;
  FakeSettingsStore settings_;
  UcpTransactionCounter ucp_counter_ = 0;
};

std::string Heading(const std::string& number, const std::string& way, std::string_view what) {
  return "# " + number + " by " + way + ": " + std::string(what) + "\n";
}

// By what a number is called: a centre by its own protocol, and some by SMS-TAP as well.
std::vector<std::string> ProtocolsFor(const std::string& number) {
  if (number == "5550200" || number == "5550210") return {"TAP", "SMS-TAP"};
  if (number.starts_with("55502")) return {"TAP"};
  if (number.starts_with("55503") || number.starts_with("55504")) return {"UCP-SMS"};
  if (number.starts_with("55505") || number.starts_with("55506")) return {"NTT"};
  return {"TAP", "UCP-SMS"};
}

// A number for each row of the telephone book, and some for one that stands for many.
std::vector<std::string> NumbersOf(std::string_view row) {
  const std::size_t place = row.find("nn");
  if (place == std::string_view::npos) return {std::string(row)};
  std::vector<std::string> numbers;
  for (const char* const digits : {"01", "06", "17", "24", "28", "99"}) {
    numbers.push_back(std::string(row).replace(place, 2, digits));
  }
  return numbers;
}

// A number that stays busy is dialled for ever by all but UCP-SMS.
bool NeverEnds(const std::string& number, const std::string& protocol) {
  return number == "5550101" && protocol != "UCP-SMS";
}

std::string CoursesOf(const std::string& number, std::string_view what) {
  std::string text;
  if (number.starts_with("55501")) {
    text += Heading(number, "Beeper", what) + Caller(kUsualModem).Beep(number) + "\n";
  }
  for (const std::string& protocol : ProtocolsFor(number)) {
    if (NeverEnds(number, protocol)) continue;
    text += Heading(number, protocol, what) + Caller(kUsualModem).Page(number, protocol) + "\n";
  }
  return text;
}

TEST(SimulatedCourses, OfTheTelephoneBookAreToldAsTheyAreWritten) {
  std::string text;
  for (const sim::Subscriber& subscriber : sim::TelephoneBook()) {
    for (const std::string& number : NumbersOf(subscriber.number)) {
      text += CoursesOf(number, subscriber.description);
    }
  }
  text += CoursesOf("5550199", sim::FindSubscriber("").description);
  ExpectMadeFile("tests/unit/golden/courses_of_simulators.txt", text);
}

TEST(SimulatedCourses, OfModemsAreToldAsTheyAreWritten) {
  struct Modem {
    std::string_view what;
    sim::HayesModem::Options options;
  };
  std::string text;
  for (const auto& [what, options] : {
           Modem{"a modem that says nothing", {.answering = sim::Answering::kNone}},
           Modem{"a modem that answers late", {.answering = sim::Answering::kLate}},
           Modem{"a modem that answers garbage", {.answering = sim::Answering::kGarbage}},
           Modem{"a modem that answers without an end", {.answering = sim::Answering::kFlood}},
           Modem{"a modem that goes on echoing", {.echo_is_stuck = true}},
       }) {
    text += Heading("5550100", "Beeper", what) + Caller(options).Beep("5550100") + "\n";
    text += Heading("5550200", "TAP", what) + Caller(options).Page("5550200", "TAP") + "\n";
    text += Heading("5550400", "UCP-SMS", what) + Caller(options).Page("5550400", "UCP-SMS") + "\n";
  }
  ExpectMadeFile("tests/unit/golden/courses_of_modems.txt", text);
}

}  // namespace
}  // namespace brantel::host
