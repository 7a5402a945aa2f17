#include "tests/far_ends/messenger.h"

#include <lm.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <utility>

#include "tests/far_ends/deliveries.h"
#include "tests/module/utf8_text.h"

namespace brantel {
namespace {

constexpr const char* kMessengerLibrary = "netapi32.dll";
constexpr std::wstring_view kMachineName = L"WATCH";

NET_API_STATUS WINAPI TakeMessage(LPCWSTR, LPCWSTR name, LPCWSTR, BYTE* buffer, DWORD size) {
  constexpr std::size_t kMostShown = 2000;
  const std::wstring text(reinterpret_cast<const wchar_t*>(buffer),
                          std::min<std::size_t>(size / sizeof(wchar_t), kMostShown));
  NoteDelivery(ToUtf8(name) + ": " + ToUtf8(text));
  // The library may write there, and may write as far as it was told.
  std::memset(buffer, 0xEE, size);
  return NERR_Success;
}

NET_API_STATUS WINAPI ListNames(LPCWSTR, DWORD, BYTE** buffer, DWORD, DWORD* count, DWORD* total,
                                DWORD*) {
  struct Names {
    MSG_INFO_0 first;
    std::array<wchar_t, kMachineName.size() + 1> text;
  };
  auto* const names = static_cast<Names*>(LocalAlloc(LPTR, sizeof(Names)));
  kMachineName.copy(names->text.data(), kMachineName.size());
  names->first.msgi0_name = names->text.data();
  *buffer = reinterpret_cast<BYTE*>(names);
  *count = *total = 1;
  return NERR_Success;
}

// The module asks whether there is such a function, and calls it no more.
NET_API_STATUS WINAPI AnswerNobody() {
  return ERROR_NOT_SUPPORTED;
}

NET_API_STATUS WINAPI FreeNetworkBuffer(void* buffer) {
  LocalFree(buffer);
  return NERR_Success;
}

template <typename Function>
LibraryEntry MessengerEntry(std::string_view name, Function* function) {
  return {kMessengerLibrary, name, reinterpret_cast<void*>(function)};
}

// An open level: what it has left to say.
struct NetworkLevel {
  bool is_domain = false;
  bool is_over = false;
};

// By their handles, events of the system's, so that one that is not closed is found.
std::mutex levels_mutex;
std::map<HANDLE, NetworkLevel> levels;

SmallNetwork* small_network = nullptr;

char domain_name[] = "OPS";
char first_server[] = "\\\\PC1";
char second_server[] = "\\\\PC2";

NETRESOURCEA Resource(DWORD display_type, DWORD usage, char* name) {
  NETRESOURCEA resource{};
  resource.dwDisplayType = display_type;
  resource.dwUsage = usage;
  resource.lpRemoteName = name;
  return resource;
}

}  // namespace

std::vector<LibraryEntry> MessengerEntries() {
  return {MessengerEntry("NetMessageBufferSend", &TakeMessage),
          MessengerEntry("NetMessageNameEnum", &ListNames),
          MessengerEntry("NetApiBufferFree", &FreeNetworkBuffer),
          MessengerEntry("NetServerEnum", &AnswerNobody),
          MessengerEntry("NetWkstaGetInfo", &AnswerNobody)};
}

SmallNetwork::SmallNetwork(HMODULE module)
    : open_(module, "WNetOpenEnumA", reinterpret_cast<void*>(&OnOpenEnum)),
      next_(module, "WNetEnumResourceA", reinterpret_cast<void*>(&OnEnumResource)),
      close_(module, "WNetCloseEnum", reinterpret_cast<void*>(&OnCloseEnum)) {
  small_network = this;
}

SmallNetwork::~SmallNetwork() {
  small_network = nullptr;
}

DWORD SmallNetwork::OnOpenEnum(DWORD, DWORD, DWORD, NETRESOURCEA* container, HANDLE* level) {
  *level = CreateEventW(nullptr, FALSE, FALSE, nullptr);
  const bool is_domain = container != nullptr && container->lpRemoteName != nullptr;
  const std::lock_guard lock(levels_mutex);
  levels[*level] = {is_domain, false};
  ++small_network->open_levels_;
  return NO_ERROR;
}

DWORD SmallNetwork::OnEnumResource(HANDLE level, DWORD* count, void* buffer, DWORD*) {
  const std::lock_guard lock(levels_mutex);
  NetworkLevel& open = levels.at(level);
  if (std::exchange(open.is_over, true)) return ERROR_NO_MORE_ITEMS;
  auto* const resources = static_cast<NETRESOURCEA*>(buffer);
  if (open.is_domain) {
    resources[0] = Resource(RESOURCEDISPLAYTYPE_SERVER, 0, first_server);
    resources[1] = Resource(RESOURCEDISPLAYTYPE_SERVER, 0, second_server);
    *count = 2;
  } else {
    resources[0] = Resource(RESOURCEDISPLAYTYPE_DOMAIN, RESOURCEUSAGE_CONTAINER, domain_name);
    *count = 1;
  }
  return NO_ERROR;
}

DWORD SmallNetwork::OnCloseEnum(HANDLE level) {
  {
    const std::lock_guard lock(levels_mutex);
    levels.erase(level);
  }
  CloseHandle(level);
  --small_network->open_levels_;
  return NO_ERROR;
}

}  // namespace brantel
