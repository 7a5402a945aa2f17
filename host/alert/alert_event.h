#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace brantel::host {

// The event that an alert tells of: the trigger word that GetAlertTrigger returns, or no event
// at all, for which it fails.
struct AlertEvent {
  std::optional<std::uint32_t> trigger_word;

  friend bool operator==(const AlertEvent&, const AlertEvent&) = default;
};

inline constexpr AlertEvent kItemUp{1};
inline constexpr AlertEvent kItemDown{2};
inline constexpr AlertEvent kServiceUp{4};
inline constexpr AlertEvent kServiceDown{8};
inline constexpr AlertEvent kTrap{16};
inline constexpr AlertEvent kNoEvent{std::nullopt};

struct NamedAlertEvent {
  std::string_view name;
  AlertEvent event;
};

// The events of one kind by their names, and "none".
std::span<const NamedAlertEvent> NamedAlertEvents();

// Reads the name of an event, or a trigger word as a decimal or 0x-hexadecimal number of at most 32
// bits. Nothing when the text is neither.
std::optional<AlertEvent> ParseAlertEvent(std::string_view text);

// The event as ParseAlertEvent reads it: by its name, or by its trigger word where it has none.
std::string EventText(const AlertEvent& event);

}  // namespace brantel::host
