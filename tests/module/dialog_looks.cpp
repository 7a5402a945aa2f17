#include "tests/module/dialog_looks.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/module/dialog_session.h"

namespace brantel {
namespace {

DWORD ButtonKind(HWND window) {
  return WindowClass(window) == "Button" ? StyleOf(window) & BS_TYPEMASK : DWORD{BS_PUSHBUTTON};
}

bool IsGroupBox(HWND window) {
  return ButtonKind(window) == BS_GROUPBOX;
}

// A check box or a radio button has its mark on the left, a list its arrow on the right.
LONG WidthBesideText(HWND control) {
  const DWORD kind = ButtonKind(control);
  const bool has_mark = kind == BS_AUTOCHECKBOX || kind == BS_AUTORADIOBUTTON;
  return has_mark || WindowClass(control) == "ComboBox" ? GetSystemMetrics(SM_CXVSCROLL) + 4 : 0;
}

// The room that a control's text takes in the dialog's font, on one line.
LONG WidthOfText(HWND control) {
  HDC context = GetDC(control);
  HGDIOBJ before =
      SelectObject(context, reinterpret_cast<HGDIOBJ>(SendMessageA(control, WM_GETFONT, 0, 0)));
  RECT area{};
  DrawTextA(context, WindowText(control).c_str(), -1, &area, DT_CALCRECT | DT_SINGLELINE);
  SelectObject(context, before);
  ReleaseDC(control, context);
  return area.right;
}

}  // namespace

DWORD StyleOf(HWND window) {
  return static_cast<DWORD>(GetWindowLongA(window, GWL_STYLE));
}

RECT AreaOf(HWND window, HWND dialog) {
  RECT area{};
  GetWindowRect(window, &area);
  MapWindowPoints(nullptr, dialog, reinterpret_cast<POINT*>(&area), 2);
  return area;
}

void ExpectControlsApart(HWND dialog) {
  RECT inside{};
  GetClientRect(dialog, &inside);
  std::vector<HWND> earlier;
  for (HWND child : Children(dialog)) {
    const RECT area = AreaOf(child, dialog);
    RECT common{};
    IntersectRect(&common, &area, &inside);
    EXPECT_TRUE(EqualRect(&common, &area)) << WindowText(child);
    for (HWND other : earlier) {
      const RECT other_area = AreaOf(other, dialog);
      const bool meet = IntersectRect(&common, &area, &other_area) != FALSE;
      const bool contained = IsGroupBox(other) && EqualRect(&common, &area);
      EXPECT_TRUE(!meet || contained) << WindowText(other) << " and " << WindowText(child);
    }
    earlier.push_back(child);
  }
}

void ExpectTextsWhole(HWND dialog) {
  for (HWND child : Children(dialog)) {
    if (WindowClass(child) == "Edit" || ButtonKind(child) == BS_OWNERDRAW) continue;
    RECT area{};
    GetClientRect(child, &area);
    EXPECT_LE(WidthOfText(child) + WidthBesideText(child), area.right) << WindowText(child);
  }
}

}  // namespace brantel
