#include "smtp_mail/message/charset.h"

#include <gtest/gtest.h>

#include <string>

namespace brantel {
namespace {

struct Label {
  unsigned code_page;
  const char* content_type;
  const char* encoded_word;
};

constexpr Label kLabels[] = {
    {932, "ISO-2022-JP", "ISO-2022-JP"}, {949, "ISO-2022-JP-2", "ISO-2022-JP-2"},
    {1250, "ISO-8859-2", "ISO-8859-2"},  {1251, "ISO-8859-5", "ISO-8859-5"},
    {1252, "us-ascii", "ISO-8859-1"},    {1253, "ISO-8859-7", "ISO-8859-7"},
    {1254, "ISO-8859-9", "ISO-8859-9"},  {1255, "ISO-8859-8", "ISO-8859-8"},
    {1256, "ISO-8859-6", "ISO-8859-6"},  {1257, "ISO-8859-4", "ISO-8859-4"},
};

TEST(Charset, LabelsEachCodePage) {
  for (const Label& label : kLabels) {
    const Charset* const charset = FindCharset(label.code_page);
    ASSERT_NE(charset, nullptr) << label.code_page;
    EXPECT_EQ(charset->encoded_word_prefix, " =?" + std::string(label.encoded_word) + "?Q?");
    EXPECT_EQ(ContentTypeLine(label.code_page),
              "Content-Type: text/plain;charset=" + std::string(label.content_type) + "\r\n");
  }
}

TEST(Charset, ReservesRoomForTheEncodedWord) {
  for (const Label& label : kLabels) {
    EXPECT_EQ(FindCharset(label.code_page)->reserve, label.code_page < 1000 ? 21 : 18);
  }
}

TEST(Charset, HasNoLabelForOtherCodePages) {
  for (const unsigned code_page : {0U, 437U, 850U, 874U, 936U, 950U, 1249U, 1258U, 65001U}) {
    EXPECT_EQ(FindCharset(code_page), nullptr) << code_page;
    EXPECT_EQ(ContentTypeLine(code_page), "Content-Type: text/plain;charset=us-ascii\r\n");
  }
}

}  // namespace
}  // namespace brantel
