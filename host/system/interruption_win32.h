#pragma once

#include <windows.h>

namespace brantel::host {

// While an object exists, Ctrl-C and the closing of the console do not end the process but are seen
// here, so that what has been begun can be ended properly. There is one object at a time.
class Interruption {
 public:
  Interruption();
  Interruption(const Interruption&) = delete;
  Interruption& operator=(const Interruption&) = delete;
  ~Interruption();

  // Signalled from the first interruption on.
  [[nodiscard]] HANDLE event() const;
};

// Makes Ctrl-C leave this process alone; another one decides then what becomes of it. Programs that
// it starts are not affected.
void LeaveInterruptionsToOthers();

}  // namespace brantel::host
