#pragma once

#include <windows.h>

#include <atomic>
#include <vector>

#include "tests/far_ends/stand_in_libraries.h"
#include "tests/module/import_patch.h"

namespace brantel {

// A messenger service whose messages are deliveries of the thread that sends them.
std::vector<LibraryEntry> MessengerEntries();

// The same two computers in the network as often as the module looks for them, while this lives.
// There can be one at a time.
class SmallNetwork {
 public:
  explicit SmallNetwork(HMODULE module);
  SmallNetwork(const SmallNetwork&) = delete;
  SmallNetwork& operator=(const SmallNetwork&) = delete;
  ~SmallNetwork();

  // Levels of the network that are open.
  [[nodiscard]] long open_levels() const { return open_levels_; }

 private:
  static DWORD WINAPI OnOpenEnum(DWORD scope, DWORD type, DWORD usage, NETRESOURCEA* container,
                                 HANDLE* level);
  static DWORD WINAPI OnEnumResource(HANDLE level, DWORD* count, void* buffer, DWORD* size);
  static DWORD WINAPI OnCloseEnum(HANDLE level);

  std::atomic<long> open_levels_ = 0;
  ImportPatch open_;
  ImportPatch next_;
  ImportPatch close_;
};

}  // namespace brantel
