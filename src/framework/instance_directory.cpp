#include "framework/instance_directory.h"

namespace brantel {

std::optional<Instance> InstanceDirectory::Load(const std::string& name) {
  const auto file = files_.Read(PathOf(name));
  return file ? DecodeInstance(layout_, *file) : std::nullopt;
}

bool InstanceDirectory::Save(const std::string& name, const Instance& instance) {
  return files_.Write(PathOf(name), EncodeInstance(layout_, instance));
}

}  // namespace brantel
