#include "notifier/alert_trigger.h"

#include <array>

namespace brantel {
namespace {

struct Choice {
  std::uint32_t bit;
  AlertKind kind;
};

constexpr std::array kChoices = {
    Choice{trigger_bit::kItemUp, AlertKind::kUp},
    Choice{trigger_bit::kItemDown, AlertKind::kDown},
    Choice{trigger_bit::kTrap, AlertKind::kTrap},
    Choice{trigger_bit::kServiceUp, AlertKind::kUp},
    Choice{trigger_bit::kServiceDown, AlertKind::kDown},
};

}  // namespace

std::optional<AlertKind> ChooseAlertKind(std::uint32_t trigger_word) {
  for (const Choice& choice : kChoices) {
    if ((trigger_word & choice.bit) != 0) return choice.kind;
  }
  return std::nullopt;
}

}  // namespace brantel
