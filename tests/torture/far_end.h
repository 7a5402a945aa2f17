#pragma once

#include <algorithm>
#include <cstddef>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "tests/unit/allocation_counter.h"

namespace brantel {

// What a far end says to what it hears.
struct Reply {
  std::string_view heard;  // how that begins
  std::string_view words;
  // Where it has taken the alert: behind how many bytes of the words one can know that.
  std::optional<std::size_t> taken_behind{};
};

// How a connection ends before everything is said.
enum class Ending {
  kNone,
  kHangsUp,      // the far end closes it; a modem stays behind and says so
  kBreaksDown,   // no call on the connection succeeds any more
  kFallsSilent,  // nothing more comes
};

// Who is at the other end of a connection, relay or modem.
class FarEnd {
 public:
  std::span<const Reply> replies;
  // What a modem says when the connection is lost, and then to further commands.
  bool is_modem = false;

  Ending ending = Ending::kNone;
  // How many bytes of its words there are before that.
  std::size_t words_left = std::numeric_limits<std::size_t>::max();

  std::string unread;
  bool has_taken = false;
  bool has_told_so = false;
  std::size_t said = 0;

  // A connection begins.
  void Begin() {
    const MemoryOfOthers others;
    unread.clear();
    used_.assign(replies.size(), false);
    said = 0;
    is_connected_ = false;
    if (words_left == 0) End();
  }

  void Hear(std::string_view text) {
    const MemoryOfOthers others;
    if (has_ended_) return HearBehindTheEnd(text);
    if (text.starts_with("ATDT")) is_connected_ = true;
    if (const auto reply = NextReply(text)) Say(replies[*reply]);
  }

  [[nodiscard]] bool Has(Ending end) const { return has_ended_ && ending == end; }

  // Where it ended: behind so many of the words that it had for what it heard then.
  struct Place {
    std::string heard = "nothing";
    std::size_t count = 0;
  };
  [[nodiscard]] const Place& place() const { return place_; }

  // All goes well from now on, and the alert that comes next is another one.
  void Recover() {
    ending = Ending::kNone;
    has_ended_ = false;
    words_left = std::numeric_limits<std::size_t>::max();
    has_taken = false;
    has_told_so = false;
  }

 private:
  // One after the other; the last one that fits stays.
  std::optional<std::size_t> NextReply(std::string_view text) {
    std::optional<std::size_t> found;
    for (std::size_t i = 0; i < replies.size(); ++i) {
      if (!text.starts_with(replies[i].heard)) continue;
      found = i;
      if (!used_[i]) break;
    }
    if (found) used_[*found] = true;
    return found;
  }

  void Say(const Reply& reply) {
    const std::size_t count = std::min(reply.words.size(), words_left);
    unread += reply.words.substr(0, count);
    said += count;
    words_left -= count;
    has_taken = has_taken || reply.taken_behind.has_value();
    has_told_so = has_told_so || (reply.taken_behind && count >= *reply.taken_behind);
    if (words_left != 0) return;
    place_ = {Shown(reply.heard), count};
    End();
  }

  void End() {
    if (ending == Ending::kNone) return;
    has_ended_ = true;
    if (ending == Ending::kHangsUp && is_modem && is_connected_) unread += "\r\nNO CARRIER\r\n";
  }

  // The modem is still there when the line is not.
  void HearBehindTheEnd(std::string_view text) {
    if (ending != Ending::kHangsUp || !is_modem || !text.starts_with("AT")) return;
    unread += text.starts_with("ATDT") ? "\r\nNO CARRIER\r\n" : replies[*NextReply(text)].words;
  }

  static std::string Shown(std::string_view text) {
    std::string shown;
    for (const char c : text)
      shown += c >= ' ' ? std::string(1, c) : "<" + std::to_string(int{c}) + ">";
    return shown;
  }

  std::vector<bool> used_;
  bool is_connected_ = false;
  bool has_ended_ = false;
  Place place_;
};

}  // namespace brantel
