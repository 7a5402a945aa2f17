#include "host/watch/plan_reader.h"

#include <algorithm>
#include <functional>
#include <utility>

#include "host/text/control_characters.h"
#include "host/text/name_list.h"
#include "host/text/nearest_name.h"
#include "host/watch/http_address.h"
#include "host/watch/plan_table.h"

namespace brantel::host {
namespace {

using std::chrono::milliseconds;
using std::chrono::minutes;
using std::chrono::seconds;

using Names = std::span<const std::string_view>;

constexpr std::array<std::string_view, 3> kProbes = {"tcp", "http", "icmp"};
constexpr std::array<std::string_view, 2> kKinds = {"item", "service"};
constexpr std::array<std::string_view, 7> kDays = {"sun", "mon", "tue", "wed", "thu", "fri", "sat"};
constexpr std::array<std::string_view, 2> kEvents = {"down", "up"};

constexpr std::size_t kMostItems = 10000;
constexpr std::size_t kMostDependencies = 16;  // of one item
constexpr milliseconds kDay = std::chrono::days(1);
constexpr milliseconds kWeek = std::chrono::days(7);

// What counts for items that do not say otherwise.
struct Defaults {
  milliseconds interval = seconds(60);
  milliseconds timeout = seconds(5);
  int down_after = 3;
  int up_after = 2;
  std::vector<std::string> alerts{};
};

// What is named before it is known whether there is anything of the name.
struct NamedThings {
  std::vector<std::string> depends_on;
  std::vector<std::string> alerts;
};

class PlanFileReader {
 public:
  PlanReading Read(const toml::table& file) {
    PlanTable root(file, "", complaints_);
    plan_.instances = root.Text("instances").value_or("");
    plan_.journal = root.Text("journal").value_or("");
    plan_.parallel = root.Number("parallel", 1, 1000).value_or(100);
    plan_.jitter = root.Number("jitter", 0, 5).value_or(5);
    if (const toml::table* const defaults = root.Table("defaults")) ReadDefaults(*defaults);
    const auto items = root.Tables("items");
    const auto alerts = root.Tables("alerts");
    const auto maintenance = root.Tables("maintenance");
    root.Finish();
    if (items.empty() && !root.Has("items")) root.Lack("items", "what is to be watched");
    if (items.size() > kMostItems)
      root.Complain("items", "there may be 10000; there are " + std::to_string(items.size()));
    else
      ReadAll(items, alerts, maintenance);
    std::ranges::stable_sort(complaints_, {}, &PlanComplaint::line);
    return {std::move(plan_), std::move(complaints_)};
  }

 private:
  using Tables = std::vector<const toml::table*>;

  void ReadAll(const Tables& items, const Tables& alerts, const Tables& maintenance) {
    for (const toml::table* const table : alerts)
      ReadAlert(*table);
    for (const toml::table* const table : items)
      ReadItem(*table);
    item_names_ = NamesOf(plan_.items, &WatchedItem::name);
    const auto alert_names = NamesOf(plan_.alerts, &AlertRule::name);
    for (std::size_t i = 0; i < items.size(); ++i) {
      PlanTable table(*items[i], "items." + plan_.items[i].name, complaints_);
      plan_.items[i].depends_on =
          PlacesOf(table, "depends_on", "an item", "items", named_[i].depends_on, item_names_);
      plan_.items[i].alerts =
          PlacesOf(table, "alerts", "an alert", "alerts", named_[i].alerts, alert_names);
    }
    for (const toml::table* const table : maintenance)
      ReadMaintenance(*table);
    ComplainOfCircle(items);
  }

  void ReadDefaults(const toml::table& table) {
    PlanTable fields(table, "defaults", complaints_);
    ReadTimes(fields, defaults_);
    defaults_.alerts = fields.Texts("alerts").value_or(defaults_.alerts);
    fields.Finish();
  }

