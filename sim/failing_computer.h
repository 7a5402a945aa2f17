#pragma once

#include <utility>

#include "sim/far_end.h"

namespace brantel::sim {

// A computer with a modem that goes down three seconds after it has answered.
class FailingComputer final : public FarEnd {
 public:
  explicit FailingComputer(Surroundings surroundings) : surroundings_(std::move(surroundings)) {}
  FailingComputer(const FailingComputer&) = delete;
  FailingComputer& operator=(const FailingComputer&) = delete;
  ~FailingComputer() override { surroundings_.timeline.Cancel(failure_); }

  void Connect() override {
    failure_ = surroundings_.timeline.After(Time(3000), [this] { surroundings_.hang_up(); });
  }

 private:
  Surroundings surroundings_;
  Timeline::Ticket failure_;
};

}  // namespace brantel::sim
