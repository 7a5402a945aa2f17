#include <algorithm>
#include <array>
#include <string_view>

#include "text/string_table.h"

namespace brantel {
namespace {

struct Row {
  unsigned id;
  std::string_view text;
};

// Not deduced from the rows one by one: clang++ does that for no more than 256.
#define STRING(name, id, text) {id, text},
constexpr auto kRows = std::to_array<Row>({
#include "text/strings.def"
});
#undef STRING

static_assert(std::ranges::is_sorted(kRows, std::ranges::less_equal{}, &Row::id) &&
                  std::ranges::adjacent_find(kRows, {}, &Row::id) == kRows.end(),
              "strings.def: numbers must ascend and stand once");

}  // namespace

std::string LoadText(unsigned id) {
  const auto row = std::ranges::lower_bound(kRows, id, {}, &Row::id);
  if (row == kRows.end() || row->id != id) return LookupFailureText(id);
  return std::string(row->text);
}

}  // namespace brantel
