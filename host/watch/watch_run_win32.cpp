#include "host/watch/watch_run_win32.h"

#include <windows.h>

#include <algorithm>
#include <chrono>
#include <memory>
#include <utility>

#include "host/outcome/command_failure.h"
#include "host/outcome/system_error_text_win32.h"
#include "host/system/file_path_win32.h"
#include "host/system/present_time_win32.h"
#include "host/watch/alert_attempt_win32.h"
#include "host/watch/pinger_win32.h"
#include "host/watch/settled_text.h"
#include "host/watch/watch_journal_win32.h"
#include "host/watch/watch_loop.h"
#include "host/watch/watch_words.h"
#include "host/watch/worker_threads_win32.h"
#include "system/exception_guard.h"
#include "system/windows/critical_section_win32.h"
#include "system/windows/handle_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

constexpr std::size_t kMostPlanBytes = std::size_t{16} * 1024 * 1024;

// How long alerts under way may take to their own end when the watch ends, as a mail does, and then
// to be ended, with modems to be hung up.
constexpr std::chrono::seconds kGraceTime{5};
constexpr std::chrono::seconds kEndTime{10};

// How often it is looked for what others have changed.
constexpr std::chrono::seconds kLookTime{1};

constexpr DWORD kMemoryPollMilliseconds = 100;

std::wstring FolderOf(const std::wstring& path) {
  return path.substr(0, path.rfind(L'\\'));
}

// As it is named from the folder of the plan's file.
std::wstring PathFrom(const std::wstring& folder, const std::string& named) {
  const std::wstring name = FromUtf8(named);
  const bool is_full =
      name.starts_with(L'\\') || name.starts_with(L'/') || (name.size() > 1 && name[1] == L':');
  return FullPath(is_full ? name : folder + L"\\" + name);
}

Moment PresentMoment() {
  static const auto start = std::chrono::steady_clock::now();
  return {std::chrono::duration_cast<SteadyTime>(std::chrono::steady_clock::now() - start),
          PresentTime()};
}

PlanFile PlanFileOf(const std::wstring& path, std::string content) {
  PlanFile file{.path = path, .content = std::move(content)};
  file.reading = ReadPlan(file.content);
  const std::wstring folder = FolderOf(file.path);
  const WatchPlan& plan = file.reading.plan;
  file.instances = plan.instances.empty() ? folder : PathFrom(folder, plan.instances);
  file.journal = plan.journal.empty() ? file.path + L".journal" : PathFrom(folder, plan.journal);
  return file;
}

// What the threads of alerts and echo requests call back, as long as the watch is there. They may
// outlive it.
class Callbacks {
 public:
  Callbacks() { section_.Initialize(); }
  Callbacks(const Callbacks&) = delete;
  Callbacks& operator=(const Callbacks&) = delete;
  ~Callbacks() { section_.Delete(); }

  // What fails for want of memory is tried again: an alert of which no result came would be under
  // way for ever.
  template <typename Function>
  void Call(const Function& function) {
    while (!HasCalled(function))
      Sleep(kMemoryPollMilliseconds);
  }
  void Close() {
    const CriticalSection::Lock lock(section_);
    is_open_ = false;
  }

 private:
  template <typename Function>
  bool HasCalled(const Function& function) {
    const CriticalSection::Lock lock(section_);
    const auto call = [&] {
      function();
      return kOk;
    };
    return !is_open_ || GuardExceptions(call) == kOk;
  }

  CriticalSection section_;
  bool is_open_ = true;
};

class SystemSurroundings final : public WatchSurroundings {
 public:
  explicit SystemSurroundings(AlertRoute route) : route_(std::move(route)) {}
  SystemSurroundings(const SystemSurroundings&) = delete;
  SystemSurroundings& operator=(const SystemSurroundings&) = delete;
  ~SystemSurroundings() override { callbacks_->Close(); }

  // Ends the alerts that are under way.
  void EndAttempts() const { SetEvent(stop_->get()); }

