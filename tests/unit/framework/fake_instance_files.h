#pragma once

#include <algorithm>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "framework/instance_files.h"
#include "framework/instance_name.h"

namespace brantel {

// Instance files in memory.
class FakeInstanceFiles final : public InstanceFiles {
 public:
  std::map<std::string, std::string> files;
  // Files that somebody else holds: neither read nor written nor deleted.
  std::set<std::string> held;
  // Whether SameName ignores the case of ASCII letters.
  bool ignores_letter_case = false;
  // What was done to which path, in order: "read p", "write p", "overwrite p", "delete p".
  std::vector<std::string> calls;

  std::optional<std::string> Read(const std::string& path) override {
    calls.push_back("read " + path);
    const auto file = files.find(path);
    if (file == files.end() || held.contains(path)) return std::nullopt;
    return file->second;
  }

  bool Write(const std::string& path, std::string_view content) override {
    calls.push_back("write " + path);
    if (held.contains(path)) return false;
    files[path] = content;
    return true;
  }

  bool Overwrite(const std::string& path, std::string_view content) override {
    calls.push_back("overwrite " + path);
    if (held.contains(path) || !files.contains(path)) return false;
    files[path] = content;
    return true;
  }

  bool Delete(const std::string& path) override {
    calls.push_back("delete " + path);
    return !held.contains(path) && files.erase(path) != 0;
  }

  [[nodiscard]] bool Exists(const std::string& path) const override { return files.contains(path); }

  [[nodiscard]] bool IsValidName(const std::string& name) const override {
    return IsValidInstanceName(name, [](char) { return false; });
  }

  [[nodiscard]] bool SameName(const std::string& one, const std::string& other) const override {
    return ignores_letter_case ? std::ranges::equal(one, other, {}, ToLower, ToLower)
                               : one == other;
  }

 private:
  static char ToLower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  }
};

}  // namespace brantel
