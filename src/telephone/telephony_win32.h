#pragma once

#include "telephone/telephony.h"

namespace brantel {

// Telephony as TAPI32.DLL of the system directory has it. The library is loaded for the first call
// and stays until the process ends, each function is looked up for its first call; what is missing
// then is missing for ever.
class SystemTelephony final : public Telephony {
 public:
  LineCode Initialize(LineMessageReceiver& receiver, std::uint32_t& application,
                      std::uint32_t& device_count) override;
  LineCode NegotiateVersion(std::uint32_t application, std::uint32_t device,
                            const VersionRange& range, std::uint32_t& version) override;
  LineCode GetCapabilities(std::uint32_t application, std::uint32_t device, std::uint32_t version,
                           std::span<std::byte> capabilities) override;
  LineCode Open(std::uint32_t application, std::uint32_t device, std::uint32_t version,
                std::uint32_t media_mode, std::span<const std::byte> call_parameters,
                std::uint32_t& line) override;
  LineCode MakeCall(std::uint32_t line, const std::string& number,
                    std::span<const std::byte> call_parameters, std::uint32_t& call) override;
  LineCode GetId(std::uint32_t line, std::uint32_t call, CallSelect select,
                 const char* device_class, std::span<std::byte> id) override;
  LineCode MonitorDigits(std::uint32_t call, std::uint32_t digit_mode) override;
  LineCode Close(std::uint32_t line) override;
  LineCode Shutdown(std::uint32_t application) override;
};

}  // namespace brantel