  // What both an item and the defaults may say.
  template <typename Times>
  static void ReadTimes(PlanTable& fields, Times& times) {
    constexpr int kMostTries = 100;
    times.interval = fields.Duration("interval", seconds(1), kDay).value_or(times.interval);
    times.down_after = fields.Number("down_after", 1, kMostTries).value_or(times.down_after);
    times.up_after = fields.Number("up_after", 1, kMostTries).value_or(times.up_after);
    if constexpr (requires { times.timeout; })
      times.timeout = ReadTimeout(fields).value_or(times.timeout);
    else
      times.probe.timeout = ReadTimeout(fields).value_or(times.probe.timeout);
  }

  static std::optional<milliseconds> ReadTimeout(PlanTable& fields) {
    return fields.Duration("timeout", milliseconds(100), minutes(5));
  }

  // The name, which no other table of its kind has.
  template <typename Things>
  static std::string ReadName(PlanTable& fields, const Things& things, const std::string& kind,
                              const std::string& what) {
    constexpr std::size_t kMostBytes = 100;
    const auto name = fields.Text("name");
    fields.SetPlace(kind + (name ? "." + *name : ""));
    if (!fields.Has("name")) fields.Lack("name", what);
    if (!name) return "";
    if (name->size() > kMostBytes) fields.Complain("name", "must be no longer than 100 bytes");
    for (const auto& thing : things) {
      if (thing.name == *name) fields.Complain("name", "there is another one of this name");
    }
    return *name;
  }

  void ReadAlert(const toml::table& table) {
    PlanTable fields(table, "alerts", complaints_);
    AlertRule rule;
    rule.name = ReadName(fields, plan_.alerts, "alerts", "what items call it by");
    rule.instances = fields.Texts("instances").value_or(std::vector<std::string>());
    if (!fields.Has("instances") ||
        (rule.instances.empty() && fields.table()["instances"].is_array()))
      fields.Complain("instances", "must name the instances that tell of it, one at least");
    ComplainOfFileNames(fields, rule.instances);
    rule.delay = fields.Duration("delay", milliseconds(0), kDay).value_or(rule.delay);
    rule.repeat = fields.Duration("repeat", seconds(1), kWeek).value_or(rule.repeat);
    rule.time_limit = fields.Duration("time_limit", seconds(1), kDay).value_or(rule.time_limit);
    rule.retry = fields.Duration("retry", seconds(1), kDay).value_or(rule.retry);
    rule.retry_most = fields.Duration("retry_most", seconds(1), kDay)
                          .value_or(std::max(rule.retry_most, rule.retry));
    rule.give_up = fields.Duration("give_up", seconds(1), kWeek).value_or(rule.give_up);
    if (rule.retry_most < rule.retry)
      fields.Complain("retry_most", "must not be shorter than retry");
    ReadEvents(fields, rule);
    fields.Finish();
    plan_.alerts.push_back(std::move(rule));
  }

  static void ComplainOfFileNames(PlanTable& fields, const std::vector<std::string>& names) {
    for (auto name = names.begin(); name != names.end(); ++name) {
      if (name->find_first_of("\\/:") != std::string::npos)
        fields.Complain("instances",
                        "'" + *name + "' is no name of a file in the folder of instances");
      if (std::find(names.begin(), name, *name) != name)
        fields.Complain("instances", "'" + *name + "' is named twice");
    }
  }

  static void ReadEvents(PlanTable& fields, AlertRule& rule) {
    const auto events = fields.Texts("on");
    if (!events) return;
    for (const std::string& event : *events) {
      if (std::ranges::find(kEvents, event) == kEvents.end())
        fields.Complain("on", UnknownName(event, "an event", "events", Names(kEvents)));
    }
    rule.tells_up = std::ranges::find(*events, "up") != events->end();
    if (std::ranges::find(*events, "down") == events->end())
      fields.Complain("on",
                      "must have \"down\": nobody is told of an up who was not told of a down");
  }

