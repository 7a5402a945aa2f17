#include "system/machine_name_win32.h"

#include <winsock2.h>
#include <windows.h>

#include "system/windows/registry_key_win32.h"
#include "text/text_end.h"

namespace brantel {

std::optional<std::string> SystemMachineName::TcpipParameter(const std::string& name,
                                                             std::size_t capacity) {
  RegistryHandle key;
  if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, R"(SYSTEM\CurrentControlSet\Services\Tcpip\Parameters)", 0,
                    KEY_READ, key.put()) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  std::string value(capacity, '\0');
  auto size = static_cast<DWORD>(capacity);
  if (RegQueryValueExA(key.get(), name.c_str(), nullptr, nullptr,
                       reinterpret_cast<BYTE*>(value.data()), &size) != ERROR_SUCCESS) {
    return std::nullopt;
  }
  return std::string(UpToNul(value));
}

std::optional<std::string> SystemMachineName::SocketsHostName() {
  std::string name(250, '\0');
  if (gethostname(name.data(), static_cast<int>(name.size())) != 0) return std::nullopt;
  return std::string(UpToNul(name));
}

}  // namespace brantel
