#pragma once

#include <cstdint>
#include <optional>

namespace brantel {

// Bits of the word that the host's GetAlertTrigger gives. Two kinds of monitored item each come up
// and go down with bits of their own.
namespace trigger_bit {
inline constexpr std::uint32_t kItemUp = 1;
inline constexpr std::uint32_t kItemDown = 2;
inline constexpr std::uint32_t kServiceUp = 4;
inline constexpr std::uint32_t kServiceDown = 8;
inline constexpr std::uint32_t kTrap = 16;
}  // namespace trigger_bit

enum class AlertKind { kUp, kDown, kTrap };

// What a trigger word announces, or nothing when it holds none of the five bits. The first bit
// found in the order item up, item down, trap, service up, service down decides: hosts send several
// at once, and an item's own state comes before that of its services.
std::optional<AlertKind> ChooseAlertKind(std::uint32_t trigger_word);

}  // namespace brantel
