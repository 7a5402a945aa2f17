#include "host/preview/page_words.h"

#include <algorithm>
#include <cstddef>
#include <limits>

#include "pager/ntt/ntt_line.h"
#include "text/japanese_text.h"

namespace brantel::host {
namespace {

std::string Count(std::size_t number, const std::string& thing) {
  return std::to_string(number) + " " + thing + (number == 1 ? "" : "s");
}

std::string ChecksumWords(std::string_view checksum, std::size_t bytes) {
  return "checksum " + std::string(checksum) + " over " + Count(bytes, "byte");
}

// Nothing when all of it goes.
std::string CutWords(std::size_t limit, const std::string& unit, const std::string& left_out) {
  return left_out.empty() ? "" : "; cut at " + Count(limit, unit) + ": " + left_out + " left out";
}

std::string_view Between(std::string_view text, std::string_view before, std::string_view after) {
  const std::size_t found = text.find(before);
  if (found == std::string_view::npos) return {};
  text.remove_prefix(found + before.size());
  return text.substr(0, text.find(after));
}

// Where the parts of a block of TAP stand: STX, pager ID, CR, message, CR, ETX, checksum, CR.
constexpr std::size_t kTapEndOfText = 2;
constexpr std::size_t kTapChecksum = 3;
constexpr std::size_t kTapTail = kTapChecksum + 1;

struct TapBlockParts {
  std::string_view pager_id;
  std::string_view message;
  std::string_view checksum;
};
TapBlockParts PartsOf(std::string_view block) {
  const std::size_t end_of_id = block.find('\r');
  const std::string_view message =
      block.substr(end_of_id + 1, block.size() - kTapTail - kTapEndOfText - end_of_id - 1);
  return {block.substr(1, end_of_id - 1), message,
          block.substr(block.size() - kTapTail, kTapChecksum)};
}

}  // namespace

std::string DialWords(std::string_view command) {
  const auto commas = static_cast<std::size_t>(std::ranges::count(command, ','));
  if (commas == 0) return "without a pause";
  return Count(commas, "comma") + ", at each of which the modem pauses for 2 s";
}

std::string TapWords(std::string_view block, std::string_view pager_id, std::string_view message,
                     const TapBlockRules& rules) {
  const std::string whole = BuildTapBlock(pager_id, message,
                                          {.skips_leading_zeros = rules.skips_leading_zeros,
                                           .capacity = std::numeric_limits<std::size_t>::max()});
  const TapBlockParts sent = PartsOf(block);
  const std::string_view sendable = PartsOf(whole).message;
  const std::string cut(sendable.substr(sent.message.size()));
  std::string words = "for pager " + std::string(sent.pager_id) + "; " +
                      ChecksumWords(sent.checksum, block.size() - kTapTail) +
                      CutWords(rules.capacity, "character", cut.empty() ? "" : "\"" + cut + "\"");
  const std::size_t lost = message.size() - sendable.size();
  if (lost > 0) words += "; " + Count(lost, "byte") + " that are no printable ASCII left out";
  return words;
}

std::string UcpWords(std::string_view frame, std::string_view message) {
  // STX stands before what is summed up; behind it stand the checksum and ETX.
  constexpr std::size_t kChecksum = 2;
  constexpr std::size_t kEndOfText = 1;
  const std::string_view checksum = frame.substr(frame.size() - kEndOfText - kChecksum, kChecksum);
  const std::size_t sent = (Between(frame, "///3/", "/").size()) / 2;
  const std::size_t left_out = message.size() - std::min(sent, message.size());
  return "operation 02 for " + std::string(Between(frame, "/O/02/1/", "///")) + "; transaction " +
         std::string(frame.substr(1, 2)) + ", the first of a process; " +
         ChecksumWords(checksum, frame.size() - 1 - kChecksum - kEndOfText) +
         CutWords(sent, "byte", left_out == 0 ? "" : Count(left_out, "byte"));
}

std::string NttWords(std::string_view message) {
  const std::size_t sent = NttMessage(message).size();
  const std::size_t left_out = ToShiftJis(message).size() - sent;
  return Count(sent, "byte") + " of Shift_JIS" +
         CutWords(sent, "byte", left_out == 0 ? "" : Count(left_out, "byte"));
}

}  // namespace brantel::host
