#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace brantel::host {

// The text with its percent escapes undone. Nothing when one is broken, when the text is no UTF-8,
// or when it has a NUL: such a text names nothing here.
std::optional<std::string> DecodePercents(std::string_view text);

// The text as one segment of a path or one value of a query.
std::string EncodePercents(std::string_view text);

// Names and values of a posted form or a query, in UTF-8.
class FormValues {
 public:
  struct Pair {
    std::string name;
    std::string value;
  };

  // Nothing when the text is no such form, has a broken escape, or has more than a hundred pairs.
  static std::optional<FormValues> Parse(std::string_view text);

  // The first value of that name; empty where there is none.
  [[nodiscard]] std::string_view Get(std::string_view name) const;
  [[nodiscard]] bool Has(std::string_view name) const;
  [[nodiscard]] std::span<const Pair> pairs() const { return pairs_; }

 private:
  std::vector<Pair> pairs_;
};

// The path and the query of a request's target.
struct TargetParts {
  std::vector<std::string> segments;  // decoded; none of "/"
  FormValues query;
};

// Nothing when the target is none that this server gives out: when it does not begin with "/", has
// an empty segment, a broken escape, or a segment that leads elsewhere, however that is written.
std::optional<TargetParts> ParseTarget(std::string_view target);

}  // namespace brantel::host
