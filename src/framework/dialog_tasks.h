#pragma once

#include <functional>

namespace brantel {

// Where other threads leave what is to be done in a dialog. It may outlive the dialog.
class DialogTasks {
 public:
  virtual ~DialogTasks() = default;

  // From any thread, without waiting: has the task done by the dialog's own thread between two of
  // its events, after those that were left before. A task that is left when the dialog closes is
  // not done. False when the dialog has been closed.
  virtual bool Leave(std::function<void()> task) = 0;
};

}  // namespace brantel
