#include "instance/text_choice.h"

#include "text/string_table.h"

namespace brantel {

std::size_t ChosenPosition(const TextRange& choices, std::string_view text) {
  for (unsigned i = 0; i < choices.count; ++i) {
    if (LoadText(choices.first_id + i) == text) return i;
  }
  return 0;
}

}  // namespace brantel
