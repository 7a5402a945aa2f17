#include "host/console/console_events.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <optional>

#include "host/console/console_pages.h"
#include "host/text/seconds_text.h"

namespace brantel::host {
namespace {

class SendStream final : public EventStream {
 public:
  SendStream(ConsoleBackend& backend, std::string id, std::size_t told)
      : backend_(backend), id_(std::move(id)), told_(told) {}

  std::optional<std::string> Poll() override {
    if (has_ended_) return std::nullopt;
    const auto progress = backend_.ProgressOf(id_);
    if (!progress) return std::nullopt;
    std::string messages;
    for (; told_ < progress->lines.size(); ++told_)
      messages += MessageOf(progress->lines[told_], told_ + 1);
    if (progress->has_ended) {
      messages += EventMessage("end", progress->is_delivered ? "delivered" : "failed");
      has_ended_ = true;
    }
    return messages;
  }

 private:
  static std::string MessageOf(const SendLine& line, std::size_t number) {
    const std::string id = std::to_string(number);
    if (line.kind == SendLineKind::kPhase)
      return EventMessage("phase", SecondsText(line.seconds) + " " + line.text, id);
    return EventMessage("log", ShownLog(line.text), id);
  }

  ConsoleBackend& backend_;
  const std::string id_;
  std::size_t told_;
  bool has_ended_ = false;
};

class ChangeStream final : public EventStream {
 public:
  ChangeStream(ConsoleBackend& backend, WatchedItems* watched)
      : backend_(backend), watched_(watched), seen_(Present()) {}

  std::optional<std::string> Poll() override {
    std::string present = Present();
    if (present == seen_) return "";
    seen_ = std::move(present);
    return EventMessage("change", "");
  }

 private:
  // What the pages show, in short.
  std::string Present() {
    const auto& journal = backend_.Journal();
    std::size_t ended = 0;
    for (const JournalEntry& entry : journal)
      ended += entry.end ? 1U : 0U;
    std::string present = std::to_string(journal.size()) + " " + std::to_string(ended);
    if (!journal.empty()) present += " " + journal.back().id;
    if (watched_ == nullptr) return present;
    for (const WatchedRow& item : watched_->Items()) {
      present.append("\n").append(item.name).append(StatusName(item.status)).append(item.since);
      if (item.can_be_acknowledged) present += "?";
    }
    return present;
  }

  ConsoleBackend& backend_;
  WatchedItems* watched_;
  std::string seen_;
};

}  // namespace

std::string EventMessage(std::string_view kind, std::string_view text, std::string_view id) {
  std::string message = "event: " + std::string(kind) + "\n";
  if (!id.empty()) message.append("id: ").append(id).append("\n");
  while (true) {
    // A browser takes each of these for an end of the line.
    const std::size_t size = std::min(text.find_first_of("\r\n"), text.size());
    message.append("data: ").append(text.substr(0, size)).append("\n");
    if (size == text.size()) return message + "\n";
    text.remove_prefix(size + 1);
  }
}

HttpResponse EventResponse(std::unique_ptr<EventStream> stream) {
  return {.fields = {{"Content-Type", "text/event-stream; charset=utf-8"}},
          .stream = std::move(stream)};
}

std::unique_ptr<EventStream> FollowSend(ConsoleBackend& backend, std::string id,
                                        std::string_view told) {
  std::size_t count = 0;
  std::from_chars(told.data(), told.data() + told.size(), count);
  return std::make_unique<SendStream>(backend, std::move(id), count);
}

std::unique_ptr<EventStream> FollowChanges(ConsoleBackend& backend, WatchedItems* watched) {
  return std::make_unique<ChangeStream>(backend, watched);
}

}  // namespace brantel::host
