#pragma once

#include "framework/instance_files.h"

namespace brantel {

// Instance files on disk.
class DiskInstanceFiles final : public InstanceFiles {
 public:
  std::optional<std::string> Read(const std::string& path) override;
};

}  // namespace brantel
