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
  PagingCentre(Surroundings surroundings, Time pace, CarrierLoss loss);

  // Says it after the pace and the delay; what falls on the same time, in the order of the calls.
  void Say(const std::string& text, Time delay = Time(0));

  // Puts the receiver down, a while after what would be said now.
  void HangUp();

  // Hangs up when this is the point at which the carrier is to be lost.
  bool Loses(CarrierLoss point);

  // Whether something is planned that has not happened yet.
  [[nodiscard]] bool HasMoreToSay() const;

  void Note(std::string_view what);
  // A page has come that is in order, whatever becomes of it.
  void NotePage(std::string_view recipient, std::string_view text);

 private:
  void Plan(Time delay, std::function<void()> action);

  Surroundings surroundings_;
  const Time pace_;
  const CarrierLoss loss_;
  std::vector<Timeline::Ticket> planned_;
  Time silent_from_{0};
};

}  // namespace brantel::sim
