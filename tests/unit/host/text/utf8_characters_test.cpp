#include "host/text/utf8_characters.h"

#include <gtest/gtest.h>

namespace brantel::host {
namespace {

TEST(Utf8Characters, AreCountedWhateverTheirBytes) {
  EXPECT_EQ(CountCharacters(""), 0U);
  EXPECT_EQ(CountCharacters("abc"), 3U);
  EXPECT_EQ(CountCharacters("aü☎\U0001F4DF"), 4U);
}

TEST(Utf8Characters, AreNotCutApart) {
  EXPECT_EQ(FirstCharacters("aü☎\U0001F4DFz", 0), "");
  EXPECT_EQ(FirstCharacters("aü☎\U0001F4DFz", 1), "a");
  EXPECT_EQ(FirstCharacters("aü☎\U0001F4DFz", 2), "aü");
  EXPECT_EQ(FirstCharacters("aü☎\U0001F4DFz", 3), "aü☎");
  EXPECT_EQ(FirstCharacters("aü☎\U0001F4DFz", 4), "aü☎\U0001F4DF");
  EXPECT_EQ(FirstCharacters("aü☎", 3), "aü☎");
  EXPECT_EQ(FirstCharacters("aü☎", 4), "aü☎");
  EXPECT_EQ(FirstCharacters("", 4), "");
}

}  // namespace
}  // namespace brantel::host
