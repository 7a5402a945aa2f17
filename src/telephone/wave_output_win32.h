#pragma once

#include "telephone/wave_system.h"

namespace brantel {

class SystemWaveOutput final : public WaveOutput {
 public:
  WaveCode Query(std::uint16_t device_id, std::span<const std::byte> format) override;
  std::string ErrorText(WaveCode error) override;
  WaveCode Open(std::uint16_t device_id, std::span<const std::byte> format,
                std::unique_ptr<WaveDevice>& device) override;
};

}  // namespace brantel
