#pragma once

#include <concepts>
#include <cstdint>
#include <type_traits>
#include <utility>
#include <variant>

namespace brantel {

// Why something failed: the system's error number, or the number of the text that says it.
struct Failure {
  std::uint32_t reason = 0;

  friend bool operator==(const Failure&, const Failure&) = default;
};

// What something that may fail has given, or why it has failed. For where the caller tells people
// the reason; without one, bool, std::optional and null pointers say as much.
template <typename Value = std::monostate>
class [[nodiscard]] Outcome {
 public:
  // Both implicit, so that functions return either as it is.
  template <std::convertible_to<Value> Given>
  // NOLINTNEXTLINE(bugprone-forwarding-reference-overload): the requirement leaves copies alone
  requires(!std::same_as<std::remove_cvref_t<Given>, Outcome>) Outcome(Given&& value)
      : content_(std::in_place_index<0>, std::forward<Given>(value)) {}
  Outcome(Failure failure) : content_(failure) {}

  explicit operator bool() const noexcept { return content_.index() == 0; }

  [[nodiscard]] Value& operator*() { return std::get<0>(content_); }
  [[nodiscard]] const Value& operator*() const { return std::get<0>(content_); }

  [[nodiscard]] Failure failure() const { return std::get<Failure>(content_); }
  [[nodiscard]] std::uint32_t reason() const { return failure().reason; }

 private:
  std::variant<Value, Failure> content_;
};

// What a step has given that gives nothing.
inline constexpr std::monostate kDone;

}  // namespace brantel
