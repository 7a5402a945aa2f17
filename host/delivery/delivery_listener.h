#pragma once

#include <chrono>
#include <string>
#include <string_view>

namespace brantel::host {

// Since a delivery began.
using ElapsedTime = std::chrono::milliseconds;

// Who is told of a delivery while it goes on, on the thread that delivers. Texts are UTF-8, and
// what is secret is not in them.
class DeliveryListener {
 public:
  virtual ~DeliveryListener() = default;

  // A text of the notifier's log, as it came; it may end amid a line.
  virtual void OnLog(std::string_view text, ElapsedTime elapsed) = 0;

  // What begins with the log's last text, such as "dialling 5550100".
  virtual void OnPhase(std::string_view phase, ElapsedTime elapsed) = 0;

  // What a person should know beside that, such as that the journal cannot be written.
  virtual void OnWarning(std::string_view warning) = 0;
};

}  // namespace brantel::host
