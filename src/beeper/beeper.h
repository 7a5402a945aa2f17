#pragma once

#include "instance/instance_files.h"
#include "notifier/notifier.h"
#include "port/modem_port.h"
#include "port/serial_device.h"
#include "system/clock.h"
#include "system/settings_store.h"

namespace brantel {

// Calls a numeric pager through a modem and keys in a code for what happened and the host's text.
class Beeper final : public Notifier {
 public:
  // All must outlive the object.
  Beeper(InstanceFiles& files, SettingsStore& settings, SerialPorts& ports, Clock& clock)
      : files_(files), settings_(settings), ports_(ports), clock_(clock) {}

  // S_OK once the call has been made, and when the event is of no kind that is handled. E_FAIL for
  // an instance that cannot be loaded, without a host, and when port or modem fail; the host's
  // result when it cannot expand the report message.
  Result Send(const InstanceArgument& argument, NotifierHost* host) override;

 private:
  InstanceFiles& files_;
  SettingsStore& settings_;
  SerialPorts& ports_;
  Clock& clock_;
  PortBusyFlag port_busy_ = 0;
};

}  // namespace brantel
