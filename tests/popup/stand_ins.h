#pragma once

#include <windows.h>

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "system/windows/handle_win32.h"
#include "tests/module/scratch_directory.h"

namespace brantel {

// What the messenger library and the network that stand in for the system's are told by this
// process, and what the library reports. Everything is as it was when this goes.
class StandIns {
 public:
  StandIns();
  StandIns(const StandIns&) = delete;
  StandIns& operator=(const StandIns&) = delete;
  ~StandIns();

  // The names that this computer takes messages for, with commas between.
  void SetMessageNames(const wchar_t* names);
  // The domains of the network, each with its servers: "OPS PC1 PC2;SALES PC3".
  void SetNetwork(const wchar_t* description);
  // How many milliseconds each answer of the network takes.
  void SetNetworkDelay(unsigned milliseconds);
  // What the messenger library answers.
  void SetAnswer(unsigned status);

  // From now on each answer of the network waits until it is let through.
  void CloseGate();
  void LetThrough(int answers);
  // Until the network has been asked for one more answer, which now waits.
  void AwaitArrival();
  // Lets all answers through.
  void OpenGate();

  // The lines of the library's report.
  [[nodiscard]] std::vector<std::string> Report() const;

 private:
  void Set(const wchar_t* name, const wchar_t* value);

  ScratchDirectory scratch_;
  std::vector<const wchar_t*> set_;
  Handle gate_;
  Handle arrivals_;
};

// Waits for what other threads do; throws std::runtime_error when it does not come about.
void AwaitThat(const std::function<bool()>& condition, const char* otherwise);

}  // namespace brantel
