#pragma once

#include <string>
#include <utility>

#include "sim/far_end.h"

namespace brantel::sim {

// A numeric pager behind an answering machine: after the beep the caller keys in digits and ends
// with #, and the pager shows them. "*" shows as a dash.
class NumericPager final : public FarEnd {
 public:
  explicit NumericPager(Surroundings system) : system_(std::move(system)) {}
  NumericPager(const NumericPager&) = delete;
  NumericPager& operator=(const NumericPager&) = delete;
  // A caller who hangs up without # has paged as well.
  ~NumericPager() override { Show(); }

  void HearTone(char tone) override;

 private:
  void Show();

  Surroundings system_;
  std::string digits_;
};

}  // namespace brantel::sim
