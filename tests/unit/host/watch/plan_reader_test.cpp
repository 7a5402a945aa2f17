#include "host/watch/plan_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace brantel::host {
namespace {

using std::chrono::milliseconds;
using std::chrono::minutes;
using std::chrono::seconds;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;
using testing::StartsWith;

constexpr const char* kWholePlan = R"(instances = "C:\\Instances"
journal = "night.journal"
parallel = 50
jitter = 2

[defaults]
interval = "30s"
timeout = "500ms"
down_after = 4
up_after = 1
alerts = ["night"]

[[items]]
name = "router"
address = "192.0.2.1"
probe = "icmp"

[[items]]
name = "web"
kind = "service"
device = "server"
code = "17"
probe = "http"
url = "http://127.0.0.1:8080/health?all"
status = 204
text = "ok"
interval = "1m"
timeout = "2s"
down_after = 2
up_after = 3
depends_on = ["router"]
alerts = []

[[items]]
name = "mail"
address = "192.0.2.2"
probe = "tcp"
port = 25
text = "220"

[[alerts]]
name = "night"
instances = ["Duty Mail", "Pager Night"]
on = ["down"]
delay = "2m"
repeat = "15m"
time_limit = "1m"
retry = "10s"
retry_most = "5m"
give_up = "12h"

[[maintenance]]
name = "backup"
items = ["web"]
days = ["sun", "wed"]
from = "23:00"
to = "04:00"

[[maintenance]]
begin = 2026-11-22T02:00:00
end = 2026-11-22T04:30:00
)";

std::vector<std::string> Complaints(const std::string& text) {
  std::vector<std::string> complaints;
  for (const PlanComplaint& complaint : ReadPlan(text).complaints)
    complaints.push_back(ComplaintText(complaint));
  return complaints;
}

TEST(PlanFile, SaysAllThatIsInIt) {
  const PlanReading reading = ReadPlan(kWholePlan);
  EXPECT_THAT(Complaints(kWholePlan), IsEmpty());
  const WatchPlan& plan = reading.plan;
  EXPECT_EQ(plan.instances, "C:\\Instances");
  EXPECT_EQ(plan.journal, "night.journal");
  EXPECT_EQ(plan.parallel, 50);
  EXPECT_EQ(plan.jitter, 2);
  const WatchedItem router{
      .name = "router",
      .device = "router",
      .probe = {.kind = ProbeKind::kIcmp, .host = "192.0.2.1", .timeout = milliseconds(500)},
      .interval = seconds(30),
      .down_after = 4,
      .up_after = 1,
      .alerts = {0}};
  const WatchedItem web{.name = "web",
                        .kind = ItemKind::kService,
                        .device = "server",
                        .code = "17",
                        .probe = {.kind = ProbeKind::kHttp,
                                  .host = "127.0.0.1",
                                  .port = 8080,
                                  .target = "/health?all",
                                  .status = 204,
                                  .text = "ok",
                                  .timeout = seconds(2)},
                        .interval = minutes(1),
                        .down_after = 2,
                        .up_after = 3,
                        .depends_on = {0}};
  const WatchedItem mail{.name = "mail",
                         .device = "mail",
                         .probe = {.kind = ProbeKind::kTcp,
                                   .host = "192.0.2.2",
                                   .port = 25,
                                   .text = "220",
                                   .timeout = milliseconds(500)},
                         .interval = seconds(30),
                         .down_after = 4,
                         .up_after = 1,
                         .alerts = {0}};
  EXPECT_THAT(plan.items, ElementsAre(router, web, mail));
  EXPECT_THAT(plan.alerts, ElementsAre(AlertRule{.name = "night",
                                                 .instances = {"Duty Mail", "Pager Night"},
                                                 .tells_up = false,
                                                 .delay = minutes(2),
                                                 .repeat = minutes(15),
                                                 .time_limit = minutes(1),
                                                 .retry = seconds(10),
                                                 .retry_most = minutes(5),
                                                 .give_up = std::chrono::hours(12)}));
  const MaintenanceTime backup{.name = "backup",
                               .items = {1},
                               .days = {true, false, false, true, false, false, false},
                               .from = std::chrono::hours(23),
                               .to = std::chrono::hours(4)};
  const std::chrono::sys_days day = std::chrono::year(2026) / 11 / 22;
  const MaintenanceTime once{.name = "maintenance 2",
                             .begin = day.time_since_epoch() + std::chrono::hours(2),
                             .end = day.time_since_epoch() + minutes(270),
                             .is_once = true};
  EXPECT_THAT(plan.maintenance, ElementsAre(backup, once));
}

