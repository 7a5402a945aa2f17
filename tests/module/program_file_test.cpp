#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/module/loaded_module.h"
#include "tests/module/portable_executable.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;

TEST(ProgramFile, IsALibrary) {
  EXPECT_TRUE(PortableExecutable(ModuleFile()).is_library());
}

TEST(ProgramFile, ExportsTheFourEntryPointsUndecoratedAndNothingElse) {
  const PortableExecutable file(ModuleFile());

  EXPECT_THAT(file.ExportNames(), ElementsAre("DllCanUnloadNow", "DllGetClassObject",
                                              "DllRegisterServer", "DllUnregisterServer"));
  EXPECT_EQ(file.ExportCount(), 4U);
}

}  // namespace
}  // namespace brantel
