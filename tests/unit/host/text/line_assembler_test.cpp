#include "host/text/line_assembler.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace brantel::host {
namespace {

TEST(LineAssembler, GivesWholeLinesHoweverTheyCome) {
  const std::string text = "one\n\ntwo three\nopen";
  for (std::size_t size = 1; size <= text.size(); ++size) {
    LineAssembler lines;
    std::vector<std::string> found;
    for (std::size_t at = 0; at < text.size(); at += size) {
      lines.Take(std::string_view(text).substr(at, size));
      while (const auto line = lines.NextLine())
        found.push_back(*line);
    }
    EXPECT_EQ(found, (std::vector<std::string>{"one", "", "two three"})) << size;
    EXPECT_TRUE(lines.has_open_line());
    lines.Take("\n");
    EXPECT_EQ(lines.NextLine(), "open");
    EXPECT_FALSE(lines.has_open_line());
  }
}

}  // namespace
}  // namespace brantel::host
