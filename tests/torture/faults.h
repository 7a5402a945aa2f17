#pragma once

#include <array>
#include <cstddef>
#include <set>
#include <string_view>

#include "tests/unit/allocation_counter.h"

namespace brantel {

// How long a fault lasts.
enum class Lasting { kOnce, kForGood };

// Which calls on a machine's system fail, counted over all of its parts.
class Faults {
 public:
  // From now on the n-th call fails; 0: none does. `way` chooses among the errors that it can have.
  void Plan(std::size_t n, Lasting lasting, std::size_t way) noexcept {
    calls_ = 0;
    failures_ = 0;
    failed_.clear();
    first_ = n;
    lasting_ = lasting;
    way_ = way;
  }

  // Counts a call, and says whether it fails. Calls whose failures are not all the same to whoever
  // sends an alert have a name.
  bool Strike(std::string_view name = {}) noexcept {
    ++calls_;
    const bool fails =
        first_ != 0 && (calls_ == first_ || (calls_ > first_ && lasting_ == Lasting::kForGood));
    if (fails) NoteFailure(name);
    return fails;
  }

  // The error of a call that fails.
  template <typename Error, std::size_t kCount>
  [[nodiscard]] Error Choose(const std::array<Error, kCount>& errors) const noexcept {
    return errors[way_ % kCount];
  }

  [[nodiscard]] bool last_for_good() const { return lasting_ == Lasting::kForGood; }
  [[nodiscard]] std::size_t calls() const { return calls_; }
  [[nodiscard]] std::size_t failures() const { return failures_; }
  // Whether a call of that name has failed.
  [[nodiscard]] bool HasFailed(std::string_view name) const { return failed_.contains(name); }

 private:
  void NoteFailure(std::string_view name) {
    const MemoryOfOthers others;
    ++failures_;
    failed_.insert(name);
  }

  std::size_t calls_ = 0;
  std::size_t failures_ = 0;
  std::set<std::string_view> failed_;
  std::size_t first_ = 0;
  Lasting lasting_ = Lasting::kOnce;
  std::size_t way_ = 0;
};

}  // namespace brantel
