#pragma once

#include <functional>

namespace brantel {

// Where other threads post what is to be done in a dialog. It may outlive the dialog.
class DialogTasks {
 public:
  virtual ~DialogTasks() = default;

  // From any thread, without waiting: has the task done by the dialog's own thread between two of
  // its events, after those that were posted before. A task that is pending when the dialog closes
  // is not done, nor is one that is posted afterwards.
  virtual void Post(std::function<void()> task) = 0;

  // From any thread: whether the dialog has not been closed yet.
  [[nodiscard]] virtual bool IsOpen() = 0;
};

}  // namespace brantel
