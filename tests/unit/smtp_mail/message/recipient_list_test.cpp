#include "smtp_mail/message/recipient_list.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(SplitRecipients, GivesAddressesFromLastToFirst) {
  const RecipientList recipients = SplitRecipients("ann, bob,cy");
  EXPECT_THAT(recipients.behind_commas, ElementsAre("cy", "bob"));
  EXPECT_EQ(recipients.first, "ann");
  EXPECT_EQ(recipients.left_out, "");
}

TEST(SplitRecipients, DropsBlanksBehindACommaAndKeepsThoseBefore) {
  const RecipientList recipients = SplitRecipients(" ann ,   bob  , cy ");
  EXPECT_THAT(recipients.behind_commas, ElementsAre("cy ", "bob  "));
  EXPECT_EQ(recipients.first, " ann ");
}

TEST(SplitRecipients, DropsNoOtherWhiteSpace) {
  EXPECT_THAT(SplitRecipients("ann,\tbob").behind_commas, ElementsAre("\tbob"));
}

TEST(SplitRecipients, GivesAnEmptyAddressForEachCommaWithoutOne) {
  EXPECT_THAT(SplitRecipients("ann,,bob").behind_commas, ElementsAre("bob", ""));
  EXPECT_THAT(SplitRecipients("ann, , bob,").behind_commas, ElementsAre("", "bob", ""));
  EXPECT_THAT(SplitRecipients(",").behind_commas, ElementsAre(""));
  EXPECT_EQ(SplitRecipients(",").first, "");
}

TEST(SplitRecipients, HasRoomFor511Characters) {
  const std::string first(300, 'a');
  const std::string second(210, 'b');
  const std::string list = first + "," + second;
  ASSERT_EQ(list.size(), 511U);
  EXPECT_THAT(SplitRecipients(list).behind_commas, ElementsAre(second));
  EXPECT_EQ(SplitRecipients(list).left_out, "");

  EXPECT_THAT(SplitRecipients(list + "b").behind_commas, IsEmpty());
  EXPECT_EQ(SplitRecipients(list + "b").first, first);
  EXPECT_EQ(SplitRecipients(list + "b").left_out, second + "b");

  EXPECT_THAT(SplitRecipients(list + ", cy,dora").behind_commas, ElementsAre(second));
  EXPECT_EQ(SplitRecipients(list + ", cy,dora").left_out, "cy,dora");
}

TEST(SplitRecipients, GivesNobodyWhenTheFirstAddressIsTooLong) {
  const std::string list = std::string(512, 'a') + ",bob";
  EXPECT_THAT(SplitRecipients(list).behind_commas, IsEmpty());
  EXPECT_EQ(SplitRecipients(list).first, "");
  EXPECT_EQ(SplitRecipients(list).left_out, list);
}

TEST(SplitRecipients, GivesTheFirstAddressAloneWhenItJustFits) {
  const std::string first(511, 'a');
  EXPECT_THAT(SplitRecipients(first + ",bob").behind_commas, IsEmpty());
  EXPECT_EQ(SplitRecipients(first + ",bob").first, first);
  EXPECT_EQ(SplitRecipients(first + ",bob").left_out, "bob");
}

}  // namespace
}  // namespace brantel
