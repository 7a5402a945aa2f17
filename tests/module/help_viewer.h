#pragma once

#include <windows.h>

#include <ostream>
#include <string>
#include <thread>
#include <vector>

#include "system/windows/handle_win32.h"

namespace brantel {

struct HelpRequest {
  std::string file = {};
  unsigned command = 0;
  unsigned long data = 0;

  friend bool operator==(const HelpRequest&, const HelpRequest&) = default;
};

std::ostream& operator<<(std::ostream& out, const HelpRequest& request);

// Stands in for the system's help viewer while it lives: programs that want help find its window
// and send it what they want shown.
class HelpViewer {
 public:
  HelpViewer();
  HelpViewer(const HelpViewer&) = delete;
  HelpViewer& operator=(const HelpViewer&) = delete;
  ~HelpViewer();

  // What was asked for so far. Whoever asks for help goes on when it has been recorded.
  [[nodiscard]] const std::vector<HelpRequest>& requests() const { return requests_; }

 private:
  static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  void Run();

  std::vector<HelpRequest> requests_;
  HWND window_ = nullptr;
  Handle ready_;
  std::jthread thread_;
};

}  // namespace brantel
