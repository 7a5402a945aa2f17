#pragma once

#include <algorithm>
#include <cstddef>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "instance/instance_files.h"
#include "instance/instance_name.h"

namespace brantel {

// How the file system orders names: letter by letter in upper case, in code page 1252. Nothing else
// makes two names one: neither that ß is read as ss, nor that a soft hyphen is not seen.
struct FileNameOrder {
  bool operator()(const std::string& one, const std::string& other) const {
    return std::ranges::lexicographical_compare(one, other, {}, ToUpper, ToUpper);
  }

 private:
  static int ToUpper(char c) {
    const int letter = static_cast<unsigned char>(c);
    if (letter == 0xFF) return 0x9F;
    if (letter == 0x9A || letter == 0x9C || letter == 0x9E) return letter - 0x10;
    const bool is_lower = (letter >= 'a' && letter <= 'z') || (letter >= 0xE0 && letter != 0xF7);
    return is_lower ? letter - 0x20 : letter;
  }
};

// Instance files in memory, by paths of code page 1252. As on disk, a file is found by its name in
// any letter case and by its short name, keeps its own name when it is written anew, and lets
// nobody change it while it is read.
class FakeInstanceFiles final : public InstanceFiles {
 public:
  using Files = std::map<std::string, std::string, FileNameOrder>;
  using Paths = std::set<std::string, FileNameOrder>;

  Files files;
  // The paths of files by further paths that lead to them.
  std::map<std::string, std::string, FileNameOrder> short_paths;
  // Files that somebody else holds: neither read nor written nor deleted nor renamed.
  Paths held;
  // Files of which only the first half can be read.
  Paths damaged;
  // What was done to which path, in order: "read p", "write p", "overwrite p", "delete p",
  // "rename p to q".
  std::vector<std::string> calls;
  // How many bytes were read in all, and in how many reads.
  std::size_t bytes_read = 0;
  std::size_t reads = 0;

  std::unique_ptr<ByteSource> Open(const std::string& path) override {
    calls.push_back("read " + path);
    const auto file = files.find(Resolved(path));
    if (file == files.end() || held.contains(file->first)) return nullptr;
    return std::make_unique<OpenFile>(*this, *file);
  }

  bool Write(const std::string& path, std::string_view content) override {
    calls.push_back("write " + path);
    if (IsBusy(path)) return false;
    files[Resolved(path)] = content;
    return true;
  }

  bool Overwrite(const std::string& path, std::string_view content) override {
    calls.push_back("overwrite " + path);
    if (IsBusy(path) || !files.contains(Resolved(path))) return false;
    files[Resolved(path)] = content;
    return true;
  }

  bool Delete(const std::string& path) override {
    calls.push_back("delete " + path);
    return !IsBusy(path) && files.erase(Resolved(path)) != 0;
  }

  bool Rename(const std::string& path, const std::string& new_path) override {
    calls.push_back("rename " + path + " to " + new_path);
    const auto file = files.find(Resolved(path));
    const auto other = files.find(Resolved(new_path));
    if (file == files.end() || IsBusy(path) || (other != files.end() && other != file)) {
      return false;
    }
    auto node = files.extract(file);
    node.key() = new_path;
    files.insert(std::move(node));
    return true;
  }

  [[nodiscard]] bool Exists(const std::string& path) const override {
    return files.contains(Resolved(path));
  }

  [[nodiscard]] std::optional<std::string> StoredName(const std::string& path) const override {
    const auto file = files.find(Resolved(path));
    if (file == files.end()) return std::nullopt;
    return file->first.substr(file->first.rfind('\\') + 1);
  }

  [[nodiscard]] bool IsValidName(const std::string& name) const override {
    std::u16string wide;
    // Where the code page differs from Unicode there is nothing that counts here.
    for (const char c : name)
      wide.push_back(static_cast<unsigned char>(c));
    return IsValidInstanceName(wide);
  }

 private:
  class OpenFile final : public ByteSource {
   public:
    OpenFile(FakeInstanceFiles& owner, const Files::value_type& file)
        : owner_(owner),
          reading_(owner.open_files_.insert(file.first)),
          rest_(file.second),
          is_damaged_(owner.damaged.contains(file.first)) {
      if (is_damaged_) rest_ = rest_.substr(0, rest_.size() / 2);
    }
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    ~OpenFile() override { owner_.open_files_.erase(reading_); }

    std::size_t Read(std::span<char> buffer) override {
      if (is_damaged_ && rest_.empty()) throw ReadFailure(23);
      const std::size_t count = rest_.copy(buffer.data(), buffer.size());
      rest_.remove_prefix(count);
      owner_.bytes_read += count;
      ++owner_.reads;
      return count;
    }

   private:
    FakeInstanceFiles& owner_;
    const std::multiset<std::string, FileNameOrder>::iterator reading_;
    std::string_view rest_;
    const bool is_damaged_;
  };

  [[nodiscard]] const std::string& Resolved(const std::string& path) const {
    const auto short_path = short_paths.find(path);
    return short_path == short_paths.end() ? path : short_path->second;
  }

  [[nodiscard]] bool IsBusy(const std::string& path) const {
    return held.contains(Resolved(path)) || open_files_.contains(Resolved(path));
  }

  std::multiset<std::string, FileNameOrder> open_files_;
};

}  // namespace brantel
