#include "tests/module/dialog_looks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>
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

std::vector<int> ControlsInGroup(HWND dialog, const std::string& title) {
  const std::vector<HWND> children = Children(dialog);
  const auto box =
      std::ranges::find_if(children, [&](HWND child) { return WindowText(child) == title; });
  if (box == children.end()) throw std::runtime_error("no group " + title);
  const RECT frame = AreaOf(*box, dialog);
  std::vector<int> controls;
  for (HWND child : children) {
    const RECT area = AreaOf(child, dialog);
    RECT common{};
    const bool within = IntersectRect(&common, &frame, &area) && EqualRect(&common, &area);
    if (within && WindowClass(child) != "Static" && child != *box) {
      controls.push_back(GetDlgCtrlID(child));
    }
  }
  return controls;
}

std::vector<std::string> TextsOf(HWND dialog) {
  std::vector<std::string> texts;
  for (HWND child : Children(dialog)) {
    texts.push_back(std::to_string(static_cast<SHORT>(GetDlgCtrlID(child))) + " " +
                    WindowText(child));
  }
  return texts;
}

std::vector<int> TabStops(HWND dialog) {
  std::vector<int> stops;
  for (HWND stop = GetNextDlgTabItem(dialog, nullptr, FALSE);
       stops.empty() || GetDlgCtrlID(stop) != stops.front();
       stop = GetNextDlgTabItem(dialog, stop, FALSE)) {
    stops.push_back(GetDlgCtrlID(stop));
    if (stops.size() > 50) throw std::runtime_error("the Tab key does not come round");
  }
  return stops;
}

}  // namespace brantel
