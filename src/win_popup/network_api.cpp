#include "win_popup/network_api.h"

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
  const auto binding = Bind();
  return binding ? binding->mode : LibraryMode::kNone;
}

std::shared_ptr<NetworkLibrary> NetworkApi::LibraryWith(NetworkEntry entry) {
  const auto binding = Bind();
  const bool has_entry =
      binding && binding->mode == LibraryMode::kWindowsNt && binding->library->Has(entry);
  if (!has_entry) return nullptr;
  return {binding, binding->library.get()};
}

void NetworkApi::Free() noexcept {
  binding_.store(nullptr);
}

std::shared_ptr<NetworkApi::Binding> NetworkApi::Bind() {
  if (auto binding = binding_.load()) return binding;
  const auto row = std::ranges::find(kLibraries, system_.Family(), &FamilyLibrary::family);
  if (row == kLibraries.end()) return nullptr;
  auto library = system_.Load(row->name);
  if (!library || !IsUsable(*library)) return nullptr;
  auto binding = std::make_shared<Binding>(Binding{row->mode, std::move(library)});
  binding_.store(binding);
  return binding;
}

}  // namespace brantel
