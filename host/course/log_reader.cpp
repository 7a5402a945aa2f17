#include "host/course/log_reader.h"

#include <algorithm>
#include <array>
#include <utility>

namespace brantel::host {
namespace {

using Kind = LogPiece::Kind;

struct Opening {
  std::string_view text;
  Kind kind;
};

// What quotations begin with. The last stands behind a line that says what is wrong with the
// answer.
constexpr std::array kOpenings = {
    Opening{"sending \"", Kind::kSent},
    Opening{"returned \"", Kind::kAnswer},
    Opening{" \"", Kind::kAnswer},
};

constexpr std::string_view kClosing = "\"\r\n";

// Far more than a modem's answer or a relay's line has.
constexpr std::size_t kMostKept = 4096;

bool IsLineEnd(char c) {
  return c == '\r' || c == '\n';
}

}  // namespace

std::vector<LogPiece> LogReader::Take(std::string_view text) {
  std::vector<LogPiece> pieces;
  for (const char c : text) {
    if (is_quoted_) {
      TakeQuoted(c, pieces);
    } else {
      TakeOutside(c, pieces);
    }
  }
  return pieces;
}

void LogReader::TakeOutside(char c, std::vector<LogPiece>& pieces) {
  if (IsLineEnd(c)) {
    if (!piece_.empty()) End(Kind::kLine, pieces);
    return;
  }
  Keep(c);
  if (BeginsQuotation()) {
    piece_.clear();
  } else if (std::ranges::find(open_texts_, piece_) != open_texts_.end()) {
    End(Kind::kLine, pieces);
  }
}

bool LogReader::BeginsQuotation() {
  if (!has_quotations_) return false;
  const auto* const opening = std::ranges::find(kOpenings, piece_, &Opening::text);
  if (opening == kOpenings.end()) return false;
  is_quoted_ = true;
  quoted_ = opening->kind;
  return true;
}

// A quotation ends with the line of its closing mark. A far end that sends such an end itself goes
// on as lines, and AlertCourse takes lines that it does not know for more of the answer.
void LogReader::TakeQuoted(char c, std::vector<LogPiece>& pieces) {
  while (!kClosing.starts_with(ending_ + c) && !ending_.empty()) {
    Keep(ending_.front());
    ending_.erase(0, 1);
  }
  if (!kClosing.starts_with(ending_ + c)) {
    Keep(c);
    return;
  }
  ending_ += c;
  if (ending_ != kClosing) return;
  ending_.clear();
  is_quoted_ = false;
  End(quoted_, pieces);
}

void LogReader::Keep(char c) {
  if (piece_.size() < kMostKept) piece_ += c;
}

void LogReader::End(Kind kind, std::vector<LogPiece>& pieces) {
  pieces.push_back({kind, std::exchange(piece_, {})});
}

}  // namespace brantel::host
