#pragma once

#include <utility>

#include "sim/far_end.h"

namespace brantel::sim {

// A computer with a modem that sends back whatever it receives.
class EchoingComputer final : public FarEnd {
 public:
  explicit EchoingComputer(Surroundings surroundings) : surroundings_(std::move(surroundings)) {}

  void Receive(std::string_view bytes) override { surroundings_.send(bytes); }

 private:
  Surroundings surroundings_;
};

}  // namespace brantel::sim
