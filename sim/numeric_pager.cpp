#include "sim/numeric_pager.h"

namespace brantel::sim {

void NumericPager::HearTone(char tone) {
  if (tone != '#') {
    digits_ += tone == '*' ? '-' : tone;
    return;
  }
  Show();
  system_.hang_up();
}

void NumericPager::Show() {
  if (!digits_.empty()) system_.transcript.Note("pager", "shows " + digits_);
  digits_.clear();
}

}  // namespace brantel::sim
