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
  virtual std::byte* Allocate(std::size_t size) noexcept = 0;

  // Frees what Allocate has given.
  virtual void Free(std::byte* memory) noexcept = 0;
};

struct FreeMemory {
  MemoryBlocks* source = nullptr;
  void operator()(std::byte* memory) const noexcept { source->Free(memory); }
};

// A piece of such memory. Empty when there was not enough.
class MemoryBlock {
 public:
  MemoryBlock() = default;
  // `source` must outlive the block.
  MemoryBlock(MemoryBlocks& source, std::size_t size)
      : memory_(source.Allocate(size), FreeMemory{&source}), size_(size) {}

  explicit operator bool() const { return memory_ != nullptr; }
  [[nodiscard]] std::span<std::byte> bytes() const { return {memory_.get(), memory_ ? size_ : 0}; }

 private:
  std::unique_ptr<std::byte, FreeMemory> memory_;
  std::size_t size_ = 0;
};

class SystemMemoryBlocks final : public MemoryBlocks {
 public:
  std::byte* Allocate(std::size_t size) noexcept override;
  void Free(std::byte* memory) noexcept override;
};

}  // namespace brantel
