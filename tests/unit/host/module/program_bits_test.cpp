#include "host/module/program_bits.h"

#include <gtest/gtest.h>

#include <string>

namespace brantel::host {
namespace {

std::string ProgramFor(const std::string& machine) {
  std::string start(0x3C, '\0');
  start.replace(0, 2, "MZ");
  start += std::string("\x80\0\0\0", 4);
  start.resize(0x80, '\0');
  return start + std::string("PE\0\0", 4) + machine;
}

TEST(ProgramBits, AreThoseOfTheMachine) {
  EXPECT_EQ(ProgramBits(ProgramFor("\x4C\x01")), 32);
  EXPECT_EQ(ProgramBits(ProgramFor("\x64\x86")), 64);
  EXPECT_EQ(ProgramBits(ProgramFor("\x64\xAA")), 0);
}

TEST(ProgramBits, AreNoneOfAnotherFile) {
  EXPECT_EQ(ProgramBits(""), 0);
  EXPECT_EQ(ProgramBits("MZ"), 0);
  EXPECT_EQ(ProgramBits("notes\n"), 0);
  EXPECT_EQ(ProgramBits("MZ" + std::string(200, '\xFF')), 0);
  EXPECT_EQ(ProgramBits("MZ" + std::string(200, '\0')), 0);
}

TEST(ProgramBits, AreNotReadBeyondTheEnd) {
  const std::string whole = ProgramFor("\x4C\x01");
  for (std::size_t size = 0; size < whole.size(); ++size)
    EXPECT_EQ(ProgramBits(std::string(whole, 0, size)), 0) << size;
}

}  // namespace
}  // namespace brantel::host
