#include "popup/network_api.h"

#include <algorithm>
#include <array>

namespace brantel {
namespace {

struct FamilyLibrary {
  WindowsFamily family;
  LibraryMode mode;
  std::string_view name;
};

constexpr std::array<FamilyLibrary, 2> kLibraries = {{
    {WindowsFamily::kWindowsNt, LibraryMode::kWindowsNt, "netapi32.dll"},
    {WindowsFamily::kWindows95, LibraryMode::kWindows95, "svrapi.dll"},
}};

// The other entries may be missing; who wants one of them asks for it.
bool IsUsable(const NetworkLibrary& library) {
  return library.Has(NetworkEntry::kApiBufferFree) && library.Has(NetworkEntry::kWkstaGetInfo);
}

}  // namespace

LibraryMode NetworkApi::LoadNetworkApi() {
  if (mode_ != LibraryMode::kNone) return mode_;
  const auto row = std::ranges::find(kLibraries, system_.Family(), &FamilyLibrary::family);
  if (row == kLibraries.end()) return mode_;
  auto library = system_.Load(row->name);
  if (!library || !IsUsable(*library)) return mode_;
  library_ = std::move(library);
  mode_ = row->mode;
  return mode_;
}

std::shared_ptr<NetworkLibrary> NetworkApi::LibraryWith(NetworkEntry entry) {
  if (LoadNetworkApi() != LibraryMode::kWindowsNt || !library_->Has(entry)) return nullptr;
  return library_;
}

void NetworkApi::Free() noexcept {
  library_.reset();
  mode_ = LibraryMode::kNone;
}

}  // namespace brantel
