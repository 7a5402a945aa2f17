#include "tests/unit/made_file.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>

#include "tests/unit/project_file.h"

namespace brantel {

void ExpectMadeFile(const std::string& path, const std::string& made) {
  if (std::getenv("BRANTEL_UPDATE_TEXTS") == nullptr) {
    EXPECT_EQ(ReadProjectFile(path), made);
    return;
  }
  std::ofstream(ProjectFile(path), std::ios::binary) << made;
  ADD_FAILURE() << "written anew: " << path;
}

}  // namespace brantel
