#pragma once

#include "telephone/wave_system.h"

namespace brantel {

class SystemRiffFiles final : public RiffFiles {
 public:
  std::unique_ptr<RiffFile> Open(const std::string& path) override;
};

}  // namespace brantel
