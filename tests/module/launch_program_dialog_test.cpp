#include <windows.h>
#include <commctrl.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <shlobj.h>

#include <array>
#include <filesystem>
#include <string>

#include "tests/module/dialog_fixture.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::Pair;

constexpr int kProgram = 219;
constexpr int kArguments = 220;
constexpr int kBrowseProgram = 221;
constexpr int kWorkingPath = 222;
constexpr int kBrowseWorkingPath = 223;

// The label of the folder browser.
constexpr int kBrowserTitle = 0x3742;

class LaunchProgramDialogTest : public DialogFixture {
 protected:
  LaunchProgramDialogTest() : DialogFixture(ExpectedLaunchProgramDialog()) {}

  // Opens the folder browser and makes it choose this folder.
  void SelectDirectory(const std::filesystem::path& directory) {
    session_->StartClick(kBrowseWorkingPath);
    HWND browser = session_->AwaitPopup();
    // While it opens the browser makes a selection of its own.
    for (int i = 0; i < 200 && SelectedFolder(browser) != directory.filename(); ++i) {
      SendMessageW(browser, BFFM_SETSELECTIONW, TRUE, reinterpret_cast<LPARAM>(directory.c_str()));
      Sleep(20);
      session_->Settle();
    }
  }

  // The folder's name as the browser's tree shows it.
  static std::filesystem::path SelectedFolder(HWND browser) {
    HWND tree = FindWindowExA(browser, nullptr, WC_TREEVIEWA, nullptr);
    std::array<wchar_t, MAX_PATH> text{};
    TVITEMW item{};
    item.mask = TVIF_TEXT;
    item.hItem = TreeView_GetSelection(tree);
    item.pszText = text.data();
    item.cchTextMax = MAX_PATH;
    SendMessageW(tree, TVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    return text.data();
  }

  [[nodiscard]] std::filesystem::path NewDirectory() const {
    const auto directory = scratch_.path() / "tools";
    std::filesystem::create_directory(directory);
    return directory;
  }
};

TEST_F(LaunchProgramDialogTest, LeavesTheFocusWhereItIsAfterANameError) {
  Add();
  session_->PressAltAnd('a');
  session_->PressKey(VK_RETURN);
  ExpectMessage("Invalid value - The 'Name' field must have a value");
  EXPECT_EQ(session_->Focus(), kArguments);
}

TEST_F(LaunchProgramDialogTest, SavesWithoutArguments) {
  Add();
  EnterSamples();
  session_->SetText(kArguments, "");
  session_->Click(kOk);
  ExpectEnd(S_OK, L"night");
  const std::string file =
      expected_.sample_file.substr(0, 16 + 13 + 13) + std::string("\1\0\0\0\0", 5);
  EXPECT_THAT(scratch_.Files(), ElementsAre(Pair(L"night", file)));
}

TEST_F(LaunchProgramDialogTest, OffersProgramsAndAllFilesFromTheEnteredNameOn) {
  Add();
  session_->SetText(kProgram, "page.exe");
  session_->StartClick(kBrowseProgram);
  HWND chooser = session_->AwaitPopup();
  EXPECT_EQ(GetWindow(chooser, GW_OWNER), session_->dialog());
  EXPECT_EQ(WindowText(FileEdit(chooser)), "page.exe");
  EXPECT_THAT(FileKinds(chooser), ElementsAre("Exe Files (*.exe)", "All files (*.*)"));
}

TEST_F(LaunchProgramDialogTest, TakesTheChosenProgramAlone) {
  const std::string program = scratch_.Write(L"page.exe", "").string();
  Add();
  EnterSamples();
  session_->StartClick(kBrowseProgram);
  ChooseFile(program);
  EXPECT_EQ(session_->Text(kProgram), program);
  EXPECT_EQ(session_->Text(kWorkingPath), "C:\\tools");
}

TEST_F(LaunchProgramDialogTest, KeepsTheProgramWhenNoneIsChosen) {
  Add();
  session_->SetText(kProgram, "page.exe");
  session_->StartClick(kBrowseProgram);
  session_->AwaitPopup();
  session_->ClickInPopup(kCancel);
  EXPECT_EQ(session_->Text(kProgram), "page.exe");
}

TEST_F(LaunchProgramDialogTest, TakesTheChosenDirectory) {
  const auto directory = NewDirectory();
  std::array<wchar_t, MAX_PATH> before{};
  GetCurrentDirectoryW(MAX_PATH, before.data());
  Add();
  SelectDirectory(directory);
  EXPECT_EQ(WindowText(GetDlgItem(session_->popup(), kBrowserTitle)), "Select Directory...");
  EXPECT_EQ(GetWindow(session_->popup(), GW_OWNER), session_->dialog());
  session_->ClickInPopup(IDOK);
  EXPECT_EQ(session_->popup(), nullptr);
  // The browser closes before its answer is taken.
  for (int i = 0; i < 200 && session_->Text(kWorkingPath).empty(); ++i)
    Sleep(20);
  EXPECT_EQ(session_->Text(kWorkingPath), directory.string());
  std::array<wchar_t, MAX_PATH> after{};
  GetCurrentDirectoryW(MAX_PATH, after.data());
  EXPECT_STREQ(after.data(), before.data());
}

TEST_F(LaunchProgramDialogTest, KeepsTheDirectoryWhenNoneIsChosen) {
  Add();
  session_->SetText(kWorkingPath, "C:\\tools");
  SelectDirectory(NewDirectory());
  session_->ClickInPopup(kCancel);
  EXPECT_EQ(session_->popup(), nullptr);
  EXPECT_EQ(session_->Text(kWorkingPath), "C:\\tools");
}

TEST_F(LaunchProgramDialogTest, RefusesADirectoryThatCannotBeEntered) {
  const auto directory = NewDirectory();
  Add();
  session_->SetText(kWorkingPath, "C:\\tools");
  SelectDirectory(directory);
  std::filesystem::remove(directory);
  session_->ClickInPopup(IDOK);
  const MessageBoxContent message{.text = "Directory is invalid", .has_error_icon = true};
  // The browser closes before the message opens.
  for (int i = 0;
       i < 200 && (session_->popup() == nullptr || session_->ReadMessageBox() != message); ++i)
    Sleep(20);
  EXPECT_EQ(session_->ReadMessageBox(), message);
  session_->CloseMessageBox();
  EXPECT_EQ(session_->Text(kWorkingPath), "C:\\tools");
}

}  // namespace
}  // namespace brantel
