#include "sim/exchange_script.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <sstream>
#include <stdexcept>

namespace brantel::sim {
namespace {

using Words = std::vector<std::string>;

struct NamedNumber {
  std::string_view name;
  std::uint32_t number;
};

constexpr std::array kCallStates = {
    NamedNumber{"idle", 0x1},
    NamedNumber{"offering", 0x2},
    NamedNumber{"accepted", 0x4},
    NamedNumber{"dialtone", 0x8},
    NamedNumber{"dialing", 0x10},
    NamedNumber{"ringback", 0x20},
    NamedNumber{"busy", 0x40},
    NamedNumber{"specialinfo", 0x80},
    NamedNumber{"connected", 0x100},
    NamedNumber{"proceeding", 0x200},
    NamedNumber{"onhold", 0x400},
    NamedNumber{"conferenced", 0x800},
    NamedNumber{"disconnected", 0x4000},
    NamedNumber{"unknown", 0x8000},
};

constexpr std::uint32_t kCallStateMessage = 2;
constexpr std::uint32_t kCloseMessage = 3;
constexpr std::uint32_t kDeviceStateMessage = 8;
constexpr std::uint32_t kReplyMessage = 12;

std::uint32_t ToNumber(const std::string& word) {
  std::size_t used = 0;
  unsigned long long number = 0;
  try {
    number = std::stoull(word, &used, 0);
  } catch (const std::logic_error&) {
    used = 0;
  }
  if (used == 0 || used != word.size() || number > 0xFFFFFFFF) {
    throw std::runtime_error("no number: " + word);
  }
  return static_cast<std::uint32_t>(number);
}

Time ToTime(const std::string& word) {
  std::size_t used = 0;
  double seconds = -1;
  try {
    seconds = std::stod(word, &used);
  } catch (const std::logic_error&) {
    used = 0;
  }
  constexpr double kLongest = 1e6;
  if (used == 0 || used != word.size() || !(seconds >= 0 && seconds <= kLongest)) {
    throw std::runtime_error("no time: " + word);
  }
  constexpr double kMilliseconds = 1000;
  return Time(std::llround(seconds * kMilliseconds));
}

std::uint32_t ToCallState(const std::string& word) {
  const auto* const named = std::ranges::find(kCallStates, word, &NamedNumber::name);
  return named == kCallStates.end() ? ToNumber(word) : named->number;
}

char ToKey(const std::string& word) {
  if (word.size() != 1) throw std::runtime_error("no key: " + word);
  return word.front();
}

const std::string& Word(const Words& words, std::size_t index) {
  if (index >= words.size()) throw std::runtime_error("a word is missing");
  return words[index];
}

struct LineAbility {
  std::string_view name;
  std::uint32_t ExchangeLine::*number;
};

constexpr std::array kLineAbilities = {
    LineAbility{"negotiation-error", &ExchangeLine::negotiation_error},
    LineAbility{"version", &ExchangeLine::version},
    LineAbility{"capabilities-error", &ExchangeLine::capabilities_error},
    LineAbility{"capabilities-size", &ExchangeLine::capabilities_size},
    LineAbility{"media-modes", &ExchangeLine::media_modes},
};

ExchangeLine ToLine(const Words& words) {
  ExchangeLine line;
  for (std::size_t i = 1; i < words.size(); i += 2) {
    const auto* const ability = std::ranges::find(kLineAbilities, words[i], &LineAbility::name);
    if (ability == kLineAbilities.end()) throw std::runtime_error("no such ability: " + words[i]);
    line.*(ability->number) = ToNumber(Word(words, i + 1));
  }
  return line;
}

struct EventKind {
  std::string_view name;
  ExchangeEvent (*make)(const Words& arguments);
};

const std::array kEventKinds = {
    EventKind{"call-state",
              [](const Words& words) {
                return ExchangeEvent{
                    .message = {.kind = kCallStateMessage, .first = ToCallState(Word(words, 0))}};
              }},
    EventKind{"digit",
              [](const Words& words) { return ExchangeEvent{.key = ToKey(Word(words, 0))}; }},
    EventKind{"line-close",
              [](const Words&) { return ExchangeEvent{.message = {.kind = kCloseMessage}}; }},
    EventKind{"device-state",
              [](const Words& words) {
                return ExchangeEvent{
                    .message = {.kind = kDeviceStateMessage, .first = ToNumber(Word(words, 0))}};
              }},
    EventKind{"reply",
              [](const Words& words) {
                return ExchangeEvent{.message = {.kind = kReplyMessage,
                                                 .first = ToNumber(Word(words, 0)),
                                                 .second = ToNumber(Word(words, 1))}};
              }},
    EventKind{"message",
              [](const Words& words) {
                return ExchangeEvent{.message = {.kind = ToNumber(Word(words, 0)),
                                                 .first = ToNumber(Word(words, 1)),
                                                 .second = ToNumber(Word(words, 2)),
                                                 .third = ToNumber(Word(words, 3))}};
              }},
};

ExchangeEvent ToEvent(const Words& words) {
  const std::string& name = Word(words, 2);
  const auto kind = std::ranges::find(kEventKinds, name, &EventKind::name);
  if (kind == kEventKinds.end()) throw std::runtime_error("no such event: " + name);
  ExchangeEvent event = kind->make({words.begin() + 3, words.end()});
  event.delay = ToTime(words[1]);
  event.description = name;
  for (std::size_t i = 3; i < words.size(); ++i)
    event.description += " " + words[i];
  return event;
}

ExchangeFailure ToFailure(const Words& words) {
  return {.function = Word(words, 1),
          .error = ToNumber(Word(words, 2)),
          .times = words.size() > 3 ? ToNumber(words[3]) : 0};
}

class ScriptReader {
 public:
  void Take(const Words& words) {
    const std::string& kind = words.front();
    if (kind == "line") {
      AddLine(words);
    } else if (kind == "no-lines") {
      script_.lines.clear();
    } else if (kind == "fails") {
      script_.failures.push_back(ToFailure(words));
    } else if (kind == "never-enough") {
      script_.never_enough.insert(Word(words, 1));
    } else if (kind == "sends-messages") {
      script_.sends_messages = true;
    } else if (kind == "at") {
      script_.events.push_back(ToEvent(words));
    } else if (kind == "wave-device") {
      script_.wave_device = ToNumber(Word(words, 1));
    } else if (kind == "keys") {
      script_.keys_file = Word(words, 1);
    } else {
      throw std::runtime_error("no such thing: " + kind);
    }
  }

  [[nodiscard]] const ExchangeScript& script() const { return script_; }

 private:
  // The first one replaces the line that there is where the script tells of none.
  void AddLine(const Words& words) {
    if (!has_lines_) script_.lines.clear();
    has_lines_ = true;
    script_.lines.push_back(ToLine(words));
  }

  ExchangeScript script_;
  bool has_lines_ = false;
};

Words SplitLine(const std::string& line) {
  Words words;
  if (line.starts_with('#')) return words;
  std::istringstream stream(line);
  for (std::string word; stream >> word;)
    words.push_back(word);
  return words;
}

}  // namespace

ExchangeScript ParseExchangeScript(std::string_view text) {
  ScriptReader reader;
  std::istringstream lines{std::string(text)};
  unsigned number = 0;
  for (std::string line; std::getline(lines, line);) {
    ++number;
    const Words words = SplitLine(line);
    if (words.empty()) continue;
    try {
      reader.Take(words);
    } catch (const std::runtime_error& error) {
      throw std::runtime_error("line " + std::to_string(number) + ": " + error.what());
    }
  }
  return reader.script();
}

}  // namespace brantel::sim
