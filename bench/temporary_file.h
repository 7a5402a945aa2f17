#pragma once

#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <string>

namespace brantel {

// A file with this content that lives as long as the object.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::string& content) {
    const int file = mkstemp(path_.data());
    if (file < 0) std::abort();
    close(file);
    std::ofstream(path_, std::ios::binary) << content;
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() { unlink(path_.c_str()); }

  [[nodiscard]] const char* path() const { return path_.c_str(); }

 private:
  std::string path_ = "/tmp/brantel_bench_XXXXXX";
};

}  // namespace brantel
