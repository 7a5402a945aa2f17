#include "tests/far_ends/alert_sender.h"

#include <algorithm>
#include <atomic>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "tests/module/utf8_text.h"

namespace brantel {
namespace {

// Digits alone, so that a beeper can show it.
std::string NextName() {
  static std::atomic<unsigned> last = 10000000;
  return std::to_string(++last);
}

}  // namespace

AlertSender::AlertSender(const LoadedModule& module, const SampleInstances& instances,
                         const SampleAlert& alert)
    : alert_(alert),
      instance_(instances.PathOf(alert)),
      notifier_(module.CreateNotifier(alert.notifier_class)) {
  if (notifier_->Initialize(&host_) != S_OK) {
    throw std::runtime_error(std::string("no host can be bound to ") + alert.name);
  }
}

AlertSender::~AlertSender() {
  if (notifier_) notifier_->Shutdown();
}

AlertSender::Course AlertSender::Send() {
  const std::string name = NextName();
  const std::string event = alert_.EventOf(name);
  const AlertHost::Alert outer = std::exchange(
      host_.alert, {std::wstring(name.begin(), name.end()), {event.begin(), event.end()}});

  // The host may let go of it meanwhile.
  INotifier* const notifier = notifier_.get();
  Deliveries deliveries;
  last_result_ = notifier->Send(instance_.get());
  const Course course = Judge(name, deliveries);
  last_deliveries_ = std::move(deliveries.texts);
  last_alert_ = std::exchange(host_.alert, outer);
  return course;
}

AlertSender::Course AlertSender::Judge(const std::string& name,
                                       const Deliveries& deliveries) const {
  if (!LeavesWhatItHasTo(deliveries)) return Course::kLeftOpen;
  const bool has_succeeded = SUCCEEDED(last_result_);
  if (deliveries.texts.empty()) return has_succeeded ? Course::kFalseSuccess : Course::kFailed;
  const bool is_right = deliveries.texts.size() == 1 &&
                        deliveries.texts.front().find(alert_.DeliveryOf(name)) != std::string::npos;
  if (!is_right) return Course::kWrongDelivery;
  return has_succeeded ? Course::kDelivered : Course::kFalseFailure;
}

// The thread's handle of each program that was started, and closes it.
bool AlertSender::LeavesWhatItHasTo(const Deliveries& deliveries) const {
  const bool starts_program = &alert_.notifier_class == &kLaunchProgram;
  return deliveries.thread_handles.size() == (starts_program ? deliveries.texts.size() : 0) &&
         std::ranges::all_of(deliveries.thread_handles,
                             [](HANDLE handle) { return CloseHandle(handle) != FALSE; });
}

std::string AlertSender::DescribeLast() const {
  std::ostringstream text;
  text << alert_.name << ": result " << std::hex << last_result_ << ", last line of the log \""
       << ToUtf8(last_alert_.last_line) << '"';
  for (const std::string& delivery : last_deliveries_)
    text << ", delivered \"" << delivery << '"';
  return text.str();
}

}  // namespace brantel
