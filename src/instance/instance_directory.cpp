#include "instance/instance_directory.h"

#include <exception>

namespace brantel {
namespace {

// What `load` gives, or nothing when it throws.
template <typename Load>
std::optional<Instance> Try(Load load) {
  try {
    return load();
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

}  // namespace

std::optional<Instance> LoadInstance(InstanceFiles& files, const InstanceLayout& layout,
                                     const std::string& path) {
  const auto file = files.Open(path);
  if (!file) return std::nullopt;
  try {
    return DecodeInstance(layout, *file);
  } catch (const ReadFailure&) {
    return std::nullopt;
  }
}

std::optional<Instance> TryLoadInstance(InstanceFiles& files, const InstanceLayout& layout,
                                        const std::string& path) {
  return Try([&] { return LoadInstance(files, layout, path); });
}

std::optional<Instance> InstanceDirectory::TryLoad(const std::string& name) {
  return Try([&] { return LoadInstance(files_, layout_, PathOf(name)); });
}

bool InstanceDirectory::Save(const std::string& name, const Instance& instance) {
  return files_.Write(PathOf(name), EncodeInstance(layout_, instance));
}

bool InstanceDirectory::HoldsOwn(const std::string& name) const {
  const auto file = files_.Open(PathOf(name));
  if (!file) return false;
  try {
    return HasMagic(layout_, InstanceReader(*file).magic());
  } catch (const ReadFailure&) {
    return false;
  }
}

bool InstanceDirectory::AreOne(const std::string& one, const std::string& other) const {
  const auto stored = StoredName(one);
  return stored && stored == StoredName(other);
}

}  // namespace brantel
