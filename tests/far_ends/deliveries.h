#pragma once

#include <windows.h>

#include <cstddef>
#include <string>
#include <vector>

namespace brantel {

// What the far ends take from the thread that made it, while it lives and no newer one of that
// thread does.
class Deliveries {
 public:
  Deliveries();
  Deliveries(const Deliveries&) = delete;
  Deliveries& operator=(const Deliveries&) = delete;
  ~Deliveries();

  // A text for each alert, in their order.
  std::vector<std::string> texts;

  // The handles of the threads of the programs that were started, which the module leaves open.
  std::vector<HANDLE> thread_handles;

 private:
  Deliveries* const before_;
};

// For the far ends: what the calling thread has delivered.
void NoteDelivery(std::string text);
void NoteThreadHandle(HANDLE thread);

}  // namespace brantel
