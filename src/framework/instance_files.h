#pragma once

#include <optional>
#include <string>

namespace brantel {

// The files that hold instances. Paths are ANSI text in the system's code page.
class InstanceFiles {
 public:
  virtual ~InstanceFiles() = default;

  // The whole content of an existing file, or nothing when it cannot be opened or read. Other
  // readers are let in meanwhile; a file that someone writes cannot be opened.
  virtual std::optional<std::string> Read(const std::string& path) = 0;
};

}  // namespace brantel
