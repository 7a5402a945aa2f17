#include "host/checks/text_checks.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>

#include "host/instances/field_guide.h"
#include "pager/pager_description.h"
#include "port/com_port_number.h"
#include "smtp_mail/smtp_mail_description.h"
#include "text/digits.h"
#include "text/leading_number.h"

namespace brantel::host {
namespace {

constexpr bool IsLetter(char c) {
  return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

bool Has(std::string_view text, std::string_view characters) {
  return text.find_first_of(characters) != std::string_view::npos;
}

// The parts between the separators; one part where there is none.
std::vector<std::string_view> Split(std::string_view text, std::string_view separator) {
  std::vector<std::string_view> parts;
  for (std::size_t end = 0; (end = text.find(separator)) != std::string_view::npos;) {
    parts.push_back(text.substr(0, end));
    text.remove_prefix(end + separator.size());
  }
  parts.push_back(text);
  return parts;
}

// The letters of the variables of a text, in which "%%" stands for a percent sign.
std::string VariablesOf(std::string_view text) {
  std::string letters;
  for (std::size_t i = 0; i + 1 < text.size(); ++i) {
    if (text[i] != '%') continue;
    if (IsLetter(text[i + 1])) letters += text[i + 1];
    if (text[i + 1] == '%') ++i;
  }
  return letters;
}

// Those that the module itself asks hosts for. Of a sender, %s is this computer's name.
std::string_view KnownVariables(const CheckedValue& value) {
  // What send fills in, and a watch beside it. In a sender the module itself fills in %s.
  const bool is_sender =
      &value.subject.notifier_class == &kSMTPMail && value.place == smtp_mail_field::kFrom;
  return is_sender ? "nCadtuws" : "nCadtuw";
}

bool IsFilledIn(const CheckedValue& value) {
  return GuideOf(value.subject.notifier_class, value.place).filling == Filling::kFilledIn;
}

bool Starts(std::string_view text, std::string_view beginning) {
  return std::ranges::equal(text.substr(0, beginning.size()), beginning, {}, [](char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  });
}

// Whether an AT command has the letter with the digit, where no digit counts as 0.
bool HasSetting(std::string_view command, char letter, char digit) {
  for (std::size_t i = 0; i < command.size(); ++i) {
    const char small = static_cast<char>(letter - 'A' + 'a');
    if (command[i] != letter && command[i] != small) continue;
    // "&E" and the like are settings of their own.
    if (i > 0 && Has(command.substr(i - 1, 1), "&%\\+*")) continue;
    const char next = i + 1 < command.size() ? command[i + 1] : '\0';
    if ((IsDigit(next) ? next : '0') == digit) return true;
  }
  return false;
}

bool IsProtocol(const CheckedValue& value, std::string_view name) {
  return value.subject.instance->text(pager_field::kProtocol) == name;
}

bool IsByTap(const CheckedValue& value) {
  return !IsProtocol(value, "NTT") && !IsProtocol(value, "UCP-SMS");
}

// How much of a page the protocol takes, in bytes.
std::size_t RoomForPage(const CheckedValue& value) {
  if (IsProtocol(value, "NTT")) return 100;
  if (IsProtocol(value, "UCP-SMS")) return 80;
  const std::string& id = value.subject.instance->text(pager_field::kPagerId);
  const auto digits = static_cast<std::size_t>(std::ranges::count_if(id, IsDigit));
  const std::size_t room = IsProtocol(value, "SMS-TAP") ? 160 : 250;
  return room - std::min(room, digits + 1);
}

// Four decimal numbers up to 255.
bool IsDotted(std::string_view text) {
  const auto parts = Split(text, ".");
  return parts.size() == 4 && std::ranges::all_of(parts, [](std::string_view part) {
           unsigned number = 0;
           const auto [end, error] =
               std::from_chars(part.data(), part.data() + part.size(), number);
           return error == std::errc() && end == part.data() + part.size() && number <= 255;
         });
}

bool HasZeroInFront(std::string_view text) {
  return std::ranges::any_of(Split(text, "."), [](std::string_view part) {
    return part.size() > 1 && part.front() == '0';
  });
}

// A number as the sockets library reads it: octal behind a zero, hexadecimal behind "0x". Nothing
// for other texts and for numbers beyond 32 bits.
std::optional<std::uint32_t> AddressPart(std::string_view part) {
  int base = part.size() > 1 && part.front() == '0' ? 8 : 10;
  if (Starts(part, "0X") && part.size() > 2) {
    base = 16;
    part.remove_prefix(2);
  }
  std::uint32_t number = 0;
  const char* const end = part.data() + part.size();
  const auto [stopped_at, error] = std::from_chars(part.data(), end, number, base);
  if (error != std::errc() || stopped_at != end) return std::nullopt;
  return number;
}

// What the sockets library takes for an address: one to four numbers, of which the last fills all
// bytes that are left.
bool IsAddress(std::string_view text) {
  const auto parts = Split(text, ".");
  if (parts.size() > 4) return false;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const auto number = AddressPart(parts[i]);
    const bool is_last = i + 1 == parts.size();
    const std::uint32_t most = is_last ? 0xFFFFFFFFU >> (8U * i) : 0xFFU;
    if (!number || *number > most) return false;
  }
  return true;
}

// Read as the sockets library's number of no address.
constexpr std::string_view kNoAddress = "255.255.255.255";

}  // namespace

bool IsOutsideTheCodePage(const CheckedValue& value) {
  return value.subject.system.ToCodePage(value.text) != value.bytes;
}

bool HasUnknownVariable(const CheckedValue& value) {
  return IsFilledIn(value) &&
         VariablesOf(value.text).find_first_not_of(KnownVariables(value)) != std::string::npos;
}

bool HasVariableThatStays(const CheckedValue& value) {
  return !IsFilledIn(value) && Has(VariablesOf(value.text), "nC");
}

bool HasVariable(const CheckedValue& value) {
  return !VariablesOf(value.text).empty();
}

bool HasLineEnd(const CheckedValue& value) {
  return Has(value.text, "\r\n");
}

bool IsNoAddress(const CheckedValue& value) {
  return value.text == kNoAddress || !IsAddress(value.text);
}

bool IsOddAddress(const CheckedValue& value) {
  return !IsNoAddress(value) && (!IsDotted(value.text) || HasZeroInFront(value.text));
}

bool HasNoAtSign(const CheckedValue& value) {
  return !Has(value.text, "@");
}

bool HasRecipientWithoutAtSign(const CheckedValue& value) {
  return std::ranges::any_of(Split(value.text, ","), [](std::string_view recipient) {
    return recipient.find_first_not_of(' ') != std::string_view::npos && !Has(recipient, "@");
  });
}

bool HasEmptyRecipient(const CheckedValue& value) {
  return std::ranges::any_of(Split(value.text, ","), [](std::string_view recipient) {
    return recipient.find_first_not_of(' ') == std::string_view::npos;
  });
}

bool HasSemicolon(const CheckedValue& value) {
  return Has(value.text, ";");
}

bool HasLoneFullStop(const CheckedValue& value) {
  return std::ranges::any_of(Split(value.text, "\n"),
                             [](std::string_view line) { return line == "." || line == ".\r"; });
}

bool HasBareLineEnd(const CheckedValue& value) {
  for (std::size_t i = 0; i < value.text.size(); ++i) {
    const bool follows_cr = i > 0 && value.text[i - 1] == '\r';
    if ((value.text[i] == '\n') != follows_cr) return true;
  }
  return value.text.ends_with('\r');
}

bool HasLongLine(const CheckedValue& value) {
  constexpr std::size_t kLongestLine = 998;
  return std::ranges::any_of(Split(value.bytes, "\r\n"),
                             [](std::string_view line) { return line.size() > kLongestLine; });
}

bool HasNoDigit(const CheckedValue& value) {
  return std::ranges::none_of(value.text, IsDigit);
}

bool HasUndialableCharacter(const CheckedValue& value) {
  return value.text.find_first_not_of("0123456789*#,;WwTtPp@!ABCDabcd ()-.+/") != std::string::npos;
}

bool IsNoProtocol(const CheckedValue& value) {
  return std::ranges::find(PagerProtocolNames(), value.text) == PagerProtocolNames().end();
}

bool IsTooLongAPage(const CheckedValue& value) {
  return value.bytes.size() > RoomForPage(value);
}

bool LosesCharactersOfPage(const CheckedValue& value) {
  return IsByTap(value) &&
         std::ranges::any_of(value.bytes, [](char c) { return c != '\r' && (c < ' ' || c > '~'); });
}

bool IsTooLongAPassword(const CheckedValue& value) {
  return IsProtocol(value, "NTT") && value.bytes.size() > 4;
}

bool IsUnusedPassword(const CheckedValue& value) {
  return IsProtocol(value, "UCP-SMS");
}

bool IsNoKey(const CheckedValue& value) {
  const std::int32_t key = LeadingNumber(value.text);
  return (key < 0 || key > 11) && key != 99;
}

bool IsNegative(const CheckedValue& value) {
  return LeadingNumber(value.text) < 0;
}

bool IsStoredAsNumber(const CheckedValue& value) {
  return value.subject.settings[value.place].origin == SettingOrigin::kNumber;
}

bool NamesNoPort(const CheckedValue& value) {
  return ComPortNumber(value.text).value_or(0) == 0;
}

bool IsNoRate(const CheckedValue& value) {
  return !IsDigit(value.text.front());
}

bool IsUnusualRate(const CheckedValue& value) {
  const std::int32_t rate = LeadingNumber(value.text);
  const auto rates = UsualRates();
  const bool is_index = rate >= 0 && static_cast<std::size_t>(rate) < rates.size();
  return !IsNoRate(value) && !is_index && std::ranges::find(rates, rate) == rates.end();
}

bool IsNoCommand(const CheckedValue& value) {
  return !Starts(value.text, "AT") || value.text.size() < 2;
}

bool DialsNoNumber(const CheckedValue& value) {
  return value.text.find("%s") == std::string::npos;
}

bool DialsNoMessage(const CheckedValue& value) {
  return Split(value.text, "%s").size() == 2;
}

bool HasOtherDirective(const CheckedValue& value) {
  for (std::size_t i = 0; i < value.text.size(); ++i) {
    if (value.text[i] != '%') continue;
    const char next = i + 1 < value.text.size() ? value.text[i + 1] : '\0';
    if (next != 's' && next != '%') return true;
    ++i;
  }
  return false;
}

bool SilencesResults(const CheckedValue& value) {
  return HasSetting(value.text, 'Q', '1') || HasSetting(value.text, 'V', '0');
}

bool LeavesEchoOn(const CheckedValue& value) {
  return !HasSetting(value.text, 'E', '0');
}

bool IsNoNumber(const CheckedValue& value) {
  return value.text.find_first_not_of("0123456789") != std::string::npos;
}

bool IsAboveAMinute(const CheckedValue& value) {
  return LeadingNumber(value.text) > 60'000;
}

bool IsBelowATenthOfASecond(const CheckedValue& value) {
  return LeadingNumber(value.text) < 100;
}

bool IsNoYesOrNo(const CheckedValue& value) {
  return value.text != kFramed8N1 && value.text != kFramed7E1;
}

bool IsSevenBitsForJapanese(const CheckedValue& value) {
  return value.subject.instance != nullptr && IsProtocol(value, "NTT") && value.text != kFramed8N1;
}

}  // namespace brantel::host
