#include "win_popup/network_neighbourhood_win32.h"

#include <windows.h>
#include <winnetwk.h>

#include <span>

namespace brantel {
namespace {

constexpr DWORD kUsage =
    RESOURCEUSAGE_CONNECTABLE | RESOURCEUSAGE_CONTAINER | RESOURCEUSAGE_ATTACHED;
static_assert(kUsage == 19);
static_assert(network_resource::kDomain == RESOURCEDISPLAYTYPE_DOMAIN &&
              network_resource::kServer == RESOURCEDISPLAYTYPE_SERVER &&
              network_resource::kContainer == RESOURCEUSAGE_CONTAINER);

constexpr DWORD kBufferSize = 16384;
constexpr DWORD kAsManyAsFit = 0xFFFFFFFF;

std::optional<std::string> TextOf(const char* text) {
  return text == nullptr ? std::nullopt : std::optional<std::string>(text);
}

// Lives as long as the text. The system's structure has no const, though nothing is written.
char* PointerTo(std::optional<std::string>& text) {
  return text ? text->data() : nullptr;
}

NetworkResource FromSystem(const NETRESOURCEA& resource) {
  return {.scope = resource.dwScope,
          .type = resource.dwType,
          .display_type = resource.dwDisplayType,
          .usage = resource.dwUsage,
          .local_name = TextOf(resource.lpLocalName),
          .remote_name = TextOf(resource.lpRemoteName),
          .comment = TextOf(resource.lpComment),
          .provider = TextOf(resource.lpProvider)};
}

// Points into the resource.
NETRESOURCEA ToSystem(NetworkResource& resource) {
  return {.dwScope = resource.scope,
          .dwType = resource.type,
          .dwDisplayType = resource.display_type,
          .dwUsage = resource.usage,
          .lpLocalName = PointerTo(resource.local_name),
          .lpRemoteName = PointerTo(resource.remote_name),
          .lpComment = PointerTo(resource.comment),
          .lpProvider = PointerTo(resource.provider)};
}

class OpenLevel final : public NetworkLevel {
 public:
  OpenLevel() = default;
  OpenLevel(const OpenLevel&) = delete;
  OpenLevel& operator=(const OpenLevel&) = delete;
  ~OpenLevel() override {
    if (level_ != nullptr) WNetCloseEnum(level_);
  }

  // Opens what is in the container, or in the whole network for null.
  bool Open(NETRESOURCEA* container) {
    HANDLE opened = nullptr;
    const bool is_open =
        WNetOpenEnumA(RESOURCE_GLOBALNET, RESOURCETYPE_ANY, kUsage, container, &opened) == NO_ERROR;
    if (is_open) level_ = opened;
    return is_open;
  }

  std::vector<NetworkResource> Next() override {
    std::vector<std::uint64_t> buffer(kBufferSize / sizeof(std::uint64_t));  // zeros, and aligned
    DWORD size = kBufferSize;
    DWORD count = kAsManyAsFit;
    if (WNetEnumResourceA(level_, &count, buffer.data(), &size) != NO_ERROR) return {};
    std::vector<NetworkResource> resources;
    for (const NETRESOURCEA& resource :
         std::span(reinterpret_cast<const NETRESOURCEA*>(buffer.data()), count)) {
      resources.push_back(FromSystem(resource));
    }
    return resources;
  }

 private:
  HANDLE level_ = nullptr;
};

}  // namespace

std::unique_ptr<NetworkLevel> SystemNeighbourhood::Open(const NetworkResource* container) {
  NetworkResource copy = container == nullptr ? NetworkResource() : *container;
  NETRESOURCEA resource = ToSystem(copy);
  // Made before, so that nothing is open when there is no memory for it.
  auto level = std::make_unique<OpenLevel>();
  if (!level->Open(container == nullptr ? nullptr : &resource)) return nullptr;
  return level;
}

}  // namespace brantel
