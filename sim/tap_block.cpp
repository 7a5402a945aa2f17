#include "sim/tap_block.h"

#include <algorithm>
#include <vector>

#include "sim/byte_sum.h"
#include "sim/digits.h"

namespace brantel::sim {
namespace {

constexpr std::size_t kChecksumSize = 3;
constexpr std::size_t kLongestContent = 250;  // between STX and ETX, without the last CR

// ETX ends the last block of a page; behind the two others more follows.
constexpr std::string_view kBlockEnds("\x03\x17\x1F", 3);

bool IsTextSign(char c) {
  return c >= ' ' && c <= '~';
}

// The sum's lowest twelve bits, four of them in each sign.
std::string Checksum(std::string_view bytes) {
  const unsigned sum = ByteSum(bytes);
  std::string signs;
  for (const unsigned weight : {256U, 16U, 1U}) {
    signs += static_cast<char>('0' + sum / weight % 16);
  }
  return signs;
}

// The fields, each of which has to end with a CR.
std::vector<std::string> Fields(std::string_view content) {
  std::vector<std::string> fields;
  while (!content.empty()) {
    const std::size_t end = content.find(tap::kCr);
    fields.emplace_back(content.substr(0, end));
    if (end == std::string_view::npos) return {};
    content.remove_prefix(end + 1);
  }
  return fields;
}

TapFault ChecksumFault(std::string_view found, std::string_view expected) {
  return {tap::kNak, "checksum " + std::string(found) + " instead of " + std::string(expected)};
}

}  // namespace

std::size_t TapBlockSize(std::string_view bytes) {
  const std::size_t end = bytes.find_first_of(kBlockEnds);
  if (end == std::string_view::npos) return 0;
  const std::size_t size = end + 1 + kChecksumSize + 1;
  return bytes.size() < size ? 0 : size;
}

std::variant<TapPage, TapFault> ReadTapBlock(std::string_view block) {
  const std::size_t end = block.find_first_of(kBlockEnds);
  const std::string_view summed = block.substr(0, end + 1);
  const std::string_view checksum = block.substr(end + 1, kChecksumSize);
  if (summed.front() != tap::kStx) return TapFault{tap::kNak, "no STX"};
  if (checksum != Checksum(summed)) return ChecksumFault(checksum, Checksum(summed));
  if (block.back() != tap::kCr) return TapFault{tap::kNak, "no CR behind the checksum"};
  if (summed.back() != tap::kEtx) return TapFault{tap::kRs, "a page of several blocks"};

  const std::string_view content = summed.substr(1, summed.size() - 2);
  const std::vector<std::string> fields = Fields(content);
  if (content.size() - 1 > kLongestContent) return TapFault{tap::kRs, "too long"};
  if (fields.size() != 2) return TapFault{tap::kRs, "not two fields"};
  if (fields[0].empty() || !std::ranges::all_of(fields[0], IsDigit)) {
    return TapFault{tap::kRs, "no pager ID"};
  }
  if (!std::ranges::all_of(fields[1], IsTextSign)) {
    return TapFault{tap::kRs, "a sign that is no text"};
  }
  return TapPage{fields[0], fields[1]};
}

}  // namespace brantel::sim
