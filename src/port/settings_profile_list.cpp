#include "port/settings_profile_list.h"

#include "text/format_text.h"
#include "text/string_table.h"

namespace brantel {
namespace {

constexpr std::uint32_t kAlternates = 2;

}  // namespace

void FillProfileList(DialogView& view, int list) {
  std::vector<std::string> profiles = {LoadText(text_id::kPrimaryProfile)};
  const std::string format = LoadText(text_id::kAlternateProfile);
  for (std::uint32_t number = 1; number <= kAlternates; ++number) {
    profiles.push_back(FormatText(format, {number}));
  }
  view.FillList(list, profiles);
}

}  // namespace brantel