  void SetInstances(const std::wstring& folder) { route_.instances = folder; }
  [[nodiscard]] const std::wstring& instances() const { return route_.instances; }

  Moment Now() override { return PresentMoment(); }

  void Ping(const ProbeRequest& request, NetworkLoop::ResultTaker take_result) override {
    PingInThread(request, [callbacks = callbacks_, take_result](const ProbeResult& result) {
      callbacks->Call([&] { take_result(result); });
    });
  }

  void Deliver(const AttemptOrder& order,
               std::function<void(const AttemptResult&)> take_result) override {
    CallInThread([callbacks = callbacks_, stop = stop_, route = route_, order, take_result] {
      const AttemptResult result = AttemptAlert(route, order, stop->get());
      callbacks->Call([&] { take_result(result); });
    });
  }

 private:
  AlertRoute route_;
  std::shared_ptr<Callbacks> callbacks_ = std::make_shared<Callbacks>();
  std::shared_ptr<Handle> stop_ =
      std::make_shared<Handle>(CreateEventW(nullptr, TRUE, FALSE, nullptr));
};

// Keeps records in the journal's file, and tells of them.
class JournalKeeper final : public RecordKeeper {
 public:
  JournalKeeper(WatchJournalFile& journal, const ReportWriter& report, const TextSink& errors)
      : journal_(journal), report_(report), errors_(errors) {}

  // That the journal cannot be written is no reason to hold an alert back.
  void Keep(const WatchRecord& record) override {
    Complain(journal_.Append(record));
    TellRecord(report_, record);
  }

  void Compact(const WatchMemory& memory) {
    if (journal_.is_full()) Complain(journal_.Replace(memory.Records(PresentTime())));
  }

 private:
  void Complain(const std::optional<std::string>& error) const {
    if (error)
      errors_.Write("notifyhost: warning: the journal " + ToUtf8(journal_.path()) +
                    " cannot be written: " + *error + "\n");
  }

  WatchJournalFile& journal_;
  const ReportWriter& report_;
  const TextSink& errors_;
};

class Run {
 public:
  Run(const PlanFile& file, const std::optional<std::string>& module_file,
      const ReportWriter& report, const TextSink& errors, HANDLE stop, WatchView* view)
      : file_(file),
        plan_text_(file.content),
        report_(report),
        errors_(errors),
        stop_(stop),
        view_(view),
        journal_(file.journal),
        memory_(Claimed(journal_)),
        keeper_(journal_, report, errors),
        surroundings_(
            {module_file, file.instances, ToUtf8(file.path.substr(file.path.rfind(L'\\') + 1))}),
        watch_(
            file.reading.plan, std::move(memory_), keeper_,
            [this](const std::string& instance) {
              return ResourcesOf(surroundings_.instances(), instance);
            },
            GetCurrentProcessId(), PresentMoment()),
        loop_(watch_, network_, surroundings_) {}

  void Go() {
    watch_.Note("the watch begins: " + std::to_string(watch_.plan().items.size()) + " items",
                PresentMoment());
    SteadyTime looked{};
    Show();
    while (WaitForSingleObject(stop_, 0) == WAIT_TIMEOUT) {
      loop_.Turn();
      if (PresentMoment().steady < looked + kLookTime) continue;
      looked = PresentMoment().steady;
      Look();
    }
    loop_.WaitForAttempts(kGraceTime);
    surroundings_.EndAttempts();
    loop_.WaitForAttempts(kEndTime);
    watch_.Note("the watch ends; no try was later than " +
                    std::to_string(loop_.latest_probe().count()) + " ms",
                PresentMoment());
  }

 private:
  static WatchMemory Claimed(WatchJournalFile& journal) {
    if (!journal.Claim())
      throw CommandFailure(
          ExitCode::kFailed,
          "another watch has the journal " + ToUtf8(journal.path()) + ", or it cannot be written");
    return RememberedBy(journal.Read(), PresentMoment());
  }

