// A network of domains, servers and their shares that are nowhere: a network provider, which the
// system asks when a program browses the network. docs/simulators.md tells how to install it, and
// by which environment variables it is told what is in the network.
#include <windows.h>

extern "C" {
#include <npapi.h>  // does not say itself that it is C
}

#include <cstring>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "sim/messenger/environment_win32.h"

namespace brantel::sim {
namespace {

constexpr const wchar_t* kProvider = L"Simulated Network";
constexpr const wchar_t* kUsualNetwork = L"OPS PC1 PC2;SALES PC3";

struct Place {
  DWORD display_type;
  std::wstring name;
};

// What a word of the network's description stands for. A mark in front of it tells its kind.
Place PlaceOf(std::wstring_view word, DWORD kind_without_mark) {
  switch (word.front()) {
    case L'*':
      return {RESOURCEDISPLAYTYPE_DOMAIN, std::wstring(word.substr(1))};
    case L'+':
      return {RESOURCEDISPLAYTYPE_NETWORK, std::wstring(word.substr(1))};
    default:
      return {kind_without_mark, std::wstring(word)};
  }
}

// The domains of the network when `container` is empty, or what is in a domain or on a server.
std::vector<Place> PlacesIn(std::wstring_view container) {
  std::vector<Place> places;
  if (container.starts_with(L"\\\\")) {
    places.push_back({RESOURCEDISPLAYTYPE_SHARE, std::wstring(container) + L"\\public"});
    return places;
  }
  Split(Setting(L"NEIGHBOURHOOD", kUsualNetwork), L';', [&](std::wstring_view description) {
    std::wstring domain;
    Split(description, L' ', [&](std::wstring_view word) {
      if (domain.empty()) {
        const Place place = PlaceOf(word, RESOURCEDISPLAYTYPE_DOMAIN);
        domain = place.name;
        if (container.empty()) places.push_back(place);
      } else if (domain == container) {
        Place place = PlaceOf(word, RESOURCEDISPLAYTYPE_SERVER);
        if (place.display_type == RESOURCEDISPLAYTYPE_SERVER) place.name.insert(0, L"\\\\");
        places.push_back(place);
      }
    });
  });
  return places;
}

// Waits until the network has an answer: as long as it is told to, and until somebody who holds the
// semaphore that it is told of lets one answer through.
void AwaitAnswer() {
  Sleep(NumberSetting(L"NEIGHBOURHOOD_DELAY"));
  const std::wstring gate_name = Setting(L"NEIGHBOURHOOD_GATE");
  if (gate_name.empty()) return;
  HANDLE gate = OpenSemaphoreW(SYNCHRONIZE, FALSE, gate_name.c_str());
  if (gate == nullptr) return;
  const std::wstring arrivals_name = gate_name + L" reached";
  if (HANDLE arrivals = OpenSemaphoreW(SEMAPHORE_MODIFY_STATE, FALSE, arrivals_name.c_str())) {
    ReleaseSemaphore(arrivals, 1, nullptr);
    CloseHandle(arrivals);
  }
  WaitForSingleObject(gate, INFINITE);
  CloseHandle(gate);
}

// An enumeration that somebody has open.
struct Enumeration {
  std::vector<Place> places;
  std::size_t next = 0;
};

// A caller's buffer: entries from its beginning on, their texts from its end.
class EntryWriter {
 public:
  EntryWriter(void* buffer, DWORD size)
      : entry_(static_cast<NETRESOURCEW*>(buffer)),
        text_(reinterpret_cast<wchar_t*>(static_cast<BYTE*>(buffer) + size / 2 * 2)) {}

  // False when it does not fit.
  bool Write(const Place& place) {
    const std::size_t needed =
        sizeof(NETRESOURCEW) + (place.name.size() + std::wcslen(kProvider) + 2) * sizeof(wchar_t);
    const auto room = reinterpret_cast<BYTE*>(text_) - reinterpret_cast<BYTE*>(entry_);
    if (room < static_cast<std::ptrdiff_t>(needed)) return false;
    const bool is_share = place.display_type == RESOURCEDISPLAYTYPE_SHARE;
    *entry_ = {.dwScope = RESOURCE_GLOBALNET,
               .dwType = RESOURCETYPE_DISK,
               .dwDisplayType = place.display_type,
               .dwUsage = is_share ? static_cast<DWORD>(RESOURCEUSAGE_CONNECTABLE)
                                   : static_cast<DWORD>(RESOURCEUSAGE_CONTAINER),
               .lpLocalName = nullptr,
               .lpRemoteName = WriteText(place.name),
               .lpComment = nullptr,
               .lpProvider = WriteText(kProvider)};
    ++entry_;
    return true;
  }

 private:
  wchar_t* WriteText(const std::wstring& text) {
    text_ -= text.size() + 1;
    return std::wmemcpy(text_, text.c_str(), text.size() + 1);
  }

  NETRESOURCEW* entry_;
  wchar_t* text_;
};

}  // namespace
}  // namespace brantel::sim

// The interface of network providers, with its types.
// NOLINTBEGIN(misc-use-internal-linkage,readability-non-const-parameter,readability-inconsistent-declaration-parameter-name)
extern "C" {

DWORD WINAPI NPGetCaps(DWORD index) {
  switch (index) {
    case WNNC_SPEC_VERSION:
      return WNNC_SPEC_VERSION51;
    case WNNC_NET_TYPE:
      return 0x00FF0000;    // one that is nobody's
    case WNNC_ENUMERATION:  // of the whole network
    case WNNC_START:        // it has started
      return 1;
    default:
      return 0;
  }
}

DWORD WINAPI NPOpenEnum(DWORD scope, DWORD /*type*/, DWORD /*usage*/, LPNETRESOURCEW container,
                        LPHANDLE enumeration) {
  using namespace brantel::sim;
  if (scope != RESOURCE_GLOBALNET) return WN_NOT_SUPPORTED;
  const bool is_root = container == nullptr || container->lpRemoteName == nullptr;
  auto opened = std::make_unique<Enumeration>();
  opened->places = PlacesIn(is_root ? L"" : container->lpRemoteName);
  *enumeration = opened.release();
  return WN_SUCCESS;
}

DWORD WINAPI NPEnumResource(HANDLE enumeration, LPDWORD count, LPVOID buffer, LPDWORD size) {
  using namespace brantel::sim;
  AwaitAnswer();
  auto& open = *static_cast<Enumeration*>(enumeration);
  if (open.next == open.places.size()) return WN_NO_MORE_ENTRIES;
  EntryWriter writer(buffer, *size);
  DWORD written = 0;
  while (written < *count && open.next < open.places.size() &&
         writer.Write(open.places[open.next])) {
    ++written;
    ++open.next;
  }
  *count = written;
  return written == 0 ? WN_MORE_DATA : WN_SUCCESS;
}

DWORD WINAPI NPCloseEnum(HANDLE enumeration) {
  delete static_cast<brantel::sim::Enumeration*>(enumeration);
  return WN_SUCCESS;
}

}  // extern "C"
// NOLINTEND(misc-use-internal-linkage,readability-non-const-parameter,readability-inconsistent-declaration-parameter-name)
