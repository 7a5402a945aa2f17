#pragma once

#include <map>
#include <string>
#include <vector>

#include "framework/instance_files.h"

namespace brantel {

// Instance files in memory.
class FakeInstanceFiles final : public InstanceFiles {
 public:
  std::map<std::string, std::string> files;
  std::vector<std::string> reads;

  std::optional<std::string> Read(const std::string& path) override {
    reads.push_back(path);
    const auto file = files.find(path);
    if (file == files.end()) return std::nullopt;
    return file->second;
  }
};

}  // namespace brantel
