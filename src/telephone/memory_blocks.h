#pragma once

#include <cstddef>
#include <memory>
#include <span>

namespace brantel {

// Where memory comes from whose size somebody else has decided, a driver or a file.
class MemoryBlocks {
 public:
  virtual ~MemoryBlocks() = default;

  // Filled with zeros. Null, and no exception, when memory runs out.
  virtual std::byte* Take(std::size_t size) noexcept = 0;

  // Takes back what Take has given.
  virtual void GiveBack(std::byte* memory) noexcept = 0;
};

struct ReturnMemory {
  MemoryBlocks* source = nullptr;
  void operator()(std::byte* memory) const noexcept { source->GiveBack(memory); }
};

// A piece of such memory. Empty when there was not enough.
class MemoryBlock {
 public:
  MemoryBlock() = default;
  // `source` must outlive the block.
  MemoryBlock(MemoryBlocks& source, std::size_t size)
      : memory_(source.Take(size), ReturnMemory{&source}), size_(size) {}

  explicit operator bool() const { return memory_ != nullptr; }
  [[nodiscard]] std::span<std::byte> bytes() const { return {memory_.get(), memory_ ? size_ : 0}; }

 private:
  std::unique_ptr<std::byte, ReturnMemory> memory_;
  std::size_t size_ = 0;
};

class SystemMemoryBlocks final : public MemoryBlocks {
 public:
  std::byte* Take(std::size_t size) noexcept override;
  void GiveBack(std::byte* memory) noexcept override;
};

}  // namespace brantel
