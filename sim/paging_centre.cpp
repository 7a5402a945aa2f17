#include "sim/paging_centre.h"

#include <algorithm>
#include <utility>

namespace brantel::sim {
namespace {

constexpr Time kBeforeHangUp{500};

std::string PageText(std::string_view recipient, std::string_view text) {
  return std::string(recipient) + ": " + Quoted(text);
}

}  // namespace

PagingCentre::PagingCentre(Surroundings surroundings, Time pace, CarrierLoss loss)
    : surroundings_(std::move(surroundings)), pace_(pace), loss_(loss) {}

PagingCentre::~PagingCentre() {
  for (const Timeline::Ticket& ticket : planned_) {
    surroundings_.timeline.Cancel(ticket);
  }
}

void PagingCentre::Say(const std::string& text, Time delay) {
  Plan(pace_ + delay, [this, text] {
    surroundings_.transcript.NoteBytes("centre", text);
    surroundings_.send(text);
  });
}

void PagingCentre::HangUp(Time delay) {
  Plan(pace_ + kBeforeHangUp + delay, [this] { surroundings_.hang_up(); });
}

bool PagingCentre::Loses(CarrierLoss point) {
  if (loss_ != point) return false;
  HangUp();
  return true;
}

void PagingCentre::Plan(Time delay, std::function<void()> action) {
  planned_.push_back(surroundings_.timeline.After(delay, std::move(action)));
  silent_from_ = std::max(silent_from_, surroundings_.timeline.now() + delay);
}

bool PagingCentre::HasMoreToSay() const {
  return surroundings_.timeline.now() < silent_from_;
}

void PagingCentre::Note(std::string_view what) {
  surroundings_.transcript.Note("centre", what);
}

void PagingCentre::TakePage(std::string_view recipient, std::string_view text,
                            const std::string& answer) {
  Plan(pace_, [this, page = PageText(recipient, text)] { Note("takes a page for " + page); });
  Say(answer);
}

void PagingCentre::NoteUntakenPage(std::string_view recipient, std::string_view text) {
  Note("does not take the page for " + PageText(recipient, text));
}

}  // namespace brantel::sim
