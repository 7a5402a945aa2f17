#include "host/alert/alert_event.h"

#include <array>
#include <charconv>

namespace brantel::host {
namespace {

constexpr std::array kNamedEvents = {
    NamedAlertEvent{"item-up", kItemUp},
    NamedAlertEvent{"item-down", kItemDown},
    NamedAlertEvent{"service-up", kServiceUp},
    NamedAlertEvent{"service-down", kServiceDown},
    NamedAlertEvent{"trap", kTrap},
    NamedAlertEvent{"none", kNoEvent},
};

std::optional<std::uint32_t> ParseNumber(std::string_view text) {
  int base = 10;
  if (text.starts_with("0x") || text.starts_with("0X")) {
    text.remove_prefix(2);
    base = 16;
  }
  std::uint32_t number = 0;
  const char* const end = text.data() + text.size();
  const auto [stopped_at, error] = std::from_chars(text.data(), end, number, base);
  if (error != std::errc() || stopped_at != end) return std::nullopt;
  return number;
}

}  // namespace

std::span<const NamedAlertEvent> NamedAlertEvents() {
  return kNamedEvents;
}

std::optional<AlertEvent> ParseAlertEvent(std::string_view text) {
  for (const NamedAlertEvent& named : kNamedEvents) {
    if (named.name == text) return named.event;
  }
  if (const auto number = ParseNumber(text)) return AlertEvent{number};
  return std::nullopt;
}

std::string EventText(const AlertEvent& event) {
  for (const NamedAlertEvent& named : kNamedEvents) {
    if (named.event == event) return std::string(named.name);
  }
  return std::to_string(*event.trigger_word);
}

}  // namespace brantel::host