  void ReadItem(const toml::table& table) {
    PlanTable fields(table, "items", complaints_);
    WatchedItem item{.probe = {.timeout = defaults_.timeout},
                     .interval = defaults_.interval,
                     .down_after = defaults_.down_after,
                     .up_after = defaults_.up_after};
    item.name = ReadName(fields, plan_.items, "items", "what the item is called");
    item.kind = static_cast<ItemKind>(fields.Choice("kind", kKinds).value_or(0));
    item.device = fields.Text("device").value_or(item.name);
    item.code = fields.Text("code").value_or("");
    ReadTimes(fields, item);
    ReadProbe(fields, item.probe);
    if (item.probe.timeout >= item.interval)
      fields.Complain("timeout", "must be shorter than the interval");
    named_.push_back({fields.Texts("depends_on").value_or(std::vector<std::string>()),
                      fields.Texts("alerts").value_or(defaults_.alerts)});
    fields.Finish();
    plan_.items.push_back(std::move(item));
  }

  static void ReadProbe(PlanTable& fields, ProbeRequest& probe) {
    const auto kind = fields.Choice("probe", kProbes);
    const auto url = fields.Text("url");
    const auto address = fields.Text("address");
    const auto port = fields.Number("port", 1, 65535);
    const auto status = fields.Number("status", 100, 599);
    probe.text = fields.Text("text").value_or("");
    if (!fields.Has("probe")) fields.Lack("probe", "how it is watched: " + NamesInProse(kProbes));
    if (!kind) return;
    probe.kind = static_cast<ProbeKind>(*kind);
    const bool is_http = probe.kind == ProbeKind::kHttp;
    const bool has_port = probe.kind == ProbeKind::kTcp;
    Require(fields, "url", is_http, "where it is, such as \"http://192.0.2.1:8080/health\"");
    Require(fields, "address", !is_http, "the item's address, such as \"192.0.2.1\"");
    Require(fields, "port", has_port, "the port, 1 to 65535");
    Allow(fields, "status", is_http);
    Allow(fields, "text", is_http || has_port);
    probe.host = address.value_or("");
    probe.port = static_cast<std::uint16_t>(port.value_or(0));
    if (!is_http) return;
    constexpr int kOk = 200;
    probe.status = status.value_or(kOk);
    if (!url) return;
    const auto where = ParseHttpAddress(*url);
    if (!where) {
      fields.Complain("url", "must be http://HOST[:PORT][/PATH]; it is '" + *url + "'");
      return;
    }
    probe.host = where->host;
    probe.port = where->port;
    probe.target = where->target;
  }

  static void Require(PlanTable& fields, std::string_view field, bool is_needed,
                      const std::string& what) {
    if (is_needed && !fields.Has(field)) fields.Lack(field, what);
    Allow(fields, field, is_needed);
  }

  static void Allow(PlanTable& fields, std::string_view field, bool is_allowed) {
    if (!is_allowed && fields.Has(field)) fields.Complain(field, "is of no use for this probe");
  }

  void ReadMaintenance(const toml::table& table) {
    PlanTable fields(table, "maintenance", complaints_);
    MaintenanceTime time;
    time.name =
        fields.Text("name").value_or("maintenance " + std::to_string(plan_.maintenance.size() + 1));
    const auto items = fields.Texts("items");
    if (items) {
      if (items->empty()) fields.Complain("items", "must name one at least; without it: all items");
      time.items = PlacesOf(fields, "items", "an item", "items", *items, item_names_);
    }
    const auto days = fields.Texts("days");
    const auto from = fields.TimeOfDay("from");
    const auto to = fields.TimeOfDay("to");
    const auto begin = fields.LocalTime("begin");
    const auto end = fields.LocalTime("end");
    fields.Finish();
    time.is_once = fields.Has("begin") || fields.Has("end");
    if (time.is_once) {
      time.begin = begin.value_or(milliseconds(0));
      time.end = end.value_or(milliseconds(0));
      if (!fields.Has("begin") || !fields.Has("end") || fields.Has("days") || fields.Has("from") ||
          fields.Has("to"))
        fields.Complain("", "must have both begin and end, or from, to and days");
      else if (begin && end && time.end <= time.begin)
        fields.Complain("end", "must be later than begin");
    } else {
      ReadDays(fields, days, time);
      time.from = from.value_or(minutes(0));
      time.to = to.value_or(minutes(0));
      if (!fields.Has("from") || !fields.Has("to"))
        fields.Complain("", "must have both begin and end, or from, to and days");
      else if (from && to && from == to)
        fields.Complain("to", "must be another time than from; a whole day is 00:00 to 24:00");
    }
    plan_.maintenance.push_back(std::move(time));
  }

