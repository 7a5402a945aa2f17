#include "host/watch/settled_text.h"

#include <gtest/gtest.h>

namespace brantel::host {
namespace {

TEST(SettledText, IsTakenOnceWhenItStays) {
  SettledText text("old");
  EXPECT_FALSE(text.TakeIfChanged("old"));
  EXPECT_FALSE(text.TakeIfChanged("new"));
  EXPECT_TRUE(text.TakeIfChanged("new"));
  EXPECT_FALSE(text.TakeIfChanged("new"));
}

TEST(SettledText, IsNotTakenWhileItIsWritten) {
  SettledText text("old");
  for (const char* part : {"n", "ne", "new", "ne", "new"})
    EXPECT_FALSE(text.TakeIfChanged(part)) << part;
  EXPECT_TRUE(text.TakeIfChanged("new"));
}

TEST(SettledText, MayReturnToWhatItWas) {
  SettledText text("old");
  for (const char* part : {"new", "old", "old", "new", "old"})
    EXPECT_FALSE(text.TakeIfChanged(part)) << part;
}

}  // namespace
}  // namespace brantel::host
