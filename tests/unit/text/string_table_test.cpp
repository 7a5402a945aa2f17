#include "text/string_table.h"

#include <gtest/gtest.h>

namespace brantel {
namespace {

TEST(LoadText, GivesTheTextWithTheNumber) {
  EXPECT_EQ(LoadText(100), "Brantel_Notifications");
  EXPECT_EQ(LoadText(text_id::kLoadFailed), " - Failed to load notification from disk.");
  EXPECT_EQ(LoadText(text_id::kUnhandledTrigger),
            "Currently an unhandled alert trigger - future enhancement.\n");
}

TEST(LoadText, NamesTheNumberOfATextThatIsMissing) {
  EXPECT_EQ(LoadText(0), "0 DEBUG - Unable to load string");
  EXPECT_EQ(LoadText(99), "99 DEBUG - Unable to load string");
  EXPECT_EQ(LoadText(4294967295U), "4294967295 DEBUG - Unable to load string");
}

}  // namespace
}  // namespace brantel
