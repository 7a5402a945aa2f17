// Header text of every code page: where there is a label for it, what comes out is plain ASCII with
// at most one encoded-word, and that holds a part of the text, between its beginning and its end.
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/fuzz_input.h"
#include "smtp_mail/message/charset.h"
#include "smtp_mail/message/header_encoding.h"

namespace {

using brantel::Require;

constexpr std::array kCodePages = {1252U, 932U, 1250U, 949U, 437U};
constexpr int kLimit = 512;

int FromHexadecimal(char digit) {
  return digit <= '9' ? digit - '0' : digit - 'A' + 10;
}

std::string Decode(std::string_view encoded) {
  std::string text;
  for (std::size_t i = 0; i < encoded.size(); ++i) {
    if (encoded[i] == '_') {
      text += ' ';
    } else if (encoded[i] == '=') {
      Require(i + 2 < encoded.size());
      text +=
          static_cast<char>(FromHexadecimal(encoded[i + 1]) * 16 + FromHexadecimal(encoded[i + 2]));
      i += 2;
    } else {
      text += encoded[i];
    }
  }
  return text;
}

// The encoded text at one place of a header and what stands around it.
void CheckEncodedWord(std::string_view text, std::string_view header, std::string_view prefix) {
  const std::size_t plain = header.find(prefix);
  if (plain == std::string_view::npos) {
    Require(text.starts_with(header));
    return;
  }
  Require(text.substr(0, plain) == header.substr(0, plain));
  const std::string_view rest = header.substr(plain + prefix.size());
  const std::size_t end = rest.find("?=");
  Require(end != std::string_view::npos);
  const std::string decoded = Decode(rest.substr(0, end));
  // The third byte of a closing escape sequence is written as the one of plain ASCII, whatever it
  // is.
  const bool closes = decoded.size() >= 3 && decoded[decoded.size() - 3] == '\x1B';
  Require(end <= (closes ? 61U : 55U));
  const std::size_t compared = closes ? decoded.size() - 1 : decoded.size();
  Require(text.substr(plain, compared) == std::string_view(decoded).substr(0, compared));
  Require(text.substr(plain + decoded.size()).ends_with(rest.substr(end + 2)));
}

}  // namespace

// The first byte chooses the code page.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace brantel;
  if (size == 0) return 0;
  const unsigned code_page = kCodePages.at(data[0] % kCodePages.size());
  const std::string text(data + 1, data + size);
  const std::string header = EncodeHeaderText(text, code_page, kLimit);
  const Charset* const charset = FindCharset(code_page);
  if (charset == nullptr) {
    Require(text.starts_with(header));
    return 0;
  }
  Require(!HasHighBytes(header));
  // A prefix within the text itself would be taken for ours.
  if (code_page != kJapaneseCodePage &&
      text.find(charset->encoded_word_prefix) == std::string::npos) {
    CheckEncodedWord(text, header, charset->encoded_word_prefix);
  }
  return 0;
}
