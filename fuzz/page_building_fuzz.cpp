// What pages are on the line, from arbitrary pager IDs, messages and passwords: each keeps to its
// length and its alphabet, and tells its own length and checksum rightly.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/fuzz_input.h"
#include "pager/ntt/ntt_line.h"
#include "pager/tap/tap_session.h"
#include "pager/ucp/ucp_error.h"
#include "pager/ucp/ucp_frame.h"
#include "text/digits.h"

namespace brantel {
namespace {

bool IsPrintable(char c) {
  return c >= ' ' && c <= '~';
}

void CheckTapBlock(std::string_view pager_id, std::string_view message,
                   const TapBlockRules& rules) {
  const std::string block = BuildTapBlock(pager_id, message, rules);
  Require(block.size() >= 8 && block.front() == '\x02' && block.ends_with('\r'));
  const std::size_t end = block.size() - 5;
  Require(block[end] == '\x03' && block[end - 1] == '\r');
  Require(TapChecksum(std::string_view(block).substr(0, end + 1)) == block.substr(end + 1, 3));

  const std::string_view fields(block.data() + 1, end - 2);
  const std::size_t id_end = fields.find('\r');
  Require(id_end != std::string_view::npos);
  const std::string_view text = fields.substr(id_end + 1);
  Require(std::ranges::all_of(fields.substr(0, id_end), IsDigit));
  Require(std::ranges::all_of(text, IsPrintable));
  Require(text.empty() || id_end + 1 + text.size() <= rules.capacity);
}

void CheckUcpFrame(std::string_view pager_id, std::string_view message) {
  const auto body = BuildUcpBody(pager_id, message);
  Require(body.has_value() == (!pager_id.empty() && !message.empty()));
  if (!body) return;
  const std::string frame = BuildUcpFrame(99, *body);
  Require(frame.size() == body->size() + 19);
  Require(frame.front() == '\x02' && frame.back() == '\x03');
  Require(std::ranges::all_of(frame.substr(1, frame.size() - 2), IsPrintable));
  Require(std::stoul(frame.substr(4, 5)) == frame.size() - 2);
  Require(body->size() - body->rfind('/') - 1 <= 160);
}

void CheckNttLine(std::string_view pager_id, std::string_view password, std::string_view message) {
  const std::string text = NttMessage(message);
  Require(text.size() <= 100 && text.find_first_of("\r\n") == std::string::npos);
  const std::string line = BuildNttLine(pager_id, password, text);
  Require(line.size() == 25 + 15 + 1 + 4 + 1 + 3 + text.size() + 1);
  Require(std::stoul(line.substr(46, 3)) == text.size() && line.ends_with(text + "\r"));
}

}  // namespace
}  // namespace brantel

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace brantel;
  const std::string bytes(data, data + size);
  FuzzInput input(bytes);
  const std::string_view pager_id = input.Field();
  const std::string_view password = input.Field();
  const std::string_view message = input.Take(size);
  CheckTapBlock(pager_id, message, kTap.block);
  CheckTapBlock(pager_id, message, kSmsTap.block);
  CheckUcpFrame(pager_id, message);
  CheckNttLine(pager_id, password, message);
  Require(!UcpErrorText(message).empty());
  return 0;
}
