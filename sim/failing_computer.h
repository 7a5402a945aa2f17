#pragma once

#include <utility>

#include "sim/far_end.h"

namespace brantel::sim {

// A computer with a modem that goes down three seconds after it has answered.
class FailingComputer final : public FarEnd {
 public:
  explicit FailingComputer(Surroundings system) : system_(std::move(system)) {}
  FailingComputer(const FailingComputer&) = delete;
  FailingComputer& operator=(const FailingComputer&) = delete;
  ~FailingComputer() override { system_.timeline.Cancel(failure_); }

  void Connect() override {
    failure_ = system_.timeline.After(Time(3000), [this] { system_.hang_up(); });
  }

 private:
  Surroundings system_;
  Timeline::Ticket failure_;
};

}  // namespace brantel::sim
