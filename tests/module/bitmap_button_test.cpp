// The bitmap buttons as their pixels stand in the window.
#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <type_traits>
#include <vector>

#include "tests/module/dialog_fixture.h"

namespace brantel {
namespace {

using ::testing::Values;

struct ButtonCase {
  const ExpectedDialog& dialog;
  int control;
  int bitmap_id;
};

std::ostream& operator<<(std::ostream& out, const ButtonCase& button) {
  return out << button.dialog << button.control;
}

// The pixels of a picture or a part of one.
struct Pixels {
  int width = 0;
  int height = 0;
  std::vector<COLORREF> colours;

  [[nodiscard]] COLORREF At(int x, int y) const {
    return colours.at(static_cast<std::size_t>(y * width + x));
  }
  [[nodiscard]] Pixels Part(int left, int top, int part_width, int part_height) const {
    Pixels part{part_width, part_height, {}};
    for (int y = top; y < top + part_height; ++y) {
      for (int x = left; x < left + part_width; ++x)
        part.colours.push_back(At(x, y));
    }
    return part;
  }
  friend bool operator==(const Pixels&, const Pixels&) = default;
};

void PrintTo(const Pixels& pixels, std::ostream* out) {
  for (int y = 0; y < pixels.height; ++y) {
    *out << '\n';
    for (int x = 0; x < pixels.width; ++x)
      *out << std::hex << pixels.At(x, y) << ' ';
  }
}

Pixels Read(HDC context, int width, int height) {
  Pixels pixels{width, height, {}};
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x)
      pixels.colours.push_back(GetPixel(context, x, y));
  }
  return pixels;
}

Pixels ReadWindow(HWND window) {
  RECT area{};
  GetClientRect(window, &area);
  HDC context = GetDC(window);
  Pixels pixels = Read(context, area.right, area.bottom);
  ReleaseDC(window, context);
  return pixels;
}

struct BitmapDeleter {
  void operator()(HBITMAP bitmap) const noexcept { DeleteObject(bitmap); }
};

// A picture of the module with the grey of its background replaced by the dialogs' colour.
Pixels ReadBitmap(HMODULE module, int id) {
  const std::unique_ptr<std::remove_pointer_t<HBITMAP>, BitmapDeleter> bitmap(
      static_cast<HBITMAP>(LoadImageA(module, MAKEINTRESOURCEA(id), IMAGE_BITMAP, 0, 0, 0)));
  BITMAP size{};
  GetObjectA(bitmap.get(), sizeof size, &size);
  HDC context = CreateCompatibleDC(nullptr);
  HGDIOBJ before = SelectObject(context, bitmap.get());
  Pixels pixels = Read(context, size.bmWidth, size.bmHeight);
  SelectObject(context, before);
  DeleteDC(context);
  for (COLORREF& colour : pixels.colours) {
    if (colour == RGB(0xC0, 0xC0, 0xC0)) colour = GetSysColor(COLOR_3DFACE);
    if (colour == RGB(0x80, 0x80, 0x80)) colour = GetSysColor(COLOR_3DSHADOW);
  }
  return pixels;
}

class BitmapButtonTest : public DialogFixture, public ::testing::WithParamInterface<ButtonCase> {
 protected:
  BitmapButtonTest() : DialogFixture(GetParam().dialog), button_(ShowButton()) {}

