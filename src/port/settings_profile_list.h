#pragma once

#include "dialog/dialog_view.h"

namespace brantel {

// Fills a list with the settings profiles between which an operator chooses, from profile 0 on.
// Deliberately not all that an instance can have: the others are for whoever writes the files.
void FillProfileList(DialogView& view, int list);

}  // namespace brantel
