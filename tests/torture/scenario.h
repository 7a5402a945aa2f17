#pragma once

#include <memory>
#include <string>
#include <vector>

#include "system/result.h"
#include "tests/torture/machine.h"

namespace brantel {

// Something that a host or an operator has the module do, on a machine where things fail.
class Scenario {
 public:
  explicit Scenario(std::string name) : name_(std::move(name)) {}
  Scenario(const Scenario&) = delete;
  Scenario& operator=(const Scenario&) = delete;
  virtual ~Scenario() = default;

  [[nodiscard]] const std::string& name() const { return name_; }

  // How it goes when nothing fails.
  [[nodiscard]] virtual Result expected() const { return kOk; }

  // How the machine stands before the first run, and then before each.
  virtual void SetUp(Machine& /*machine*/) const {}
  virtual void Begin(Machine& machine) const { machine.BeginAlert(); }

  // The run itself, as the module's object does it for its host: nothing is thrown.
  virtual Result Run(Machine& machine) const = 0;

  // What is wrong behind a run with this result; empty when nothing is. On `whole` nothing failed.
  [[nodiscard]] virtual std::string Judge(const Machine& machine, Result result,
                                          const Machine& whole) const = 0;

  // Whether the log has to say why such a run failed.
  [[nodiscard]] virtual bool tells_failures() const { return false; }

 private:
  std::string name_;
};

// A successful run on a machine on which nothing fails.
std::unique_ptr<Machine> RunWhole(const Scenario& scenario);

// All of them.
const std::vector<std::unique_ptr<Scenario>>& Scenarios();

// Those of each kind.
void AddAlerts(std::vector<std::unique_ptr<Scenario>>& scenarios);
void AddForms(std::vector<std::unique_ptr<Scenario>>& scenarios);
void AddDialogs(std::vector<std::unique_ptr<Scenario>>& scenarios);
void AddPortDialogs(std::vector<std::unique_ptr<Scenario>>& scenarios);
void AddBindings(std::vector<std::unique_ptr<Scenario>>& scenarios);
void AddRegistrations(std::vector<std::unique_ptr<Scenario>>& scenarios);

}  // namespace brantel
