#pragma once

#include <array>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace brantel {

// What is taken from the system's network library, by the names that it has there.
enum class NetworkEntry {
  kApiBufferFree,
  kServerEnum,
  kWkstaGetInfo,
  kMessageBufferSend,
  kMessageNameEnum,
};
inline constexpr std::array<const char*, 5> kNetworkEntryNames = {
    "NetApiBufferFree", "NetServerEnum", "NetWkstaGetInfo", "NetMessageBufferSend",
    "NetMessageNameEnum"};

// The system's network library, which stays loaded while this lives.
class NetworkLibrary {
 public:
  virtual ~NetworkLibrary() = default;

  // Libraries of other systems lack some.
  [[nodiscard]] virtual bool Has(NetworkEntry entry) const = 0;

  // Hands the buffer to the messenger service of this computer, which shows it wherever the message
  // name is known, and says whether that succeeded. Needs kMessageBufferSend.
  virtual bool SendMessageBuffer(const std::u16string& name, std::u16string_view buffer) = 0;

  // The names for which this computer takes messages. Needs kMessageNameEnum and kApiBufferFree.
  virtual std::vector<std::u16string> MessageNames() = 0;
};

enum class WindowsFamily { kWindowsNt, kWindows95, kOther };

// Where the network library comes from.
class NetworkSystem {
 public:
  virtual ~NetworkSystem() = default;

  virtual WindowsFamily Family() = 0;

  // Loads the library from the system's own directory, whatever has its name elsewhere. Null when
  // that cannot be done.
  virtual std::unique_ptr<NetworkLibrary> Load(std::string_view name) = 0;
};

}  // namespace brantel
