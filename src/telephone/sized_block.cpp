#include "telephone/sized_block.h"

#include <cstring>

namespace brantel {

SizedBlock::SizedBlock(MemoryBlocks& memory, std::uint32_t size) : block_(memory, size) {
  if (block_) SetWord(0, size);
}

bool SizedBlock::HoldsWord(std::size_t offset) const {
  const std::size_t size = bytes().size();
  return size >= sizeof(std::uint32_t) && offset <= size - sizeof(std::uint32_t);
}

std::uint32_t SizedBlock::Word(std::size_t offset) const {
  std::uint32_t word = 0;
  if (HoldsWord(offset)) std::memcpy(&word, bytes().subspan(offset).data(), sizeof word);
  return word;
}

void SizedBlock::SetWord(std::size_t offset, std::uint32_t word) const {
  if (HoldsWord(offset)) std::memcpy(bytes().subspan(offset).data(), &word, sizeof word);
}

}  // namespace brantel
