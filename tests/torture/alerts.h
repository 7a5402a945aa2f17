#pragma once

#include <span>
#include <string_view>

#include "tests/torture/far_end.h"
#include "tests/torture/machine.h"

namespace brantel {

// One way in which an alert goes.
struct Alert {
  std::string_view name;
  void (*set_up)(Machine& machine);  // instance, settings and notifier
  // What the far end of a connection says, of one that is made by modem or socket.
  std::span<const Reply> replies{};
  // How it goes when nothing fails.
  Result result = kOk;
  // Whether the far end says something before it is asked. Deliberately, what a session does not
  // come to read of that is read by the next one.
  bool says_too_early = false;
};

// Makes a machine ready for the alert.
void Prepare(Machine& machine, const Alert& alert);

// At least one for each class and each protocol, with the far ends at which something has to be
// decided.
std::span<const Alert> Alerts();

}  // namespace brantel
