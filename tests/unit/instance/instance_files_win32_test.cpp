// What the portable tests take from a likeness of the file system, asked of the system's own.
#include "instance/instance_files_win32.h"

#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <string>
#include <vector>

#include "system/windows/ansi_text_win32.h"
#include "system/windows/handle_win32.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::UnorderedElementsAre;

class DiskInstanceFilesTest : public ::testing::Test {
 protected:
  DiskInstanceFilesTest() { std::filesystem::create_directory(folder_); }
  ~DiskInstanceFilesTest() override { std::filesystem::remove_all(folder_); }

  [[nodiscard]] std::string PathOf(const std::string& name) const {
    return ToAnsi(folder_.wstring()) + "\\" + name;
  }

  [[nodiscard]] std::vector<std::wstring> Names() const {
    std::vector<std::wstring> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder_))
      names.push_back(entry.path().filename().wstring());
    return names;
  }

  [[nodiscard]] std::string ShortName(const std::string& name) const {
    std::array<char, MAX_PATH> path{};
    GetShortPathNameA(PathOf(name).c_str(), path.data(), MAX_PATH);
    const std::string short_path = path.data();
    return short_path.substr(short_path.rfind('\\') + 1);
  }

  const std::filesystem::path folder_ =
      std::filesystem::temp_directory_path() /
      (L"brantel_files_" + std::to_wstring(GetCurrentProcessId()));
  DiskInstanceFiles files_;
};

TEST_F(DiskInstanceFilesTest, KnowAFileByItsOwnNameWhateverLeadsToIt) {
  ASSERT_TRUE(files_.Write(PathOf("Night shift \xDC"), "x"));
  const std::string short_name = ShortName("Night shift \xDC");
  ASSERT_NE(short_name, "Night shift \xDC");
  for (const std::string& name :
       {std::string("Night shift \xDC"), std::string("NIGHT SHIFT \xFC"), short_name}) {
    EXPECT_EQ(files_.StoredName(PathOf(name)), "Night shift \xDC") << name;
  }
  EXPECT_EQ(files_.StoredName(PathOf("Night shift")), std::nullopt);
  EXPECT_EQ(files_.StoredName(PathOf("none\\Night shift")), std::nullopt);
}

TEST_F(DiskInstanceFilesTest, KnowAFileThatSomebodyHolds) {
  ASSERT_TRUE(files_.Write(PathOf("Night"), "x"));
  const Handle holder(
      CreateFileA(PathOf("Night").c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
  ASSERT_TRUE(holder);
  EXPECT_EQ(files_.StoredName(PathOf("NIGHT")), "Night");
  EXPECT_EQ(files_.Open(PathOf("Night")), nullptr);
  EXPECT_FALSE(files_.Rename(PathOf("Night"), PathOf("NIGHT")));
  EXPECT_THAT(Names(), ElementsAre(L"Night"));
}

// Two such files would otherwise be one by a name of question marks.
TEST_F(DiskInstanceFilesTest, KnowAFileWhoseNameTheCodePageLacksByTheNameThatLeadsToIt) {
  const std::filesystem::path path = folder_ / L"\u4E2D\u0416\u05D0 night shift";
  const Handle file(
      CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_NEW, 0, nullptr));
  ASSERT_TRUE(file);
  std::array<wchar_t, MAX_PATH> short_path{};
  GetShortPathNameW(path.c_str(), short_path.data(), MAX_PATH);
  const std::string short_name =
      ToAnsi(std::filesystem::path(short_path.data()).filename().wstring());
  EXPECT_EQ(files_.StoredName(PathOf(short_name)), short_name);
}

TEST_F(DiskInstanceFilesTest, GiveAFileAnotherNameAndOtherLetters) {
  ASSERT_TRUE(files_.Write(PathOf("night"), "x"));
  EXPECT_TRUE(files_.Rename(PathOf("night"), PathOf("d\xE4y")));
  EXPECT_THAT(Names(), ElementsAre(L"d\u00E4y"));
  EXPECT_TRUE(files_.Rename(PathOf("d\xE4y"), PathOf("D\xC4Y")));
  EXPECT_THAT(Names(), ElementsAre(L"D\u00C4Y"));
}

TEST_F(DiskInstanceFilesTest, GiveNoFileTheNameOfAnother) {
  ASSERT_TRUE(files_.Write(PathOf("night"), "x"));
  ASSERT_TRUE(files_.Write(PathOf("day"), "y"));
  EXPECT_FALSE(files_.Rename(PathOf("night"), PathOf("DAY")));
  EXPECT_FALSE(files_.Rename(PathOf("none"), PathOf("new")));
  EXPECT_THAT(Names(), UnorderedElementsAre(L"night", L"day"));
}

// Some file systems take other letters for no change, so that the file goes by a second name.
TEST_F(DiskInstanceFilesTest, KeepTheLettersWhereTheNameOnTheWayIsTaken) {
  ASSERT_TRUE(files_.Write(PathOf("night"), "x"));
  ASSERT_TRUE(files_.Write(PathOf("NIGHT~"), "y"));
  const bool renamed = files_.Rename(PathOf("night"), PathOf("NIGHT"));
  EXPECT_THAT(Names(), UnorderedElementsAre(renamed ? L"NIGHT" : L"night", L"NIGHT~"));
}

TEST_F(DiskInstanceFilesTest, ReadInPiecesUntilTheEndAndLetGoOfTheFile) {
  ASSERT_TRUE(files_.Write(PathOf("night"), "abcde"));
  {
    const auto file = files_.Open(PathOf("night"));
    ASSERT_NE(file, nullptr);
    std::array<char, 3> buffer{};
    EXPECT_EQ(file->Read(buffer), 3U);
    EXPECT_THAT(buffer, ElementsAre('a', 'b', 'c'));
    EXPECT_EQ(file->Read(buffer), 2U);
    EXPECT_EQ(file->Read(buffer), 0U);
    EXPECT_FALSE(files_.Write(PathOf("night"), "x"));
  }
  EXPECT_TRUE(files_.Write(PathOf("night"), "x"));
}

TEST_F(DiskInstanceFilesTest, JudgeNamesByTheCharactersOfTheCodePage) {
  EXPECT_TRUE(files_.IsValidName("Night"));
  EXPECT_FALSE(files_.IsValidName("..\\Night"));
  for (const wchar_t* device : {L"COM\u00B9", L"lpt\u00B2.txt", L"Com\u00B3"}) {
    const std::string name = ToAnsi(device);
    if (FromAnsi(name) != device) continue;  // the code page has no such digit
    EXPECT_FALSE(files_.IsValidName(name)) << name;
  }
}

}  // namespace
}  // namespace brantel
