#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "host/report/report_writer.h"
#include "host/watch/plan_reader.h"
#include "host/watch/watch.h"

namespace brantel::host {

// A plan's file, and what it names beside itself.
struct PlanFile {
  std::wstring path{};    // in full
  std::string content{};  // as it is
  PlanReading reading{};
  std::wstring instances{};  // the folder of instance files, in full
  std::wstring journal{};    // of the watch, in full
};

// Throws CommandFailure when the file cannot be read.
PlanFile ReadPlanFile(const std::wstring& path);

// Who is shown how it stands with the items, on the thread that watches.
class WatchView {
 public:
  virtual ~WatchView() = default;
  virtual void Show(std::vector<ItemSnapshot> items) = 0;
};

// Watches what the plan's file names until the event `stop` is signalled, and takes the file anew
// when it has changed. Tells of what it does as it comes, and shows it about every second, where
// there is a view. Throws CommandFailure when the plan is wrong, or when its journal is another
// watch's.
void RunWatch(const PlanFile& file, const std::optional<std::string>& module_file,
              const ReportWriter& report, const TextSink& errors, HANDLE stop,
              WatchView* view = nullptr);

// Throws CommandFailure, of wrong usage, when the plan is wrong, and tells of all complaints.
void RequireRightPlan(const PlanFile& file, const TextSink& errors);

// Puts the acknowledgement into the journal, where the watch that runs finds it. False when the
// item is not down, or has been acknowledged. Throws CommandFailure when it cannot be written.
bool AcknowledgeInJournal(const std::wstring& journal, const std::string& item,
                          const std::string& by);

// How it stands with the items by the journal.
std::vector<ItemSnapshot> ItemsByJournal(const PlanFile& file);
WatchMemory MemoryByJournal(const PlanFile& file);

// All complaints about the file, a line each.
std::string ComplaintsText(const PlanFile& file);

}  // namespace brantel::host
