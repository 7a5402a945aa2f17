#pragma once

#include <windows.h>

#include <string>
#include <vector>

#include "system/windows/bstr_win32.h"
#include "tests/far_ends/alert_host.h"
#include "tests/far_ends/deliveries.h"
#include "tests/far_ends/sample_alerts.h"
#include "tests/module/loaded_module.h"

namespace brantel {

// A host with a notifier that is bound to it, which sends one alert after the other and looks each
// time at what the far end has of it. For one thread. Throws std::runtime_error when the notifier
// does not bind.
class AlertSender {
 public:
  // What becomes of an alert. Anything but the first two is a mistake.
  enum class Course {
    kDelivered,      // it succeeded, and the far end has it
    kFailed,         // it failed, and the far end does not have it
    kFalseSuccess,   // it succeeded, and the far end does not have it
    kFalseFailure,   // it failed, and the far end has it
    kWrongDelivery,  // the far end has something else, or too much
    kLeftOpen,       // the module left other handles open than it has to
  };

  AlertSender(const LoadedModule& module, const SampleInstances& instances,
              const SampleAlert& alert);
  AlertSender(const AlertSender&) = delete;
  AlertSender& operator=(const AlertSender&) = delete;
  ~AlertSender();

  [[nodiscard]] AlertHost& host() { return host_; }
  // Null when the host has let go of it.
  [[nodiscard]] ComPointer<INotifier>& notifier() { return notifier_; }
  [[nodiscard]] const Bstr& instance() const { return instance_; }
  [[nodiscard]] HRESULT last_result() const { return last_result_; }
  [[nodiscard]] const AlertHost::Alert& last_alert() const { return last_alert_; }

  // With a name of its own for each alert. The host may send another one from within its callbacks.
  Course Send();

  // For failure messages: the last alert's result, deliveries and last line of the log.
  [[nodiscard]] std::string DescribeLast() const;

 private:
  [[nodiscard]] Course Judge(const std::string& name, const Deliveries& deliveries) const;
  [[nodiscard]] bool LeavesWhatItHasTo(const Deliveries& deliveries) const;

  const SampleAlert& alert_;
  const Bstr instance_;
  AlertHost host_;
  ComPointer<INotifier> notifier_;
  HRESULT last_result_ = S_OK;
  AlertHost::Alert last_alert_;
  std::vector<std::string> last_deliveries_;
};

}  // namespace brantel
