#include "host/outcome/result_text.h"

#include <gtest/gtest.h>

namespace brantel::host {
namespace {

std::string TextOf(std::uint32_t code) {
  return ResultText(static_cast<std::int32_t>(code));
}

TEST(ResultText, NamesWhatItKnows) {
  EXPECT_EQ(TextOf(0), "0x00000000 (S_OK)");
  EXPECT_EQ(TextOf(1), "0x00000001 (S_FALSE)");
  EXPECT_EQ(TextOf(0x80004005), "0x80004005 (E_FAIL)");
  EXPECT_EQ(TextOf(0x80004003), "0x80004003 (E_POINTER)");
  EXPECT_EQ(TextOf(0x80040154), "0x80040154 (REGDB_E_CLASSNOTREG)");
  EXPECT_EQ(TextOf(0x80140001), "0x80140001 (SMTPMAIL_E_RECIPIENT_REFUSED)");
}

TEST(ResultText, GivesTheNumberOfOthers) {
  EXPECT_EQ(TextOf(2), "0x00000002");
  EXPECT_EQ(TextOf(0x80140002), "0x80140002");
  EXPECT_EQ(TextOf(0x9ABCDEF0), "0x9ABCDEF0");
}

}  // namespace
}  // namespace brantel::host
