#include "dialog/bitmap_button_win32.h"

#include <memory>
#include <type_traits>

#include "system/windows/module_instance_win32.h"

namespace brantel {
namespace {

struct BitmapDeleter {
  void operator()(HBITMAP bitmap) const noexcept { DeleteObject(bitmap); }
};
using OwnedBitmap = std::unique_ptr<std::remove_pointer_t<HBITMAP>, BitmapDeleter>;

// The distance in pixels of the focus frame from the button's edge.
constexpr int kFocusInset = 3;

// Loaded anew each time, so that its greys are always those of the operator's colours.
OwnedBitmap LoadPicture(int bitmap_id) {
  return OwnedBitmap(static_cast<HBITMAP>(LoadImageA(ModuleInstance(), MAKEINTRESOURCEA(bitmap_id),
                                                     IMAGE_BITMAP, 0, 0, LR_LOADMAP3DCOLORS)));
}

void DrawPicture(HDC context, const RECT& button, HBITMAP picture, bool pressed, bool disabled) {
  BITMAP size{};
  if (GetObjectA(picture, sizeof size, &size) == 0) return;
  // A pressed button takes its picture along.
  const int shift = pressed ? 1 : 0;
  const int left = (button.left + button.right - size.bmWidth) / 2 + shift;
  const int top = (button.top + button.bottom - size.bmHeight) / 2 + shift;
  DrawStateA(context, nullptr, nullptr, reinterpret_cast<LPARAM>(picture), 0, left, top,
             size.bmWidth, size.bmHeight,
             static_cast<UINT>(DST_BITMAP | (disabled ? DSS_DISABLED : DSS_NORMAL)));
}

}  // namespace

void DrawBitmapButton(const DRAWITEMSTRUCT& item, int bitmap_id) {
  const bool pressed = (item.itemState & ODS_SELECTED) != 0;
  const bool disabled = (item.itemState & ODS_DISABLED) != 0;
  RECT area = item.rcItem;

  FillRect(item.hDC, &area, GetSysColorBrush(COLOR_3DFACE));
  const OwnedBitmap picture = LoadPicture(bitmap_id);
  DrawPicture(item.hDC, area, picture.get(), pressed, disabled);
  // White above and grey below, or the other way round.
  DrawEdge(item.hDC, &area, pressed ? BDR_SUNKENOUTER : BDR_RAISEDINNER, BF_RECT);
  if ((item.itemState & ODS_FOCUS) != 0) {
    InflateRect(&area, -kFocusInset, -kFocusInset);
    DrawFocusRect(item.hDC, &area);
  }
}

}  // namespace brantel
