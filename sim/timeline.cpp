#include "sim/timeline.h"

namespace brantel::sim {

Timeline::Ticket Timeline::After(Time delay, std::function<void()> action) {
  const Ticket ticket{now_ + delay, ++last_number_};
  planned_.emplace(ticket, std::move(action));
  return ticket;
}

std::optional<Time> Timeline::NextTime() const {
  if (planned_.empty()) return std::nullopt;
  return planned_.begin()->first.first;
}

void Timeline::AdvanceTo(Time time) {
  while (!planned_.empty() && planned_.begin()->first.first <= time) {
    const auto due = planned_.extract(planned_.begin());
    now_ = due.key().first;
    due.mapped()();
  }
  now_ = time;
}

}  // namespace brantel::sim
