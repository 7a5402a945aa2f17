#include "host/console/password_record.h"

#include <gtest/gtest.h>

#include <string>

namespace brantel::host {
namespace {

// Stands for a derivation: what it gives depends on all that it is given.
std::optional<std::string> MixedKey(std::string_view password, std::string_view salt,
                                    std::uint32_t iterations) {
  std::string key = std::string(password) + "/" + std::string(salt) + std::to_string(iterations);
  key.resize(32, '\xA5');
  return key;
}

constexpr const char* kSalt = "0123456789abcdef0123456789abcdef";

TEST(PasswordRecord, MatchesItsPasswordAlone) {
  const auto record = PasswordRecord::Make("correct horse", kSalt, MixedKey);
  ASSERT_TRUE(record);
  EXPECT_TRUE(record->Matches("correct horse", MixedKey));
  for (const char* const wrong : {"", "correct", "correct hors", "correct horse ", "Correct horse"})
    EXPECT_FALSE(record->Matches(wrong, MixedKey)) << wrong;
}

TEST(PasswordRecord, IsReadAsItWasWritten) {
  const std::string text = PasswordRecord::Make("correct horse", kSalt, MixedKey)->Text();
  EXPECT_TRUE(text.starts_with("pbkdf2-sha256 600000 0123456789abcdef0123456789abcdef "));
  EXPECT_EQ(text.find("horse"), std::string::npos);
  EXPECT_EQ(PasswordRecord::Parse(text)->Text(), text);
  EXPECT_TRUE(PasswordRecord::Parse(text)->Matches("correct horse", MixedKey));
}

TEST(PasswordRecord, IsNoneThatWouldBeTooWeakOrTooMuchWork) {
  const std::string key(64, 'a');
  const std::string salt = kSalt;
  EXPECT_TRUE(PasswordRecord::Parse("pbkdf2-sha256 600000 " + salt + " " + key));
  for (const std::string& text : std::initializer_list<std::string>{
           std::string(), "pbkdf2-sha256", "plain 600000 " + salt + " " + key,
           "pbkdf2-sha256 1000 " + salt + " " + key,
           "pbkdf2-sha256 99999999999 " + salt + " " + key,
           "pbkdf2-sha256 10000001 " + salt + " " + key, "pbkdf2-sha256 x " + salt + " " + key,
           "pbkdf2-sha256 600000  " + key, "pbkdf2-sha256 600000 abc " + key,
           "pbkdf2-sha256 600000 " + salt + " " + key.substr(1),
           "pbkdf2-sha256 600000 " + salt + " " + key + " more",
           "pbkdf2-sha256 600000 " + salt + " " + std::string(64, 'g')})
    EXPECT_FALSE(PasswordRecord::Parse(text)) << text;
}

TEST(PasswordRecord, NeedsASystemThatDerives) {
  const auto derives_nothing = [](std::string_view, std::string_view,
                                  std::uint32_t) -> std::optional<std::string> {
    return std::nullopt;
  };
  EXPECT_FALSE(PasswordRecord::Make("correct horse", kSalt, derives_nothing));
  EXPECT_FALSE(PasswordRecord::Make("correct horse", kSalt, MixedKey)
                   ->Matches("correct horse", derives_nothing));
}

}  // namespace
}  // namespace brantel::host
