#pragma once

#include <algorithm>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "instance/instance_codec.h"
#include "pager/pager_description.h"

namespace brantel {

// What comes back when something that begins so is written to a modem.
struct ModemReply {
  std::string_view written;
  std::string_view reply;
};

// The reply that fits first, or nothing.
inline std::string_view ReplyTo(std::string_view written, std::span<const ModemReply> replies) {
  const auto found = std::ranges::find_if(
      replies, [&](const ModemReply& reply) { return written.starts_with(reply.written); });
  return found == replies.end() ? std::string_view() : found->reply;
}

namespace sample_page {

// A protocol of paging centres, and what a modem and a centre reply by it.
struct Protocol {
  std::string name;
  std::vector<ModemReply> replies;
};

inline std::vector<Protocol> Protocols() {
  constexpr ModemReply kConnected = {"ATDT", "\r\nCONNECT 2400\r\n"};
  constexpr ModemReply kUnderstood = {"AT", "\r\nOK\r\n"};
  return {
      {"TAP",
       {kConnected,
        kUnderstood,
        {"\r", "ID="},
        {"\x1B", "\x06\r\x1B[p\r"},
        {"\x02", "\x06\r"},
        {"\x04", "\x04\r"}}},
      {"UCP-SMS", {kConnected, kUnderstood, {"\x02", "\x02/00037/R/02/A/:120393153020/9D\x03"}}},
      {"NTT", {kConnected, kUnderstood, {"\r", "READY"}, {"8000", "28 OK"}}}};
}

// The file of an instance that pages by the protocol.
inline std::string File(const Protocol& protocol) {
  Instance page(pager_field::kFieldCount);
  page.set_text(pager_field::kPagerNumber, "5550200");
  page.set_text(pager_field::kTerminalPassword, "7");
  page.set_text(pager_field::kPagerId, "0041791234567");
  page.set_text(pager_field::kMessage,
                "router7 is down since 23:59; last seen answering at 23:49, see page 12");
  page.set_text(pager_field::kProtocol, protocol.name);
  return EncodeInstance(kPager.instances, page);
}

}  // namespace sample_page
}  // namespace brantel
