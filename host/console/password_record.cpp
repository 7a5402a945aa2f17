#include "host/console/password_record.h"

#include <algorithm>
#include <charconv>
#include <cstddef>
#include <vector>

#include "host/console/console_sessions.h"

namespace brantel::host {
namespace {

constexpr std::string_view kScheme = "pbkdf2-sha256";
constexpr std::uint32_t kIterations = 600'000;
constexpr std::uint32_t kMostIterations = 10'000'000;
constexpr std::size_t kLeastSalt = 16;

std::string Hexadecimal(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789abcdef";
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    text += kDigits[byte / 16];
    text += kDigits[byte % 16];
  }
  return text;
}

bool IsHexadecimal(std::string_view text) {
  return text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

std::vector<std::string_view> WordsOf(std::string_view line) {
  std::vector<std::string_view> words;
  while (!line.empty()) {
    words.push_back(line.substr(0, line.find(' ')));
    line.remove_prefix(std::min(line.size(), words.back().size() + 1));
  }
  return words;
}

}  // namespace

std::optional<PasswordRecord> PasswordRecord::Make(std::string_view password, std::string salt,
                                                   const KeyDerivation& derive) {
  const auto key = derive(password, salt, kIterations);
  if (!key) return std::nullopt;
  return PasswordRecord(kIterations, std::move(salt), Hexadecimal(*key));
}

std::optional<PasswordRecord> PasswordRecord::Parse(std::string_view text) {
  const auto words = WordsOf(text.substr(0, text.find_first_of("\r\n")));
  if (words.size() != 4 || words[0] != kScheme) return std::nullopt;
  std::uint32_t iterations = 0;
  const char* const end = words[1].data() + words[1].size();
  const auto [stop, error] = std::from_chars(words[1].data(), end, iterations);
  constexpr std::size_t kKeyDigits = 64;
  if (error != std::errc() || stop != end || iterations < kIterations ||
      iterations > kMostIterations || words[2].size() < kLeastSalt || !IsHexadecimal(words[2]) ||
      words[3].size() != kKeyDigits || !IsHexadecimal(words[3]))
    return std::nullopt;
  return PasswordRecord(iterations, std::string(words[2]), std::string(words[3]));
}

std::string PasswordRecord::Text() const {
  return std::string(kScheme) + " " + std::to_string(iterations_) + " " + salt_ + " " + key_ + "\n";
}

bool PasswordRecord::Matches(std::string_view password, const KeyDerivation& derive) const {
  const auto key = derive(password, salt_, iterations_);
  return key && IsSameSecret(Hexadecimal(*key), key_);
}

}  // namespace brantel::host
