// What documents quote is in the files that they quote.
#include <gtest/gtest.h>

#include <string>

#include "tests/unit/project_file.h"

namespace brantel {
namespace {

TEST(Examples, AreQuotedAsTheyAre) {
  const std::string begin = "```cpp\n";
  const std::string sources = ReadProjectFile("examples/minimal_host.cpp") +
                              ReadProjectFile("include/brantel/host_conformance.h");
  for (const char* const document : {"README.md", "docs/using_the_module.md"}) {
    const std::string text = ReadProjectFile(document);
    for (std::size_t at = 0; (at = text.find(begin, at)) != std::string::npos;) {
      at += begin.size();
      const std::string quoted = text.substr(at, text.find("```", at) - at);
      EXPECT_NE(sources.find(quoted), std::string::npos)
          << document << " quotes what is not there:\n"
          << quoted;
    }
  }
}

}  // namespace
}  // namespace brantel
