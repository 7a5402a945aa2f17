#include "host/console/send_desk_win32.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstddef>
#include <exception>

#include "host/delivery/delivery_win32.h"
#include "host/instances/instance_file_win32.h"
#include "system/windows/critical_section_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

constexpr std::ptrdiff_t kMostUnderWay = 4;
constexpr std::size_t kMostKept = 32;
constexpr std::size_t kMostLines = 5000;

// After that an alert is given up: nobody waits longer before a page.
constexpr std::chrono::minutes kTimeLimit{15};

double SecondsOf(ElapsedTime elapsed) {
  return std::chrono::duration<double>(elapsed).count();
}

}  // namespace

// One send and the thread that delivers it.
class SendDesk::Send final : public DeliveryListener {
 public:
  Send(const SendSetup& setup, HANDLE stop, SendOrder order)
      : setup_(setup), stop_(stop), order_(std::move(order)) {
    section_.Initialize();
    progress_.instance = order_.instance;
    progress_.class_name = order_.class_name;
    progress_.event = EventText(order_.event);
    thread_ = Handle(CreateThread(nullptr, 0, RunThread, this, 0, nullptr));
    if (!thread_) Finish(false, "not tried: no thread could be started");
  }
  Send(const Send&) = delete;
  Send& operator=(const Send&) = delete;
  ~Send() override {
    if (thread_) WaitForSingleObject(thread_.get(), INFINITE);
    section_.Delete();
  }

  SendProgress Progress() {
    const CriticalSection::Lock lock(section_);
    return progress_;
  }

  bool HasEnded() {
    const CriticalSection::Lock lock(section_);
    return progress_.has_ended;
  }

  void OnLog(std::string_view text, ElapsedTime elapsed) override {
    Add({SendLineKind::kLog, SecondsOf(elapsed), std::string(text)});
  }
  void OnPhase(std::string_view phase, ElapsedTime elapsed) override {
    Add({SendLineKind::kPhase, SecondsOf(elapsed), std::string(phase)});
  }
  void OnWarning(std::string_view warning) override {
    Add({SendLineKind::kPhase, 0, "warning: " + std::string(warning)});
  }

 private:
  static DWORD WINAPI RunThread(void* send) {
    static_cast<Send*>(send)->Run();
    return 0;
  }

  void Run() noexcept {
    try {
      const DeliveryEnd end = DeliverOrder();
      Finish(end.summary.verdict.delivered, end.summary.Sentence());
    } catch (const std::exception& error) {
      Finish(false, std::string("not tried: ") + error.what());
    }
  }

  DeliveryEnd DeliverOrder() {
    const std::wstring path = setup_.directory + L"\\" + FromUtf8(order_.instance);
    const AlertToDeliver alert{.command = "serve",
                               .class_name = order_.class_name,
                               .instance = ToUtf8(path),
                               .path = path,
                               .file = ReadInstanceFile(path),
                               .folder = setup_.directory,
                               .module_file = setup_.module_file};
    const DeliveryOptions options{.event = order_.event,
                                  .variables = order_.variables,
                                  .time_limit = kTimeLimit,
                                  .journal = setup_.journal};
    return Deliver(alert, options, stop_, *this);
  }

  void Finish(bool is_delivered, std::string verdict) {
    const CriticalSection::Lock lock(section_);
    progress_.has_ended = true;
    progress_.is_delivered = is_delivered;
    progress_.verdict = std::move(verdict);
  }

  void Add(SendLine line) {
    const CriticalSection::Lock lock(section_);
    if (progress_.lines.size() < kMostLines) progress_.lines.push_back(std::move(line));
  }

  const SendSetup& setup_;
  const HANDLE stop_;
  const SendOrder order_;
  CriticalSection section_;
  SendProgress progress_;
  Handle thread_;
};

SendDesk::SendDesk(SendSetup setup)
    : setup_(std::move(setup)), stop_(CreateEventW(nullptr, TRUE, FALSE, nullptr)) {}

SendDesk::~SendDesk() {
  SetEvent(stop_.get());
  sends_.clear();
}

std::optional<std::string> SendDesk::Begin(const SendOrder& order) {
  const auto is_under_way = [](const auto& entry) { return !entry.second->HasEnded(); };
  if (std::ranges::count_if(sends_, is_under_way) >= kMostUnderWay) return std::nullopt;
  DropOldest();
  const unsigned number = ++begun_;
  sends_.emplace(number, std::make_unique<Send>(setup_, stop_.get(), order));
  return std::to_string(number);
}

std::optional<SendProgress> SendDesk::ProgressOf(const std::string& id) {
  unsigned number = 0;
  const char* const end = id.data() + id.size();
  const auto [stop, error] = std::from_chars(id.data(), end, number);
  const auto send = sends_.find(number);
  if (error != std::errc() || stop != end || send == sends_.end()) return std::nullopt;
  return send->second->Progress();
}

void SendDesk::DropOldest() {
  if (sends_.size() < kMostKept) return;
  const auto oldest =
      std::ranges::find_if(sends_, [](const auto& entry) { return entry.second->HasEnded(); });
  sends_.erase(oldest);
}

}  // namespace brantel::host
