#pragma once

#include <string>
#include <utility>
#include <vector>

#include "host/console/console_backend.h"
#include "host/watch/watch_run_win32.h"
#include "system/windows/critical_section_win32.h"

namespace brantel::host {

// Where a watch puts how it stands with its items, and a console looks for it. Each on a thread of
// its own.
class WatchBoard final : public WatchView, public WatchedItems {
 public:
  // The journal is the watch's.
  explicit WatchBoard(std::wstring journal) : journal_(std::move(journal)) {
    section_.Initialize();
  }
  WatchBoard(const WatchBoard&) = delete;
  WatchBoard& operator=(const WatchBoard&) = delete;
  ~WatchBoard() override { section_.Delete(); }

  void Show(std::vector<ItemSnapshot> items) override;
  std::vector<WatchedRow> Items() override;
  bool Acknowledge(const std::string& item, const std::string& by) override;

 private:
  const std::wstring journal_;
  CriticalSection section_;
  std::vector<ItemSnapshot> items_;
};

}  // namespace brantel::host
