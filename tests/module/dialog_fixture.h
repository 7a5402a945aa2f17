#pragma once

#include <windows.h>
#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "tests/module/dialog_session.h"
#include "tests/module/expected_dialogs.h"
#include "tests/module/loaded_module.h"
#include "tests/module/recording_host.h"
#include "tests/module/scratch_directory.h"

namespace brantel {

// An operator with a directory of instances of a class, and a host that is bound.
class DialogFixture : public ::testing::Test {
 protected:
  explicit DialogFixture(const ExpectedDialog& expected) : expected_(expected) {}

  // Opens the dialog.
  DialogSession& Add() { return Open(std::nullopt); }
  DialogSession& Edit(const std::wstring& name) { return Open(name); }
  DialogSession& Open(std::optional<std::wstring> edited) {
    return session_.emplace(module_, DialogRequest{.notifier_class = expected_.notifier_class,
                                                   .directory = scratch_.path().wstring(),
                                                   .edited = std::move(edited),
                                                   .host = &host_,
                                                   .has_owner = true});
  }

  // Writes the samples of all fields into the dialog.
  void EnterSamples() {
    for (const ExpectedEdit& edit : expected_.edits) {
      session_->SetText(edit.control, edit.sample);
    }
  }

  [[nodiscard]] int NameControl() const { return expected_.edits.front().control; }

  // Expects a message box with nothing but this text, and closes it.
  void ExpectMessage(const std::string& text, const std::string& caption = "") {
    const MessageBoxContent message{.text = text, .caption = caption};
    EXPECT_EQ(session_->ReadMessageBox(), message);
    session_->CloseMessageBox();
  }

  void ExpectEnd(HRESULT result, const std::optional<std::wstring>& new_name) {
    const DialogOutcome& outcome = session_->Await();
    EXPECT_EQ(outcome.result, result);
    EXPECT_EQ(outcome.new_name, new_name);
  }

  void ExpectCancelled() { ExpectEnd(static_cast<HRESULT>(0x80004005), std::nullopt); }

  // Answers the open-file dialog that a button has opened with the text, and with OK.
  void ChooseFile(const std::string& text) {
    HWND chooser = session_->AwaitPopup();
    SendMessageA(FileEdit(chooser), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
    session_->ClickInPopup(IDOK);
  }

  // Controls of the open-file dialog by the numbers that the system documents for its users.
  static HWND FileEdit(HWND chooser) {
    HWND edit = GetDlgItem(chooser, kFileNameBox);
    while (WindowClass(edit) != "Edit")
      edit = GetWindow(edit, GW_CHILD);
    return edit;
  }
  static std::vector<std::string> FileKinds(HWND chooser) {
    HWND box = GetDlgItem(chooser, kFileKindBox);
    std::vector<std::string> kinds;
    const LRESULT count = SendMessageA(box, CB_GETCOUNT, 0, 0);
    for (LRESULT i = 0; i < count; ++i) {
      std::array<char, 256> text{};
      SendMessageA(box, CB_GETLBTEXT, static_cast<WPARAM>(i),
                   reinterpret_cast<LPARAM>(text.data()));
      kinds.emplace_back(text.data());
    }
    return kinds;
  }

  static constexpr int kFileNameBox = 0x47C;
  static constexpr int kFileKindBox = 0x470;

  const ExpectedDialog& expected_;
  LoadedModule module_;
  ScratchDirectory scratch_;
  RecordingHost host_;
  std::optional<DialogSession> session_;
};

}  // namespace brantel
