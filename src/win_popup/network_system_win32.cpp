#include "win_popup/network_system_win32.h"

#include <windows.h>
#include <lm.h>

#include <span>

#include "system/windows/system_library_win32.h"

namespace brantel {
namespace {

// Owns what the library allocated.
class NetworkBuffer {
 public:
  explicit NetworkBuffer(decltype(&NetApiBufferFree) free) : free_(free) {}
  NetworkBuffer(const NetworkBuffer&) = delete;
  NetworkBuffer& operator=(const NetworkBuffer&) = delete;
  ~NetworkBuffer() {
    if (data_ != nullptr) free_(data_);
  }

  [[nodiscard]] BYTE* data() const { return data_; }
  BYTE** put() { return &data_; }

 private:
  decltype(&NetApiBufferFree) free_;
  BYTE* data_ = nullptr;
};

// UTF-16 is wchar_t here.
std::u16string Utf16(const wchar_t* text) {
  const std::wstring_view view(text);
  return {view.begin(), view.end()};
}

class LoadedNetworkLibrary final : public NetworkLibrary {
 public:
  explicit LoadedNetworkLibrary(SystemLibrary library) : library_(std::move(library)) {
    for (std::size_t i = 0; i < kNetworkEntryNames.size(); ++i) {
      library_.Find(kNetworkEntryNames.at(i), entries_.at(i));
    }
  }

  [[nodiscard]] bool Has(NetworkEntry entry) const override { return Entry(entry) != nullptr; }

  bool SendMessageBuffer(const std::u16string& name, std::u16string_view buffer) override {
    const auto send = Entry<decltype(&NetMessageBufferSend)>(NetworkEntry::kMessageBufferSend);
    const std::wstring wide_name(name.begin(), name.end());
    std::wstring wide_buffer(buffer.begin(), buffer.end());  // the library may write to it
    return send(nullptr, wide_name.c_str(), nullptr, reinterpret_cast<BYTE*>(wide_buffer.data()),
                static_cast<DWORD>(wide_buffer.size() * sizeof(wchar_t))) == NERR_Success;
  }

  std::vector<std::u16string> MessageNames() override {
    const auto enumerate = Entry<decltype(&NetMessageNameEnum)>(NetworkEntry::kMessageNameEnum);
    NetworkBuffer buffer(Entry<decltype(&NetApiBufferFree)>(NetworkEntry::kApiBufferFree));
    constexpr DWORD kNamesAlone = 0;
    DWORD count = 0;
    DWORD total = 0;
    const NET_API_STATUS status = enumerate(nullptr, kNamesAlone, buffer.put(),
                                            MAX_PREFERRED_LENGTH, &count, &total, nullptr);
    const bool has_names = status == NERR_Success || status == ERROR_MORE_DATA;
    if (!has_names || buffer.data() == nullptr) return {};
    std::vector<std::u16string> names;
    for (const MSG_INFO_0& information :
         std::span(reinterpret_cast<const MSG_INFO_0*>(buffer.data()), count)) {
      if (information.msgi0_name != nullptr) names.push_back(Utf16(information.msgi0_name));
    }
    return names;
  }

 private:
  template <typename Function = void (*)()>
  [[nodiscard]] Function Entry(NetworkEntry entry) const {
    return reinterpret_cast<Function>(entries_.at(static_cast<std::size_t>(entry)));
  }

  SystemLibrary library_;
  std::array<void (*)(), kNetworkEntryNames.size()> entries_{};
};

}  // namespace

WindowsFamily SystemNetwork::Family() {
  OSVERSIONINFOA version{};
  version.dwOSVersionInfoSize = sizeof version;
  if (GetVersionExA(&version) == FALSE) return WindowsFamily::kOther;
  switch (version.dwPlatformId) {
    case VER_PLATFORM_WIN32_NT:
      return WindowsFamily::kWindowsNt;
    case VER_PLATFORM_WIN32_WINDOWS:
      return WindowsFamily::kWindows95;
    default:
      return WindowsFamily::kOther;
  }
}

std::unique_ptr<NetworkLibrary> SystemNetwork::Load(std::string_view name) {
  SystemLibrary library(name);
  if (!library) return nullptr;
  return std::make_unique<LoadedNetworkLibrary>(std::move(library));
}

}  // namespace brantel
