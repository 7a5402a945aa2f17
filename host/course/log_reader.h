#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace brantel::host {

// A piece of an alert's log that means something by itself.
struct LogPiece {
  enum class Kind {
    kLine,    // without its line end; never empty
    kSent,    // what went over a modem's line, which the log has in quotation marks
    kAnswer,  // what came back
  };

  Kind kind;
  std::string text;
};

// Cuts the log of an alert, which is one stream, into its pieces.
class LogReader {
 public:
  // `has_quotations`: whether what a modem is sent and answers stands in quotation marks.
  // `open_texts` are pieces without a line end of their own; their characters must outlive the
  // object.
  LogReader(bool has_quotations, std::vector<std::string_view> open_texts)
      : has_quotations_(has_quotations), open_texts_(std::move(open_texts)) {}

  // The pieces that the next text of the log completes. Of a long piece the beginning is there.
  std::vector<LogPiece> Take(std::string_view text);

 private:
  void TakeOutside(char c, std::vector<LogPiece>& pieces);
  void TakeQuoted(char c, std::vector<LogPiece>& pieces);
  [[nodiscard]] bool BeginsQuotation();
  void Keep(char c);
  void End(LogPiece::Kind kind, std::vector<LogPiece>& pieces);

  bool has_quotations_;
  std::vector<std::string_view> open_texts_;
  bool is_quoted_ = false;
  LogPiece::Kind quoted_ = LogPiece::Kind::kSent;
  std::string piece_;   // as far as it has come
  std::string ending_;  // the last characters of a quotation that may be its end
};

}  // namespace brantel::host
