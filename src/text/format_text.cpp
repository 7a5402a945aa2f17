#include "text/format_text.h"
#include "text/digits.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <optional>
#include <span>

namespace brantel {
namespace {

constexpr std::size_t kLongestText = kFormatCapacity - 1;

struct Directive {
  bool left_aligned = false;
  bool zero_filled = false;
  bool alternate = false;
  std::size_t width = 0;
  std::optional<std::size_t> precision;
  char letter = '\0';
};

constexpr std::string_view kLetters = "sScCdiuxXpn";

bool Skip(std::string_view& format, std::string_view expected) {
  const bool found = format.starts_with(expected);
  if (found) format.remove_prefix(expected.size());
  return found;
}

void TakeFlags(std::string_view& format, Directive& directive) {
  for (;;) {
    if (Skip(format, "-")) {
      directive.left_aligned = true;
    } else if (Skip(format, "0")) {
      directive.zero_filled = true;
    } else if (Skip(format, "#")) {
      directive.alternate = true;
    } else {
      return;
    }
  }
}

std::size_t TakeSize(std::string_view& format) {
  std::size_t size = 0;
  while (!format.empty() && IsDigit(format.front())) {
    size = std::min(size * 10 + static_cast<std::size_t>(format.front() - '0'), kFormatCapacity);
    format.remove_prefix(1);
  }
  return size;
}

void SkipArgumentSize(std::string_view& format) {
  if (Skip(format, "I64") || Skip(format, "I32") || Skip(format, "I")) return;
  while (Skip(format, "h") || Skip(format, "l") || Skip(format, "w")) {
  }
}

// Takes a directive from the front of the format. When there is none, the format stays.
std::optional<Directive> TakeDirective(std::string_view& format) {
  std::string_view rest = format;
  if (!Skip(rest, "%")) return std::nullopt;
  Directive directive;
  TakeFlags(rest, directive);
  directive.width = TakeSize(rest);
  if (Skip(rest, ".")) directive.precision = TakeSize(rest);
  SkipArgumentSize(rest);
  if (rest.empty() || kLetters.find(rest.front()) == std::string_view::npos) return std::nullopt;
  directive.letter = rest.front();
  format = rest.substr(1);
  return directive;
}

// Hands out arguments one after the other.
class ArgumentQueue {
 public:
  explicit ArgumentQueue(std::span<const FormatArgument> arguments) : left_(arguments) {}

  // What stands for a missing argument is up to the directive.
  FormatArgument TakeOr(const FormatArgument& stand_in) {
    if (left_.empty()) return stand_in;
    const FormatArgument next = left_.front();
    left_ = left_.subspan(1);
    return next;
  }

 private:
  std::span<const FormatArgument> left_;
};

std::string Digits(std::uint32_t number, int base) {
  std::string digits(std::numeric_limits<std::uint32_t>::digits10 + 1, '\0');
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number, base).ptr;
  digits.resize(static_cast<std::size_t>(end - digits.data()));
  return digits;
}

std::string UpperCase(std::string text) {
  std::ranges::transform(text, text.begin(), [](char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  });
  return text;
}

// A number in its parts, between which zeros are filled in.
struct NumberText {
  std::string prefix;
  std::string digits;
};

NumberText SignedDecimal(std::uint32_t number) {
  const bool negative = static_cast<std::int32_t>(number) < 0;
  return {negative ? "-" : "", Digits(negative ? 0U - number : number, 10)};
}

NumberText Hexadecimal(const Directive& directive, std::uint32_t number) {
  NumberText text{directive.alternate ? "0x" : "", Digits(number, 16)};
  return directive.letter == 'x' ? text
                                 : NumberText{UpperCase(text.prefix), UpperCase(text.digits)};
}

NumberText ToNumberText(const Directive& directive, std::uint32_t number) {
  switch (directive.letter) {
    case 'd':
    case 'i':
      return SignedDecimal(number);
    case 'u':
      return {"", Digits(number, 10)};
    default:
      return Hexadecimal(directive, number);
  }
}

std::string FormatNumber(const Directive& directive, std::uint32_t number) {
  const NumberText text = ToNumberText(directive, number);
  std::size_t digit_count = directive.precision.value_or(0);
  if (directive.zero_filled && !directive.left_aligned && !directive.precision) {
    digit_count = directive.width - std::min(directive.width, text.prefix.size());
  }
  const std::size_t zeros = digit_count - std::min(digit_count, text.digits.size());
  return text.prefix + std::string(zeros, '0') + text.digits;
}

std::string FormatString(const Directive& directive, const FormatArgument& argument) {
  const auto* const number = std::get_if<std::uint32_t>(&argument);
  const std::string text =
      number != nullptr ? Digits(*number, 10) : std::string(std::get<std::string_view>(argument));
  return text.substr(0, directive.precision.value_or(text.size()));
}

std::string FormatCharacter(const FormatArgument& argument) {
  if (const auto* const number = std::get_if<std::uint32_t>(&argument)) {
    // A NUL would end the text for whoever reads it.
    return *number == 0 ? std::string() : std::string(1, static_cast<char>(*number));
  }
  return std::string(std::get<std::string_view>(argument).substr(0, 1));
}

std::string Unaligned(const Directive& directive, ArgumentQueue& arguments) {
  switch (directive.letter) {
    case 's':
    case 'S':
      return FormatString(directive, arguments.TakeOr(std::string_view()));
    case 'c':
    case 'C':
      return FormatCharacter(arguments.TakeOr(std::string_view()));
    default:
      const FormatArgument argument = arguments.TakeOr(0U);
      const auto* const number = std::get_if<std::uint32_t>(&argument);
      return number != nullptr ? FormatNumber(directive, *number)
                               : FormatString(directive, argument);
  }
}

std::string Insertion(const Directive& directive, ArgumentQueue& arguments) {
  if (directive.letter == 'n') return {};
  std::string text = Unaligned(directive, arguments);
  const std::size_t blanks = directive.width - std::min(directive.width, text.size());
  text.insert(directive.left_aligned ? text.size() : 0, blanks, ' ');
  return text;
}

}  // namespace

std::string FormatText(std::string_view format, std::initializer_list<FormatArgument> arguments) {
  ArgumentQueue queue({arguments.begin(), arguments.size()});
  std::string text;
  while (!format.empty() && text.size() < kLongestText) {
    if (Skip(format, "%%")) {
      text += '%';
    } else if (const auto directive = TakeDirective(format)) {
      text += Insertion(*directive, queue);
    } else {
      text += format.front();
      format.remove_prefix(1);
    }
  }
  return text.substr(0, kLongestText);
}

}  // namespace brantel
