#pragma once

#include "instance/instance_files.h"
#include "notifier/notifier.h"
#include "pager/ucp/ucp_session.h"
#include "port/modem_port.h"
#include "port/serial_device.h"
#include "system/clock.h"
#include "system/settings_store.h"

namespace brantel {

// Sends a text to an alphanumeric pager or a telephone, through a modem and a service's centre.
class Pager final : public Notifier {
 public:
  // All must outlive the object. The counter is one for the whole process.
  Pager(InstanceFiles& files, SettingsStore& settings, SerialPorts& ports, Clock& clock,
        UcpTransactionCounter& ucp_counter)
      : files_(files),
        settings_(settings),
        ports_(ports),
        clock_(clock),
        ucp_counter_(ucp_counter) {}

  // S_OK once the centre has taken the page. E_FAIL for an instance that cannot be loaded, without
  // a host, and when port, modem or centre fail; the host's result when it cannot expand the
  // message. The kind of the event does not matter.
  Result Send(const InstanceArgument& argument, NotifierHost* host) override;

 private:
  InstanceFiles& files_;
  SettingsStore& settings_;
  SerialPorts& ports_;
  Clock& clock_;
  UcpTransactionCounter& ucp_counter_;
  PortBusyFlag port_busy_ = 0;
};

}  // namespace brantel
