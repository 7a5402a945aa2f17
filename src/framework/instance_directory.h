#pragma once

#include <optional>
#include <string>

#include "framework/instance_codec.h"
#include "framework/instance_files.h"
#include "framework/instance_layout.h"

namespace brantel {

// The instance whose values prefill new ones. It is an ordinary instance otherwise.
inline constexpr const char* kDefaultInstanceName = "Default";

// The instances of one class in a directory that the host names on every call.
class InstanceDirectory {
 public:
  // All three must outlive the object.
  InstanceDirectory(InstanceFiles& files, const InstanceLayout& layout, std::string directory)
      : files_(files), layout_(layout), directory_(std::move(directory)) {}

  [[nodiscard]] std::string PathOf(const std::string& name) const {
    return directory_ + "\\" + name;
  }

  std::optional<Instance> Load(const std::string& name);

  // False when the file cannot be created; what it held before is then whole.
  bool Save(const std::string& name, const Instance& instance);

  bool Delete(const std::string& name) { return files_.Delete(PathOf(name)); }

  // Whether a file of that name stands in the directory.
  [[nodiscard]] bool Holds(const std::string& name) const { return files_.Exists(PathOf(name)); }

 private:
  InstanceFiles& files_;
  const InstanceLayout& layout_;
  std::string directory_;
};

}  // namespace brantel
