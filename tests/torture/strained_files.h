#pragma once

#include <memory>

#include "tests/torture/faults.h"
#include "tests/unit/allocation_counter.h"
#include "tests/unit/instance/fake_instance_files.h"

namespace brantel {

// Instance files as a disk has them: it wants memory where the system's own does, and its calls
// may fail.
class StrainedFiles final : public InstanceFiles {
 public:
  explicit StrainedFiles(Faults& faults) : faults_(faults) {}

  FakeInstanceFiles disk;
  int open_files = 0;

  std::unique_ptr<ByteSource> Open(const std::string& path) override {
    std::unique_ptr<ByteSource> file;
    if (faults_.Strike()) return file;
    {
      const MemoryOfOthers others;
      file = disk.Open(path);
    }
    if (!file) return file;
    return std::make_unique<OpenFile>(*this, std::move(file));
  }

  bool Write(const std::string& path, std::string_view content) override {
    const MemoryOfOthers others;
    return !faults_.Strike() && disk.Write(path, content);
  }
  bool Overwrite(const std::string& path, std::string_view content) override {
    const MemoryOfOthers others;
    return !faults_.Strike() && disk.Overwrite(path, content);
  }
  bool Delete(const std::string& path) override {
    const MemoryOfOthers others;
    return !faults_.Strike() && disk.Delete(path);
  }
  bool Rename(const std::string& path, const std::string& new_path) override {
    const MemoryOfOthers others;
    return !faults_.Strike() && disk.Rename(path, new_path);
  }

  [[nodiscard]] bool Exists(const std::string& path) const override {
    return !faults_.Strike() && disk.Exists(path);
  }
  [[nodiscard]] std::optional<std::string> StoredName(const std::string& path) const override {
    if (faults_.Strike()) return std::nullopt;
    return disk.StoredName(path);
  }
  [[nodiscard]] bool IsValidName(const std::string& name) const override {
    return disk.IsValidName(name);
  }

 private:
  class OpenFile final : public ByteSource {
   public:
    OpenFile(StrainedFiles& files, std::unique_ptr<ByteSource> file)
        : files_(files), file_(std::move(file)) {
      ++files_.open_files;
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile() override { --files_.open_files; }

    std::size_t Read(std::span<char> buffer) override {
      // A sector that cannot be read, a network that is gone, a lock.
      static constexpr std::array<std::uint32_t, 3> kErrors = {23, 64, 33};
      if (files_.faults_.Strike()) throw ReadFailure(files_.faults_.Choose(kErrors));
      return file_->Read(buffer);
    }

   private:
    StrainedFiles& files_;
    std::unique_ptr<ByteSource> file_;
  };

  Faults& faults_;
};

}  // namespace brantel
