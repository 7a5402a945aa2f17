#include "host/preview/paper_messenger.h"

#include <string>
#include <vector>

namespace brantel::host {
namespace {

// As the function of the system gets it, which is of a little-endian machine.
std::string BytesOf(std::u16string_view text) {
  constexpr unsigned kByte = 8;
  std::string bytes;
  for (const char16_t unit : text) {
    bytes += static_cast<char>(unit & 0xFFU);
    bytes += static_cast<char>(unit >> kByte);
  }
  return bytes;
}

std::u16string_view WithoutFilling(std::u16string_view buffer) {
  return buffer.substr(0, buffer.find_last_not_of(u'\0') + 1);
}

}  // namespace

class PaperMessenger::Library final : public NetworkLibrary {
 public:
  explicit Library(PaperMessenger& messenger) : messenger_(messenger) {}

  [[nodiscard]] bool Has(NetworkEntry /*entry*/) const override { return true; }

  bool SendMessageBuffer(const std::u16string& name, std::u16string_view buffer) override {
    const auto to_utf8 = messenger_.texts_.utf16_to_utf8;
    const std::u16string_view text = WithoutFilling(buffer);
    messenger_.parts_.push_back({.what = "pop-up",
                                 .words = "for " + to_utf8(name) + "; " +
                                          std::to_string(text.size()) +
                                          " characters of UTF-16 in a buffer of " +
                                          std::to_string(BytesOf(buffer).size()) + " bytes",
                                 .bytes = BytesOf(buffer),
                                 .text = to_utf8(text)});
    return true;
  }

  std::vector<std::u16string> MessageNames() override { return {}; }

 private:
  PaperMessenger& messenger_;
};

std::unique_ptr<NetworkLibrary> PaperMessenger::Load(std::string_view /*name*/) {
  return std::make_unique<Library>(*this);
}

}  // namespace brantel::host
