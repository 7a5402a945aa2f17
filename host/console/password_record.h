#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace brantel::host {

// Derives 32 bytes from a password by PBKDF2 (RFC 8018) with HMAC-SHA-256. Nothing when the system
// cannot do it.
using KeyDerivation = std::function<std::optional<std::string>(
    std::string_view password, std::string_view salt, std::uint32_t iterations)>;

// A password as it is stored: nobody can read it from that, and equal passwords look different.
class PasswordRecord {
 public:
  // Of a new password. Nothing when the system cannot derive from it.
  static std::optional<PasswordRecord> Make(std::string_view password, std::string salt,
                                            const KeyDerivation& derive);

  // Reads what Text gives. Nothing when it is none, or asks for more work than a record of ours.
  static std::optional<PasswordRecord> Parse(std::string_view text);

  // One line, with its end.
  [[nodiscard]] std::string Text() const;

  [[nodiscard]] bool Matches(std::string_view password, const KeyDerivation& derive) const;

 private:
  PasswordRecord(std::uint32_t iterations, std::string salt, std::string key)
      : iterations_(iterations), salt_(std::move(salt)), key_(std::move(key)) {}

  std::uint32_t iterations_;
  std::string salt_;  // hexadecimal, as it goes into the derivation
  std::string key_;
};

// The shortest password that protects anything.
inline constexpr std::size_t kShortestPassword = 12;

}  // namespace brantel::host
