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

PagingCentre::PagingCentre(Surroundings system, Time pace, CarrierLoss loss)
    : system_(std::move(system)), pace_(pace), loss_(loss) {}

PagingCentre::~PagingCentre() {
  for (const Timeline::Ticket& ticket : planned_) {
    system_.timeline.Cancel(ticket);
  }
}

void PagingCentre::Say(const std::string& text, Time delay) {
  Plan(pace_ + delay, [this, text] {
    system_.transcript.NoteBytes("centre", text);
    system_.send(text);
  });
}

void PagingCentre::HangUp(Time delay) {
  Plan(pace_ + kBeforeHangUp + delay, [this] { system_.hang_up(); });
}

bool PagingCentre::Loses(CarrierLoss point) {
  if (loss_ != point) return false;
  HangUp();
  return true;
}

void PagingCentre::Plan(Time delay, std::function<void()> action) {
  planned_.push_back(system_.timeline.After(delay, std::move(action)));
  silent_from_ = std::max(silent_from_, system_.timeline.now() + delay);
}

bool PagingCentre::HasMoreToSay() const {
  return system_.timeline.now() < silent_from_;
}

void PagingCentre::Note(std::string_view what) {
  system_.transcript.Note("centre", what);
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