  // For what others have changed.
  void Look() {
    for (const WatchRecord& record : journal_.TakeForeign()) {
      watch_.TakeForeign(record, PresentMoment());
      TellRecord(report_, record);
    }
    keeper_.Compact(watch_.memory());
    TakeChangedPlan();
    Show();
  }

  void Show() const {
    if (view_ != nullptr) view_->Show(watch_.Items(PresentMoment()));
  }

  // A file that is wrong, or is not there while it is written, leaves all as it is.
  void TakeChangedPlan() {
    std::string content = FileStart(file_.path, kMostPlanBytes);
    if (content.empty() || !plan_text_.TakeIfChanged(content)) return;
    PlanFile changed = PlanFileOf(file_.path, std::move(content));
    if (!changed.reading.complaints.empty()) {
      errors_.Write("notifyhost: warning: the changed plan is wrong, and the old one counts:\n" +
                    ComplaintsText(changed));
      return;
    }
    surroundings_.SetInstances(changed.instances);
    watch_.ChangePlan(std::move(changed.reading.plan), PresentMoment());
    watch_.Note("the plan has changed: " + std::to_string(watch_.plan().items.size()) + " items",
                PresentMoment());
  }

  const PlanFile file_;
  SettledText plan_text_;
  const ReportWriter& report_;
  const TextSink& errors_;
  const HANDLE stop_;
  WatchView* const view_;
  WatchJournalFile journal_;
  WatchMemory memory_;
  JournalKeeper keeper_;
  NetworkLoop network_;
  SystemSurroundings surroundings_;
  Watch watch_;
  WatchLoop loop_;
};

}  // namespace

PlanFile ReadPlanFile(const std::wstring& path) {
  const std::wstring full = FullPath(path);
  if (!FileExists(full) || IsDirectory(full))
    throw CommandFailure(ExitCode::kWrongUsage, "there is no file " + ToUtf8(full));
  return PlanFileOf(full, FileStart(full, kMostPlanBytes));
}

std::string ComplaintsText(const PlanFile& file) {
  std::string text;
  for (const PlanComplaint& complaint : file.reading.complaints)
    text += ToUtf8(file.path) + ": " + ComplaintText(complaint) + "\n";
  return text;
}

void RunWatch(const PlanFile& file, const std::optional<std::string>& module_file,
              const ReportWriter& report, const TextSink& errors, HANDLE stop, WatchView* view) {
  Run(file, module_file, report, errors, stop, view).Go();
}

void RequireRightPlan(const PlanFile& file, const TextSink& errors) {
  if (file.reading.complaints.empty()) return;
  errors.Write(ComplaintsText(file));
  throw CommandFailure(ExitCode::kWrongUsage, "the plan is wrong");
}

bool AcknowledgeInJournal(const std::wstring& journal, const std::string& item,
                          const std::string& by) {
  WatchJournalFile file(journal);
  const WatchMemory memory = RememberedBy(file.Read(), PresentMoment());
  const ItemMemory& known = memory.ItemNamed(item);
  if (known.incident == 0 || !known.acknowledged_by.empty()) return false;
  if (const auto error = file.Append({PresentTime(), Acknowledgement{item, known.incident, by}}))
    throw CommandFailure(ExitCode::kFailed,
                         "the journal " + ToUtf8(journal) + " cannot be written: " + *error);
  return true;
}

WatchMemory MemoryByJournal(const PlanFile& file) {
  return RememberedBy(WatchJournalFile(file.journal).Read(), PresentMoment());
}

namespace {

class NoKeeper final : public RecordKeeper {
 public:
  void Keep(const WatchRecord&) override {}
};

}  // namespace

std::vector<ItemSnapshot> ItemsByJournal(const PlanFile& file) {
  NoKeeper nobody;
  const Watch watch(
      file.reading.plan, MemoryByJournal(file), nobody,
      [](const std::string&) { return std::vector<std::string>(); }, 0, PresentMoment());
  std::vector<ItemSnapshot> items = watch.Items(PresentMoment());
  // What a new watch would look at first does not count here.
  for (ItemSnapshot& item : items)
    item.hold.clear();
  return items;
}

}  // namespace brantel::host
