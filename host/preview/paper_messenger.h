#pragma once

#include <memory>
#include <string_view>

#include "host/preview/preview_part.h"
#include "host/preview/text_conversions.h"
#include "win_popup/network_library.h"

namespace brantel::host {

// A system whose messenger service shows every message. Each becomes a part. No library is loaded.
class PaperMessenger final : public NetworkSystem {
 public:
  // Both must outlive the object.
  PaperMessenger(const TextConversions& texts, PreviewParts& parts)
      : texts_(texts), parts_(parts) {}

  WindowsFamily Family() override { return WindowsFamily::kWindowsNt; }
  std::unique_ptr<NetworkLibrary> Load(std::string_view name) override;

 private:
  class Library;

  const TextConversions& texts_;
  PreviewParts& parts_;
};

}  // namespace brantel::host
