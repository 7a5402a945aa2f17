// Each dialog opened many times: filled in and closed by OK, and closed by Cancel, for a new
// instance and for one that is there.
#include <windows.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "system/windows/bstr_win32.h"
#include "tests/far_ends/far_ends.h"
#include "tests/module/expected_dialogs.h"
#include "tests/module/loaded_module.h"
#include "tests/module/scratch_directory.h"
#include "tests/module/settings_key.h"
#include "tests/soak/soak.h"

namespace brantel {
namespace {

constexpr const wchar_t* kInstance = L"night";

// The dialog in front of the others of this thread, of which there are two when one has opened
// another.
BOOL CALLBACK FindEnabledDialog(HWND window, LPARAM found) {
  std::array<char, 16> name{};
  GetClassNameA(window, name.data(), name.size());
  const bool is_found =
      std::string_view(name.data()) == "#32770" && IsWindowEnabled(window) != FALSE;
  if (is_found) *reinterpret_cast<HWND*>(found) = window;
  return is_found ? FALSE : TRUE;
}

HWND EnabledDialog() {
  HWND found = nullptr;
  EnumThreadWindows(GetCurrentThreadId(), FindEnabledDialog, reinterpret_cast<LPARAM>(&found));
  return found;
}

// An operator on the thread of the dialogs, who acts as soon as a dialog reads its messages. The
// steps are taken one after the other, each in the dialog that is in front then.
class Operator {
 public:
  Operator() {
    WNDCLASSA window_class{};
    window_class.lpfnWndProc = &HandleMessage;
    window_class.hInstance = GetModuleHandleA(nullptr);
    window_class.lpszClassName = kWindowClass;
    RegisterClassA(&window_class);
    window_ = CreateWindowA(kWindowClass, "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                            window_class.hInstance, nullptr);
    SetWindowLongPtrA(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  }
  Operator(const Operator&) = delete;
  Operator& operator=(const Operator&) = delete;
  ~Operator() {
    DestroyWindow(window_);
    UnregisterClassA(kWindowClass, GetModuleHandleA(nullptr));
  }

  // Before the dialog is opened.
  void Plan(std::vector<std::function<void(HWND)>> steps) {
    steps_ = std::move(steps);
    next_ = 0;
    Continue();
    SetTimer(window_, kPatienceTimer, kPatience, nullptr);
  }

  // After it: whether all steps were taken, and nobody had to lose patience.
  bool IsContent() {
    KillTimer(window_, kPatienceTimer);
    return next_ == steps_.size() && !has_lost_patience_;
  }

 private:
  static constexpr const char* kWindowClass = "Operator of the tests";
  static constexpr UINT_PTR kPatienceTimer = 1;
  static constexpr UINT kPatience = 60000;  // ms

  static LRESULT CALLBACK HandleMessage(HWND window, UINT message, WPARAM first, LPARAM second) {
    auto* const self = reinterpret_cast<Operator*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (message == WM_APP) {
      self->TakeStep();
    } else if (message == WM_TIMER) {
      self->has_lost_patience_ = true;
      if (HWND dialog = EnabledDialog()) PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
    } else {
      return DefWindowProcA(window, message, first, second);
    }
    return 0;
  }

  void Continue() { PostMessageA(window_, WM_APP, 0, 0); }

  void TakeStep() {
    HWND dialog = EnabledDialog();
    if (next_ == steps_.size()) return;
    // The next one may be taken within this, by a dialog that it opens.
    if (next_ + 1 < steps_.size()) Continue();
    steps_.at(next_++)(dialog);
  }

  HWND window_ = nullptr;
  std::vector<std::function<void(HWND)>> steps_;
  std::size_t next_ = 0;
  bool has_lost_patience_ = false;
};

class DialogSeries : public ::testing::TestWithParam<const ExpectedDialog*> {
 protected:
  struct Round {
    bool is_edit = false;
    bool is_cancelled = false;
  };

  static Round RoundOf(unsigned number) { return {(number & 1) != 0, (number & 2) != 0}; }

  void Open(unsigned count) {
    const auto notifier =
        module_.Create<INotifierConfig>(dialog().notifier_class, kNotifierConfigIid);
    for (unsigned i = 0; i < count; ++i)
      ASSERT_NO_FATAL_FAILURE(Open(*notifier.get(), RoundOf(i))) << i;
  }

  // Nobody looks for computers any more.
  void AwaitEndOfSearches() const {
    constexpr DWORD kPatience = 60000;
    constexpr DWORD kSettling = 300;  // the system is not done with a thread when its work is
    for (DWORD waited = 0; far_ends_.libraries.loaded() != 0 && waited < kPatience; waited += 10)
      Sleep(10);
    Sleep(kSettling);
    EXPECT_EQ(far_ends_.libraries.loaded(), 0);
  }

  [[nodiscard]] static const ExpectedDialog& dialog() { return *GetParam(); }

  const NoSettings no_beeper_settings_{kBeeperSettingsKey};
  const NoSettings no_pager_settings_{kPagerSettingsKey};
  const ScratchDirectory scratch_;
  const LoadedModule module_;
  const FarEnds far_ends_{module_.handle()};
  Operator operator_;

 private:
  void Open(INotifierConfig& notifier, const Round& round) {
    std::filesystem::remove(scratch_.path() / kInstance);
    if (round.is_edit) static_cast<void>(scratch_.Write(kInstance, dialog().sample_file));
    operator_.Plan(StepsOf(round));
    const HRESULT result = Call(notifier, round.is_edit);
    ASSERT_TRUE(operator_.IsContent());
    ASSERT_EQ(result, round.is_cancelled ? E_FAIL : S_OK);
    const auto files = scratch_.Files();
    const auto saved = files.find(kInstance);
    const bool has_file = round.is_edit || !round.is_cancelled;
    ASSERT_EQ(saved != files.end(), has_file);
    if (has_file) {
      ASSERT_EQ(saved->second, dialog().sample_file);
    }
  }

  HRESULT Call(INotifierConfig& notifier, bool is_edit) {
    const Bstr directory(scratch_.path().wstring());
    Bstr name;
    if (!is_edit) return notifier.AddInstance(directory.get(), name.in_out());
    name = Bstr(kInstance);
    return notifier.EditInstance(directory.get(), name.in_out());
  }

  static std::vector<std::function<void(HWND)>> StepsOf(const Round& round) {
    std::vector<std::function<void(HWND)>> steps = {Fill};
    if (const auto button = PortSettingsButton()) {
      steps.emplace_back([button = *button](HWND window) { Press(window, button); });
      steps.emplace_back([](HWND settings) { Paint(settings); });
      steps.emplace_back([](HWND settings) { Press(settings, IDCANCEL); });
    }
    steps.emplace_back(
        [button = round.is_cancelled ? IDCANCEL : IDOK](HWND window) { Press(window, button); });
    return steps;
  }

  // Where a dialog has settings of a port behind a button.
  static std::optional<int> PortSettingsButton() {
    for (const ExpectedControl& control : dialog().controls) {
      if (control.text == "&Port Settings...") return control.id;
    }
    return std::nullopt;
  }

  static void Fill(HWND window) {
    for (const ExpectedEdit& edit : dialog().edits)
      SetDlgItemTextA(window, edit.control, edit.sample);
    Paint(window);
  }

  // Dialogs show themselves when there is nothing else to do.
  static void Paint(HWND window) {
    ShowWindow(window, SW_SHOWNORMAL);
    RedrawWindow(window, nullptr, nullptr,
                 RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW | RDW_ALLCHILDREN);
  }

  static void Press(HWND window, int button) {
    SendMessageA(window, WM_COMMAND, static_cast<WPARAM>(button),
                 reinterpret_cast<LPARAM>(GetDlgItem(window, button)));
  }
};

INSTANTIATE_TEST_SUITE_P(Dialogs, DialogSeries,
                         ::testing::Values(&ExpectedBeeperDialog(), &ExpectedPagerDialog(),
                                           &ExpectedSmtpMailDialog(), &ExpectedSoundDialog(),
                                           &ExpectedLaunchProgramDialog(),
                                           &ExpectedWinPopupDialog(), &ExpectedVoiceDialog()),
                         [](const auto& tested) {
                           return std::string(tested.param->notifier_class.name);
                         });

TEST_P(DialogSeries, LeavesNothing) {
  const unsigned openings = Setting(L"SOAK_OPENINGS", 1000);
  ASSERT_NO_FATAL_FAILURE(Open(std::max(openings / 10, 40U)));
  AwaitEndOfSearches();
  const GrowthWatch watch;
  ASSERT_NO_FATAL_FAILURE(Open(openings));
  AwaitEndOfSearches();
  watch.ExpectNone(std::string(dialog().notifier_class.name) + " dialog, " +
                   std::to_string(openings) + " openings");
  EXPECT_TRUE(far_ends_.AreIdle());
  EXPECT_EQ(module_.CanUnloadNow(), S_OK);
}

}  // namespace
}  // namespace brantel
