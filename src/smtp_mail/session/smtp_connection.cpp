#include "smtp_mail/session/smtp_connection.h"

#include <array>
#include <cstddef>

#include "text/leading_number.h"
#include "text/string_table.h"
#include "text/text_end.h"

namespace brantel {
namespace {

// Up to the first line feed, with it; the whole text when there is none.
std::string_view FirstLineOf(std::string_view text) {
  const std::size_t line_feed = text.find('\n');
  return text.substr(0, line_feed == std::string_view::npos ? line_feed : line_feed + 1);
}

std::size_t LengthWithoutLineEnd(std::string_view line) {
  return UpToNul(line).find_last_not_of("\r\n ") + 1;
}

}  // namespace

bool SmtpConnection::SendText(std::string_view text) {
  log_.Text(text);
  return SendAll(text);
}

bool SmtpConnection::SendAll(std::string_view bytes) {
  while (!bytes.empty()) {
    const auto count = socket_.Send(bytes);
    if (count) {
      bytes.remove_prefix(*count);
    } else if (count.reason() == socket_error::kWouldBlock) {
      socket_.PumpMessages();
    } else {
      return false;
    }
  }
  return true;
}

Outcome<std::size_t> SmtpConnection::RecvWithTimeout(std::span<char> buffer) {
  const auto readiness = socket_.WaitForData(timeout_);
  if (!readiness) return readiness.failure();
  // Deliberately not the number of a time-out: operators know silence by this one.
  if (*readiness == Readiness::kTimedOut) return Failure{socket_error::kInterrupted};
  return socket_.Receive(buffer);
}

void SmtpConnection::TakeCarriedLine() {
  line_ = FirstLineOf(carry_over_);
  carry_over_.erase(0, line_.size());
}

void SmtpConnection::ReadReplyLine() {
  TakeCarriedLine();
  while (!line_.ends_with('\n') && line_.size() < kLongestLine) {
    std::array<char, kLongestReceive> buffer{};
    const auto count = RecvWithTimeout(buffer);
    if (!count) log_.Failure(text_id::kReceiveError, count.reason());
    if (!count || *count == 0) break;
    const std::string_view bytes(buffer.data(), *count);
    const std::string_view end_of_line = FirstLineOf(bytes);
    line_ += end_of_line;
    carry_over_ = UpToNul(bytes.substr(end_of_line.size()));
  }
  line_.resize(LengthWithoutLineEnd(line_));
}

SmtpReply SmtpConnection::ReadReply() {
  constexpr std::size_t kContinuationMark = 3;
  for (;;) {
    ReadReplyLine();
    if (!line_.empty()) {
      log_.Text(line_);
      log_.Text("\r\n");
    }
    if (line_.size() > kContinuationMark && line_[kContinuationMark] == '-') continue;
    if (line_.empty()) return {};
    return {LeadingNumber(line_), line_.front()};
  }
}

}  // namespace brantel
