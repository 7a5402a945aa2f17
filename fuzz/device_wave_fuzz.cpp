// The sound for a device, from arbitrary texts of the host: it is what the host names, or a file
// named after the device that was found to be there, or the common one. No name that leads to
// another computer or to a device of this one is asked for.
#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/fuzz_input.h"
#include "tests/unit/text/few_code_pages.h"
#include "text/text_end.h"
#include "voice/voice_messages.h"

namespace brantel {
namespace {

constexpr std::array<std::string_view, 6> kDevices = {"CON", "PRN", "AUX", "NUL", "COM1", "LPT9"};
constexpr std::string_view kCommonWave = "ahost.wav";

bool IsSeparator(char c) {
  return c == '\\' || c == '/';
}

// In English capitals, without the drive, up to the first dot or colon and the blanks before it.
std::string StemOf(std::string_view path) {
  if (path.size() > 1 && path[1] == ':') path.remove_prefix(2);
  const std::size_t folder = path.find_last_of("\\/");
  if (folder != std::string_view::npos) path.remove_prefix(folder + 1);
  std::string stem(path.substr(0, path.find_first_of(".:")));
  stem.resize(stem.find_last_not_of(' ') + 1);
  std::ranges::transform(stem, stem.begin(), [](char c) {
    return static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  });
  return stem;
}

// With a line for whatever is not ASCII, such as a character whose second byte looks like it.
std::string InAscii(std::string_view text, const CodePage& code_page) {
  std::string ascii;
  for (const char16_t c : code_page.ToUtf16(text))
    ascii += c < 0x80 ? static_cast<char>(c) : '_';
  return ascii;
}

void CheckAsked(std::string_view asked, const CodePage& code_page) {
  Require(asked.ends_with(".wav") && asked.size() <= 255 + 4);
  const std::string path = InAscii(asked, code_page);
  Require(!(IsSeparator(path[0]) && IsSeparator(path[1])));
  Require(!(IsSeparator(path[0]) && path.compare(1, 2, "??") == 0));
  Require(std::ranges::find(kDevices, StemOf(path)) == kDevices.end());
}

}  // namespace
}  // namespace brantel

// A byte for whether files are there and for the code page, the host's text, and the device's name.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace brantel;
  const std::string bytes(data, data + size);
  FuzzInput input(bytes);
  const std::uint8_t system = input.Byte();
  const bool is_there = system % 2 == 1;
  const CodePage* code_page = &kCodePage1252;
  if (system >= 0x80) code_page = &kCodePage932;
  const std::string host_text(input.Field());
  const std::string_view device_name = UpToNul(input.Take(size));

  std::vector<std::string> asked;
  const std::string wave =
      DeviceWave(host_text, device_name, *code_page, [&](const std::string& path) {
        CheckAsked(path, *code_page);
        asked.push_back(path);
        return is_there;
      });
  Require(asked.size() <= 1);
  if (is_there && !asked.empty()) {
    Require(wave == asked.front());
  } else {
    Require(wave == kCommonWave || (wave == host_text && !wave.empty()));
  }
  return 0;
}
