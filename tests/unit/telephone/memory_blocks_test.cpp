#include "telephone/memory_blocks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>

namespace brantel {
namespace {

using ::testing::Each;

TEST(SystemMemoryBlocks, GivesZeros) {
  SystemMemoryBlocks system;
  const MemoryBlock block(system, 1000);
  ASSERT_TRUE(block);
  EXPECT_EQ(block.bytes().size(), 1000U);
  EXPECT_THAT(block.bytes(), Each(std::byte{0}));
}

TEST(SystemMemoryBlocks, GivesABlockOfNoBytesToo) {
  SystemMemoryBlocks system;
  EXPECT_TRUE(MemoryBlock(system, 0));
}

// All of them together are more than a process of 32 bits can have.
TEST(SystemMemoryBlocks, TakesBackWhatItGave) {
  SystemMemoryBlocks system;
  for (int i = 0; i < 17; ++i) {
    EXPECT_TRUE(MemoryBlock(system, std::size_t{1} << 28)) << i;
  }
}

}  // namespace
}  // namespace brantel
