#include "tests/torture/scenario.h"

#include "tests/torture/alerts.h"

namespace brantel {
namespace {

class AlertScenario final : public Scenario {
 public:
  explicit AlertScenario(const Alert& alert)
      : Scenario("alert_" + std::string(alert.name)), alert_(alert) {}

  [[nodiscard]] Result expected() const override { return alert_.result; }
  [[nodiscard]] bool tells_failures() const override { return !Failed(alert_.result); }

  void SetUp(Machine& machine) const override { Prepare(machine, alert_); }
  Result Run(Machine& machine) const override { return machine.Send(); }

  [[nodiscard]] std::string Judge(const Machine& machine, Result result,
                                  const Machine& whole) const override {
    // Where a refusal deliberately counts as delivery, it does so here too.
    const bool counts_as_delivery = !whole.HasTaken() && !Failed(alert_.result);
    if (!Failed(result) && !machine.HasTaken() && !counts_as_delivery) {
      return "success, though the far end has not taken the alert";
    }
    // A call that fails may be the one that was to bring the answer.
    if (Failed(result) && machine.HasToldSo() && machine.faults.failures() == 0) {
      return "failure, though the far end has taken the alert and said so";
    }
    return {};
  }

 private:
  const Alert& alert_;
};

}  // namespace

std::unique_ptr<Machine> RunWhole(const Scenario& scenario) {
  auto machine = std::make_unique<Machine>();
  scenario.SetUp(*machine);
  scenario.Begin(*machine);
  const Result result = scenario.Run(*machine);
  if (result != scenario.expected()) {
    throw std::runtime_error(scenario.name() + " fails where nothing else does");
  }
  return machine;
}

const std::vector<std::unique_ptr<Scenario>>& Scenarios() {
  static const auto all = [] {
    std::vector<std::unique_ptr<Scenario>> scenarios;
    for (const auto add :
         {AddAlerts, AddForms, AddDialogs, AddPortDialogs, AddBindings, AddRegistrations}) {
      add(scenarios);
    }
    return scenarios;
  }();
  return all;
}

void AddAlerts(std::vector<std::unique_ptr<Scenario>>& scenarios) {
  for (const Alert& alert : Alerts()) {
    scenarios.push_back(std::make_unique<AlertScenario>(alert));
  }
}

}  // namespace brantel
