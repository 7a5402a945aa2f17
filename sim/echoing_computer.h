#pragma once

#include <utility>

#include "sim/far_end.h"

namespace brantel::sim {

// A computer with a modem that sends back whatever it receives.
class EchoingComputer final : public FarEnd {
 public:
  explicit EchoingComputer(Surroundings system) : system_(std::move(system)) {}

  void Receive(std::string_view bytes) override { system_.send(bytes); }

 private:
  Surroundings system_;
};

}  // namespace brantel::sim
