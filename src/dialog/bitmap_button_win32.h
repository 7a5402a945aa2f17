#pragma once

#include <windows.h>

namespace brantel {

// Draws an owner-drawn button of a dialog (WM_DRAWITEM): one of the module's bitmaps, centred, in a
// raised bevel that is sunken while the button is pressed; with a dotted frame while it has the
// focus, and in relief when it is disabled.
void DrawBitmapButton(const DRAWITEMSTRUCT& item, int bitmap_id);

}  // namespace brantel
