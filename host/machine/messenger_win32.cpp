#include "host/machine/messenger_win32.h"

#include <windows.h>

#include <memory>
#include <type_traits>

#include "system/windows/system_library_win32.h"

namespace brantel::host {
namespace {

struct ServiceCloser {
  void operator()(SC_HANDLE handle) const { CloseServiceHandle(handle); }
};
using Service = std::unique_ptr<std::remove_pointer_t<SC_HANDLE>, ServiceCloser>;

bool HasFunction() {
  const SystemLibrary library("netapi32.dll");
  if (!library) return false;
  void (*function)() = nullptr;
  library.Find("NetMessageBufferSend", function);
  return function != nullptr;
}

}  // namespace

MessengerState StateOfMessenger() {
  if (!HasFunction()) return MessengerState::kNoLibrary;
  const Service manager(OpenSCManagerW(nullptr, nullptr, SC_MANAGER_CONNECT));
  if (!manager) return MessengerState::kNotInstalled;
  const Service messenger(OpenServiceW(manager.get(), L"Messenger", SERVICE_QUERY_STATUS));
  if (!messenger) return MessengerState::kNotInstalled;
  SERVICE_STATUS status{};
  const bool runs = QueryServiceStatus(messenger.get(), &status) != FALSE &&
                    status.dwCurrentState == SERVICE_RUNNING;
  return runs ? MessengerState::kRuns : MessengerState::kStopped;
}

}  // namespace brantel::host
