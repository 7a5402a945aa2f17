#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "telephone/line_constants.h"
#include "telephone/memory_blocks.h"

namespace brantel {

// A structure of telephony's: 32-bit words in this machine's order, the first of which is the size
// of the whole, and texts behind them.
class SizedBlock {
 public:
  SizedBlock() = default;

  // Zeros but for the size. An empty block when memory runs out.
  SizedBlock(MemoryBlocks& memory, std::uint32_t size);

  explicit operator bool() const { return static_cast<bool>(block_); }
  [[nodiscard]] std::span<std::byte> bytes() const { return block_.bytes(); }

  // The word that begins at this byte; 0 when the block ends before.
  [[nodiscard]] std::uint32_t Word(std::size_t offset) const;
  [[nodiscard]] bool HoldsWord(std::size_t offset) const;
  void SetWord(std::size_t offset, std::uint32_t word) const;

 private:
  MemoryBlock block_;
};

// Lets `fill` fill a block, which begins with `size` bytes and is made as large as its second word
// says until that is enough. The first failing code of `fill`; line_error::kStructureTooSmall where
// it has not been enough for a few times, which a driver can keep up for ever; or
// line_error::kNoMemory, and the block is empty then.
template <typename Fill>
LineCode FillSizedBlock(MemoryBlocks& memory, std::uint32_t size, SizedBlock& block, Fill fill) {
  constexpr int kMostRounds = 5;
  for (int round = 0; round < kMostRounds; ++round) {
    block = {};  // before there is another of them
    block = SizedBlock(memory, size);
    if (!block) return line_error::kNoMemory;
    const LineCode code = fill(block.bytes());
    if (code != 0) return code;
    const std::uint32_t needed = block.Word(line_structure::kNeededSize);
    if (needed <= size) return 0;
    size = needed;
  }
  return line_error::kStructureTooSmall;
}

}  // namespace brantel
