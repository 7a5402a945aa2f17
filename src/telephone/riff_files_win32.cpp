#include "telephone/riff_files_win32.h"

#include <windows.h>
#include <mmsystem.h>

#include <limits>

namespace brantel {
namespace {

// Counts and offsets are signed for these functions, and so no file is larger.
constexpr std::uint64_t kLargestOffset = std::numeric_limits<LONG>::max();

FOURCC ToFourCharacters(const char (&name)[5]) {
  return mmioFOURCC(name[0], name[1], name[2], name[3]);
}

class SystemRiffFile final : public RiffFile {
 public:
  SystemRiffFile() = default;
  SystemRiffFile(const SystemRiffFile&) = delete;
  SystemRiffFile& operator=(const SystemRiffFile&) = delete;
  ~SystemRiffFile() override {
    if (file_ != nullptr) mmioClose(file_, 0);
  }

  // `path` may be written into.
  bool Open(std::string& path) {
    file_ = mmioOpenA(path.data(), nullptr, MMIO_READ | MMIO_ALLOCBUF);
    return file_ != nullptr;
  }

  bool DescendIntoForm(const char (&type)[5]) override {
    return Find(form_, nullptr, [wanted = ToFourCharacters(type)](const MMCKINFO& chunk) {
      return chunk.ckid == FOURCC_RIFF && chunk.fccType == wanted;
    });
  }

  std::optional<std::uint32_t> DescendIntoChunk(const char (&name)[5]) override {
    const bool found = Find(
        chunk_, &form_,
        [wanted = ToFourCharacters(name)](const MMCKINFO& chunk) { return chunk.ckid == wanted; });
    return found ? std::optional<std::uint32_t>(chunk_.cksize) : std::nullopt;
  }

  std::size_t Read(std::span<std::byte> bytes) override {
    if (bytes.size() > kLargestOffset) return 0;
    const LONG count =
        mmioRead(file_, reinterpret_cast<HPSTR>(bytes.data()), static_cast<LONG>(bytes.size()));
    return count < 0 ? 0 : static_cast<std::size_t>(count);
  }

  void Ascend() override { mmioAscend(file_, &chunk_, 0); }

 private:
  // Goes from chunk to chunk and into the first that is the wanted one. The system's own search
  // (MMIO_FINDRIFF, MMIO_FINDCHUNK) does the same but for a chunk whose size leads back to where it
  // begins: there it would stay for ever.
  template <typename IsWanted>
  bool Find(MMCKINFO& chunk, const MMCKINFO* parent, IsWanted is_wanted) {
    while (mmioDescend(file_, &chunk, parent, 0) == MMSYSERR_NOERROR) {
      if (is_wanted(chunk)) return true;
      if (!SkipTo(std::uint64_t{chunk.dwDataOffset} + chunk.cksize + chunk.cksize % 2)) break;
    }
    return false;
  }

  bool SkipTo(std::uint64_t offset) {
    if (offset > kLargestOffset) return false;
    const auto signed_offset = static_cast<LONG>(offset);
    return mmioSeek(file_, signed_offset, SEEK_SET) == signed_offset;
  }

  HMMIO file_ = nullptr;
  MMCKINFO form_{};
  MMCKINFO chunk_{};
};

}  // namespace

std::unique_ptr<RiffFile> SystemRiffFiles::Open(const std::string& path) {
  std::string writable_path = path;
  // Made before, so that nothing is open when there is no memory for it.
  auto file = std::make_unique<SystemRiffFile>();
  if (!file->Open(writable_path)) return nullptr;
  return file;
}

}  // namespace brantel
