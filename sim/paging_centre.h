#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "sim/far_end.h"

namespace brantel::sim {

// Instead of saying what does a centre lose the carrier?
enum class CarrierLoss { kNever, kAtPrompt, kAtGoAhead, kAtPage, kAtReply };

// What the computers of paging services have in common: they answer after a while, and what they
// have not said yet is lost when the call ends.
class PagingCentre : public FarEnd {
 public:
  PagingCentre(const PagingCentre&) = delete;
  PagingCentre& operator=(const PagingCentre&) = delete;
  ~PagingCentre() override;

 protected:
  // `pace`: how long it takes before it says something.
  PagingCentre(Surroundings system, Time pace, CarrierLoss loss);

  // Says it after the pace and the delay; what falls on the same time, in the order of the calls.
  void Say(const std::string& text, Time delay = Time(0));

  // Puts the receiver down, a while and the delay after what would be said now.
  void HangUp(Time delay = Time(0));

  // Hangs up when this is the point at which the carrier is to be lost.
  bool Loses(CarrierLoss point);

  // Whether something is planned that has not happened yet.
  [[nodiscard]] bool HasMoreToSay() const;

  // What becomes of a page that is in order: the centre takes it as it says `answer`, or it does
  // not take it.
  void TakePage(std::string_view recipient, std::string_view text, const std::string& answer);
  void NoteUntakenPage(std::string_view recipient, std::string_view text);

  void Note(std::string_view what);

 private:
  void Plan(Time delay, std::function<void()> action);

  Surroundings system_;
  const Time pace_;
  const CarrierLoss loss_;
  std::vector<Timeline::Ticket> planned_;
  Time silent_from_{0};
};

}  // namespace brantel::sim
