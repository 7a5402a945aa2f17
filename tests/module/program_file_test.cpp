#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/module/loaded_module.h"
#include "tests/module/portable_executable.h"

namespace brantel {
namespace {

using ::testing::AnyOf;
using ::testing::Each;
using ::testing::ElementsAre;

TEST(ProgramFile, IsA32BitLibrary) {
  EXPECT_TRUE(PortableExecutable(ModuleFile()).is_library());
}

TEST(ProgramFile, ExportsTheFourEntryPointsUndecoratedAndNothingElse) {
  const PortableExecutable file(ModuleFile());

  EXPECT_THAT(file.ExportNames(), ElementsAre("DllCanUnloadNow", "DllGetClassObject",
                                              "DllRegisterServer", "DllUnregisterServer"));
  EXPECT_EQ(file.ExportCount(), 4U);
}

TEST(ProgramFile, ImportsSystemLibrariesAlone) {
  EXPECT_THAT(PortableExecutable(ModuleFile()).ImportedLibraries(),
              Each(AnyOf("advapi32.dll", "comctl32.dll", "comdlg32.dll", "gdi32.dll",
                         "kernel32.dll", "mpr.dll", "msvcrt.dll", "ole32.dll", "oleaut32.dll",
                         "shell32.dll", "shlwapi.dll", "user32.dll", "winmm.dll", "wsock32.dll")));
}

// The standard library of GCC 14 takes more room than that of GCC 12, with which the release is
// made.
TEST(ProgramFile, HasAtMost448KiB) {
  constexpr std::size_t kMost = (__GNUC__ < 14 ? 448U : 512U) * 1024U;
  EXPECT_LE(PortableExecutable(ModuleFile()).size(), kMost);
}

}  // namespace
}  // namespace brantel