TEST(PlanFile, HasDefaults) {
  const WatchPlan plan =
      ReadPlan("[[items]]\nname = \"a\"\naddress = \"b\"\nprobe = \"icmp\"\n").plan;
  EXPECT_EQ(plan.parallel, 100);
  EXPECT_EQ(plan.jitter, 5);
  ASSERT_EQ(plan.items.size(), 1U);
  EXPECT_EQ(plan.items[0].interval, seconds(60));
  EXPECT_EQ(plan.items[0].probe.timeout, seconds(5));
  EXPECT_EQ(plan.items[0].down_after, 3);
  EXPECT_EQ(plan.items[0].up_after, 2);
  EXPECT_THAT(plan.items[0].alerts, IsEmpty());
}

TEST(PlanFile, IsComplainedOfAllAtOnce) {
  EXPECT_THAT(
      Complaints(R"(paralel = 50
jitter = 1.5
[defaults]
interval = "0s"
timeout = 5
[[items]]
name = "router"
address = "192.0.2.1"
probe = "icmp"
port = 7
depends_on = ["web"]
[[items]]
name="web"
kind="servce"
probe="http"
depends_on=["router", "ruter"]
alerts = ["nigth"]
[[items]]
address = "x\u0007"
probe = "tcp"
port = 70000
[[alerts]]
name="night"
instances=["Duty\\Mail"]
repeat="15"
on=["up"]
[[maintenance]]
items=["web"]
days=["son"]
from="2:00"
to="04:00"
[[maintenance]]
begin=2026-11-22T02:00:00Z
)"),
      ElementsAre(
          "line 1: 'paralel' is not known; did you mean 'parallel'?",
          "line 2: jitter: must be a number, 0 to 5; it is 1.5",
          "line 4: defaults.interval: must be 1 s to 1 d, written as \"90s\", \"5m\", \"2h\" or "
          "\"1d\"; it is '0s'",
          "line 5: defaults.timeout: must be 100 ms to 5 min, written as \"90s\", \"5m\", \"2h\" "
          "or "
          "\"1d\"; it is 5",
          "line 10: items.router.port: is of no use for this probe",
          "line 11: items.router.depends_on: leads in a circle, or to one",
          "line 12: items.web.url: is missing; it is where it is, such as "
          "\"http://192.0.2.1:8080/health\"",
          "line 14: items.web.kind: must be one of item and service; it is 'servce'",
          "line 16: items.web.depends_on: 'ruter' is not an item; did you mean 'router'?",
          "line 17: items.web.alerts: 'nigth' is not an alert; did you mean 'night'?",
          "line 18: items.name: is missing; it is what the item is called",
          "line 19: items.address: must hold no control character",
          "line 21: items.port: must be 1 to 65535; it is 70000",
          "line 24: alerts.night.instances: 'Duty\\Mail' is no name of a file in the folder of "
          "instances",
          "line 25: alerts.night.repeat: must be 1 s to 7 d, written as \"90s\", \"5m\", \"2h\" or "
          "\"1d\"; it is '15'",
          "line 26: alerts.night.on: must have \"down\": nobody is told of an up who was not told "
          "of "
          "a down",
          "line 29: maintenance.days: 'son' is not a day; did you mean 'sun'?",
          "line 30: maintenance.from: must be a time of day such as \"02:00\"; it is '2:00'",
          "line 32: maintenance: must have both begin and end, or from, to and days",
          "line 33: maintenance.begin: must have no offset: it is by the clocks of the place"));
}

TEST(PlanFile, HasToBeToml) {
  EXPECT_THAT(Complaints("a = [1\nb = 2\n"),
              ElementsAre(StartsWith("line 2: Error while parsing array: ")));
  EXPECT_THAT(Complaints("a = 1\na = 2\n"), ElementsAre(StartsWith("line 2: ")));
}

TEST(PlanFile, HasAnyCharactersInTextsAndComments) {
  const PlanReading reading = ReadPlan(
      "\xEF\xBB\xBF"
      R"(# König's "
[[items]]
name = "Küche"
address = '''192.0.2.1'''  # あ
probe = 'icmp'
code = """Büro \
  Österreich \
あ"""
)");
  EXPECT_THAT(reading.complaints, IsEmpty());
  ASSERT_EQ(reading.plan.items.size(), 1U);
  EXPECT_EQ(reading.plan.items[0].name, "Küche");
  EXPECT_EQ(reading.plan.items[0].code, "Büro Österreich あ");
}

TEST(PlanFile, HasAsciiCharactersAloneOutsideOfTextsAndComments) {
  const std::pair<const char*, const char*> wrong_lines[] = {
      {"ü = 1", "saw 'ü'"},         {"aﹿ_ = 1", "saw 'ﹿ'"},
      {"a = 5 ü", "saw 'ü'"},       {"a =\xC2\xA0 1", "saw '\\u00A0'"},
      {"a = Küche", "value type"},  {"a = あ", "value type"},
      {"a = 26.\"Ǖ\"", "saw '\"'"},
  };
  for (const auto& [line, words] : wrong_lines) {
    EXPECT_THAT(Complaints("b = 1\n" + std::string(line) + "\n"),
                ElementsAre(AllOf(StartsWith("line 2: "), EndsWith(words))));
  }
}

