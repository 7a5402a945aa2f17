#pragma once

#include "host/delivery/delivery_options.h"

namespace CLI {
class App;
}

namespace brantel::host {

// How an alert is to be sent and told of.
struct AlertOptions : DeliveryOptions {
  bool has_times = false;
  bool uses_event_log = false;
};

// The parser fills in `options`, which must outlive it.
void DeclareAlertOptions(CLI::App& parser, AlertOptions& options);

}  // namespace brantel::host