  static void ReadDays(PlanTable& fields, const std::optional<std::vector<std::string>>& days,
                       MaintenanceTime& time) {
    if (!fields.Has("days")) time.days.fill(true);
    if (!days) return;
    if (days->empty()) fields.Complain("days", "must name one at least; without it: every day");
    for (const std::string& day : *days) {
      const auto found = std::ranges::find(kDays, day);
      if (found == kDays.end())
        fields.Complain("days", UnknownName(day, "a day", "days", Names(kDays)));
      else
        time.days.at(static_cast<std::size_t>(found - kDays.begin())) = true;
    }
  }

  static std::vector<std::size_t> PlacesOf(PlanTable& fields, std::string_view field,
                                           const std::string& kind, const std::string& kinds,
                                           const std::vector<std::string>& given,
                                           const std::vector<std::string>& names) {
    std::vector<std::size_t> places;
    for (const std::string& name : given) {
      const auto found = std::ranges::find(names, name);
      const auto place = static_cast<std::size_t>(found - names.begin());
      if (found == names.end())
        fields.Complain(field, Shortened(name, kind, kinds, names));
      else if (std::ranges::find(places, place) != places.end())
        fields.Complain(field, "'" + name + "' is named twice");
      else
        places.push_back(place);
    }
    if (field == "depends_on" && places.size() > kMostDependencies)
      fields.Complain(field, "may name 16 items");
    return places;
  }

  // Without a list of all items where none is near.
  static std::string Shortened(const std::string& name, const std::string& kind,
                               const std::string& kinds, const std::vector<std::string>& names) {
    constexpr std::size_t kMostListed = 10;
    if (names.empty()) return "'" + name + "' is not " + kind + "; there are no " + kinds;
    const auto views = ViewsOf(names);
    if (names.size() <= kMostListed || !NearestName(name, views).empty())
      return UnknownName(name, kind, kinds, views);
    return "'" + name + "' is not " + kind;
  }

  // Takes out what depends on nothing that is left, again and again; a circle stays.
  void ComplainOfCircle(const Tables& tables) {
    std::vector<std::size_t> open(plan_.items.size());
    std::vector<std::vector<std::size_t>> dependents(plan_.items.size());
    std::vector<std::size_t> free;
    for (std::size_t i = 0; i < plan_.items.size(); ++i) {
      open[i] = plan_.items[i].depends_on.size();
      if (open[i] == 0) free.push_back(i);
      for (const std::size_t on : plan_.items[i].depends_on)
        dependents[on].push_back(i);
    }
    for (std::size_t done = 0; done < free.size(); ++done) {
      for (const std::size_t dependent : dependents[free[done]]) {
        if (--open[dependent] == 0) free.push_back(dependent);
      }
    }
    const auto circle = std::ranges::find_if(open, [](std::size_t count) { return count > 0; });
    if (circle == open.end()) return;
    const auto place = static_cast<std::size_t>(circle - open.begin());
    PlanTable(*tables[place], "items." + plan_.items[place].name, complaints_)
        .Complain("depends_on", "leads in a circle, or to one");
  }

  WatchPlan plan_;
  Defaults defaults_;
  std::vector<NamedThings> named_;  // of each item
  std::vector<std::string> item_names_;
  std::vector<PlanComplaint> complaints_;
};

}  // namespace

std::string ComplaintText(const PlanComplaint& complaint) {
  return "line " + std::to_string(complaint.line) + ": " + ShowControlCharacters(complaint.words);
}

PlanReading ReadPlan(std::string_view text) {
  try {
    const toml::table file = toml::parse(text);
    return PlanFileReader().Read(file);
  } catch (const toml::parse_error& error) {
    return {{}, {{error.source().begin.line, std::string(error.description())}}};
  }
}

}  // namespace brantel::host
