#include "telephone/memory_blocks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstddef>

#include "tests/unit/telephone/fake_voice_system.h"

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

TEST(MemoryBlock, HasNoBytesWithoutMemory) {
  CountingMemory memory;
  memory.refused = {1};
  const MemoryBlock block(memory, 1000);
  EXPECT_FALSE(block);
  EXPECT_EQ(block.bytes().size(), 0U);
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