  // How the button looks once it is drawn: the dialog's thread may be in the midst of that.
  [[nodiscard]] Pixels Look() const {
    constexpr DWORD kDrawingTime = 50;
    RedrawWindow(button_, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    Pixels look = ReadWindow(button_);
    while (true) {
      Sleep(kDrawingTime);
      Pixels later = ReadWindow(button_);
      if (later == look) return look;
      look = std::move(later);
    }
  }

  // The part of the button in which a picture of this size is centred, moved down and to the right.
  static Pixels Middle(const Pixels& button, const Pixels& picture, int shift) {
    return button.Part((button.width - picture.width) / 2 + shift,
                       (button.height - picture.height) / 2 + shift, picture.width, picture.height);
  }

  static void ExpectBevel(const Pixels& button, int above, int below) {
    const int right = button.width - 1;
    const int bottom = button.height - 1;
    for (int x = 0; x < right; ++x) {
      EXPECT_EQ(button.At(x, 0), GetSysColor(above)) << x;
      EXPECT_EQ(button.At(x, bottom), GetSysColor(below)) << x;
    }
    for (int y = 1; y < bottom; ++y) {
      EXPECT_EQ(button.At(0, y), GetSysColor(above)) << y;
      EXPECT_EQ(button.At(right, y), GetSysColor(below)) << y;
    }
  }

  HWND ShowButton() {
    Add();
    session_->AwaitSight();
    return session_->Control(GetParam().control);
  }

  HWND button_;
};

INSTANTIATE_TEST_SUITE_P(Buttons, BitmapButtonTest,
                         Values(ButtonCase{ExpectedSoundDialog(), 210, 301},
                                ButtonCase{ExpectedSoundDialog(), 211, 302},
                                ButtonCase{ExpectedLaunchProgramDialog(), 221, 301},
                                ButtonCase{ExpectedLaunchProgramDialog(), 223, 301},
                                ButtonCase{ExpectedVoiceDialog(), 221, 301},
                                ButtonCase{ExpectedVoiceDialog(), 239, 302}),
                         [](const auto& button) { return ::testing::PrintToString(button.param); });

TEST_P(BitmapButtonTest, ShowsItsPictureInTheMiddle) {
  const Pixels picture = ReadBitmap(module_.handle(), GetParam().bitmap_id);
  ASSERT_GT(picture.width, 0);
  EXPECT_EQ(Middle(Look(), picture, 0), picture);
}

TEST_P(BitmapButtonTest, HasABevelThatFlipsWhenItIsPressedAndThePictureGoesWithIt) {
  ASSERT_NE(GetSysColor(COLOR_3DHILIGHT), GetSysColor(COLOR_3DSHADOW));
  ExpectBevel(Look(), COLOR_3DHILIGHT, COLOR_3DSHADOW);
  SendMessageA(button_, BM_SETSTATE, TRUE, 0);
  const Pixels pressed = Look();
  ExpectBevel(pressed, COLOR_3DSHADOW, COLOR_3DHILIGHT);
  const Pixels picture = ReadBitmap(module_.handle(), GetParam().bitmap_id);
  EXPECT_EQ(Middle(pressed, picture, 1), picture);
  SendMessageA(button_, BM_SETSTATE, FALSE, 0);
  ExpectBevel(Look(), COLOR_3DHILIGHT, COLOR_3DSHADOW);
}

TEST_P(BitmapButtonTest, ShowsThatItHasTheFocus) {
  const Pixels before = Look();
  while (session_->Focus() != GetParam().control)
    session_->PressKey(VK_TAB);
  const Pixels focused = Look();
  EXPECT_NE(focused, before);
  session_->PressKey(VK_TAB);
  while (session_->Focus() == GetParam().control)
    Sleep(1);
  EXPECT_EQ(Look(), before);
}

TEST_P(BitmapButtonTest, LosesItsColoursWhenItIsDisabled) {
  EnableWindow(button_, FALSE);
  const Pixels disabled = Look();
  for (const COLORREF colour : disabled.colours) {
    EXPECT_EQ(GetRValue(colour), GetGValue(colour));
    EXPECT_EQ(GetGValue(colour), GetBValue(colour));
  }
  const Pixels inside = disabled.Part(1, 1, disabled.width - 2, disabled.height - 2);
  EXPECT_THAT(inside.colours, ::testing::Contains(GetSysColor(COLOR_3DSHADOW)));
  EnableWindow(button_, TRUE);
  EXPECT_NE(Look(), disabled);
}

}  // namespace
}  // namespace brantel
