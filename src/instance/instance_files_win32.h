#pragma once

#include "instance/instance_files.h"

namespace brantel {

// Instance files on disk. Where one cannot be had, GetLastError tells why.
class DiskInstanceFiles final : public InstanceFiles {
 public:
  std::unique_ptr<ByteSource> Open(const std::string& path) override;
  bool Write(const std::string& path, std::string_view content) override;
  bool Overwrite(const std::string& path, std::string_view content) override;
  bool Delete(const std::string& path) override;
  bool Rename(const std::string& old_path, const std::string& new_path) override;
  [[nodiscard]] bool Exists(const std::string& path) const override;
  [[nodiscard]] std::optional<std::string> StoredName(const std::string& path) const override;
  [[nodiscard]] bool IsValidName(const std::string& name) const override;
};

// Stateless, so that all use this one.
inline constinit DiskInstanceFiles disk_instance_files;

}  // namespace brantel
