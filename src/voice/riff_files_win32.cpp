#include "voice/riff_files_win32.h"

#include <windows.h>
#include <mmsystem.h>

#include <limits>

namespace brantel {
namespace {

FOURCC ToFourCharacters(const char (&name)[5]) {
  return mmioFOURCC(name[0], name[1], name[2], name[3]);
}

class SystemRiffFile final : public RiffFile {
 public:
  explicit SystemRiffFile(HMMIO file) : file_(file) {}
  SystemRiffFile(const SystemRiffFile&) = delete;
  SystemRiffFile& operator=(const SystemRiffFile&) = delete;
  ~SystemRiffFile() override { mmioClose(file_, 0); }

  bool DescendIntoForm(const char (&type)[5]) override {
    form_.fccType = ToFourCharacters(type);
    return mmioDescend(file_, &form_, nullptr, MMIO_FINDRIFF) == MMSYSERR_NOERROR;
  }

  std::optional<std::uint32_t> DescendIntoChunk(const char (&name)[5]) override {
    chunk_ = {};
    chunk_.ckid = ToFourCharacters(name);
    if (mmioDescend(file_, &chunk_, &form_, MMIO_FINDCHUNK) != MMSYSERR_NOERROR) {
      return std::nullopt;
    }
    return chunk_.cksize;
  }

  std::size_t Read(std::span<std::byte> bytes) override {
    // Counts are signed here, and no file holds more.
    if (bytes.size() > static_cast<std::size_t>(std::numeric_limits<LONG>::max())) return 0;
    const LONG count =
        mmioRead(file_, reinterpret_cast<HPSTR>(bytes.data()), static_cast<LONG>(bytes.size()));
    return count < 0 ? 0 : static_cast<std::size_t>(count);
  }

  void Ascend() override { mmioAscend(file_, &chunk_, 0); }

 private:
  HMMIO file_;
  MMCKINFO form_{};
  MMCKINFO chunk_{};
};

}  // namespace

std::unique_ptr<RiffFile> SystemRiffFiles::Open(const std::string& path) {
  std::string writable_path = path;  // what the function takes may be written into
  HMMIO file = mmioOpenA(writable_path.data(), nullptr, MMIO_READ | MMIO_ALLOCBUF);
  if (file == nullptr) return nullptr;
  return std::make_unique<SystemRiffFile>(file);
}

}  // namespace brantel