struct WrongField {
  const char* name;
  const char* lines;  // behind an item and an alert that are right
  const char* complaint;
};

constexpr const char* kRightPart = R"([[items]]
name = "a"
address = "192.0.2.1"
probe = "icmp"
[[alerts]]
name = "n"
instances = ["One"]
)";

class PlanFileWith : public testing::TestWithParam<WrongField> {};

TEST_P(PlanFileWith, IsRefused) {
  EXPECT_THAT(Complaints(kRightPart + std::string(GetParam().lines)),
              ElementsAre(GetParam().complaint));
}

INSTANTIATE_TEST_SUITE_P(
    WrongFields, PlanFileWith,
    testing::Values(
        WrongField{"TwoItemsOfOneName",
                   "[[items]]\nname = \"a\"\naddress = \"b\"\nprobe = \"icmp\"",
                   "line 9: items.a.name: there is another one of this name"},
        WrongField{"TwoAlertsOfOneName", "[[alerts]]\nname = \"n\"\ninstances = [\"One\"]",
                   "line 9: alerts.n.name: there is another one of this name"},
        WrongField{"NoInstance", "[[alerts]]\nname = \"m\"\ninstances = []",
                   "line 10: alerts.m.instances: must name the instances that tell of it, one at "
                   "least"},
        WrongField{"InstanceTwice", "[[alerts]]\nname = \"m\"\ninstances = [\"One\", \"One\"]",
                   "line 10: alerts.m.instances: 'One' is named twice"},
        WrongField{"UnknownEvent",
                   "[[alerts]]\nname = \"m\"\ninstances = [\"One\"]\non = [\"down\", \"upp\"]",
                   "line 11: alerts.m.on: 'upp' is not an event; did you mean 'up'?"},
        WrongField{"LongestPauseBelowTheFirst",
                   "[[alerts]]\nname = \"m\"\ninstances = [\"One\"]\nretry = \"5m\"\n"
                   "retry_most = \"1m\"",
                   "line 12: alerts.m.retry_most: must not be shorter than retry"},
        WrongField{"TimeoutAsLongAsTheInterval",
                   "[[items]]\nname = \"b\"\naddress = \"b\"\nprobe = \"icmp\"\ninterval = \"5s\"",
                   "line 8: items.b.timeout: must be shorter than the interval"},
        WrongField{"AnEncryptedUrl",
                   "[[items]]\nname = \"b\"\nprobe = \"http\"\nurl = \"https://b/\"",
                   "line 11: items.b.url: must be http://HOST[:PORT][/PATH]; it is 'https://b/'"},
        WrongField{"AUrlForTcp",
                   "[[items]]\nname = \"b\"\nprobe = \"tcp\"\naddress = \"b\"\nport = 1\n"
                   "url = \"http://b/\"",
                   "line 13: items.b.url: is of no use for this probe"},
        WrongField{"ItselfAsDependency",
                   "[[items]]\nname = \"b\"\naddress = \"b\"\nprobe = \"icmp\"\n"
                   "depends_on = [\"b\"]",
                   "line 12: items.b.depends_on: leads in a circle, or to one"},
        WrongField{"AnUnknownProbe", "[[items]]\nname = \"b\"\naddress = \"b\"\nprobe = \"ping\"",
                   "line 11: items.b.probe: must be one of tcp, http and icmp; it is 'ping'"},
        WrongField{"AnUnknownFieldOfAnItem",
                   "[[items]]\nname = \"b\"\naddress = \"b\"\nprobe = \"icmp\"\nupafter = 2",
                   "line 12: items.b: 'upafter' is not known here; did you mean 'up_after'?"},
        WrongField{"AFieldOfTheFileBehindATable", "maintenance = 3",
                   "line 8: alerts.n: 'maintenance' is not known here; "
                   "the fields are name, instances, delay, repeat, time_limit, retry, retry_most, "
                   "give_up and on"},
        WrongField{
            "AMaintenanceTimeWithoutLength", "[[maintenance]]\nfrom = \"02:00\"\nto = \"02:00\"",
            "line 10: maintenance.to: must be another time than from; a whole day is 00:00 to "
            "24:00"},
        WrongField{"AMaintenanceTimeThatEndsBefore",
                   "[[maintenance]]\nbegin = 2026-11-22T02:00:00\nend = 2026-11-22T01:00:00",
                   "line 10: maintenance.end: must be later than begin"},
        WrongField{"AMaintenanceTimeForNobody",
                   "[[maintenance]]\nitems = []\nfrom = \"02:00\"\nto = \"03:00\"",
                   "line 9: maintenance.items: must name one at least; without it: all items"},
        WrongField{"ATextThatIsNone", "[[items]]\nname = 7\naddress = \"b\"\nprobe = \"icmp\"",
                   "line 9: items.name: must be a text; it is 7"}),
    [](const auto& wrong) { return wrong.param.name; });

}  // namespace
}  // namespace brantel::host
