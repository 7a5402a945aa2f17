#pragma once

#include <optional>
#include <string>

#include "description/instance_layout.h"
#include "instance/instance_codec.h"
#include "instance/instance_files.h"

namespace brantel {

// The instance whose values prefill new ones. It is an ordinary instance otherwise.
inline constexpr const char* kDefaultInstanceName = "Default";

// The instance of this layout's class in a file. Nothing when the file cannot be read or holds
// none.
std::optional<Instance> LoadInstance(InstanceFiles& files, const InstanceLayout& layout,
                                     const std::string& path);

// The same where want of memory is one more reason why there is none.
std::optional<Instance> TryLoadInstance(InstanceFiles& files, const InstanceLayout& layout,
                                        const std::string& path);

// The instances of one class in a directory that the host names on every call.
class InstanceDirectory {
 public:
  // All three must outlive the object.
  InstanceDirectory(InstanceFiles& files, const InstanceLayout& layout, std::string directory)
      : files_(files), layout_(layout), directory_(std::move(directory)) {}

  [[nodiscard]] std::string PathOf(const std::string& name) const {
    return directory_ + "\\" + name;
  }

  std::optional<Instance> TryLoad(const std::string& name);

  // False when the file cannot be created; what it held before is then whole.
  bool Save(const std::string& name, const Instance& instance);

  bool Delete(const std::string& name) { return files_.Delete(PathOf(name)); }
  bool Rename(const std::string& old_name, const std::string& new_name) {
    return files_.Rename(PathOf(old_name), PathOf(new_name));
  }

  // Whether a file of that name stands in the directory.
  [[nodiscard]] bool Holds(const std::string& name) const { return StoredName(name).has_value(); }

  // Whether one that can be read stands there and begins as this class's instances do.
  [[nodiscard]] bool HoldsOwn(const std::string& name) const;

  // Whether the names mean one file that stands in the directory.
  [[nodiscard]] bool AreOne(const std::string& one, const std::string& other) const;

  // The name by which the directory lists the file of that name.
  [[nodiscard]] std::optional<std::string> StoredName(const std::string& name) const {
    return files_.StoredName(PathOf(name));
  }

 private:
  InstanceFiles& files_;
  const InstanceLayout& layout_;
  std::string directory_;
};

}  // namespace brantel
