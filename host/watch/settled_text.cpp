#include "host/watch/settled_text.h"

namespace brantel::host {

bool SettledText::TakeIfChanged(const std::string& text) {
  const bool has_settled = text == seen_;
  seen_ = text;
  if (!has_settled || text == taken_) return false;
  taken_ = text;
  return true;
}

}  // namespace brantel::host
