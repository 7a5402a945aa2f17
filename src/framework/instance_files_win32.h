#pragma once

#include "framework/instance_files.h"

namespace brantel {

// Instance files on disk. Where one cannot be had, GetLastError tells why.
class DiskInstanceFiles final : public InstanceFiles {
 public:
  std::optional<std::string> Read(const std::string& path) override;
  bool Write(const std::string& path, std::string_view content) override;
  bool Overwrite(const std::string& path, std::string_view content) override;
  bool Delete(const std::string& path) override;
  [[nodiscard]] bool Exists(const std::string& path) const override;
  [[nodiscard]] bool IsValidName(const std::string& name) const override;
  [[nodiscard]] bool SameName(const std::string& one, const std::string& other) const override;
};

}  // namespace brantel
