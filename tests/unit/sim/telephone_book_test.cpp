#include "sim/telephone_book.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace brantel::sim {
namespace {

TEST(TelephoneBook, FindsASubscriberByTheWholeNumber) {
  EXPECT_EQ(FindSubscriber("5550101").outcome, CallOutcome::kBusy);
  EXPECT_EQ(FindSubscriber("555010").number, "");
  EXPECT_EQ(FindSubscriber("55501011").number, "");
  EXPECT_EQ(FindSubscriber("").number, "");
}

TEST(TelephoneBook, TakesNForAnyDigit) {
  EXPECT_EQ(FindSubscriber("5550300").number, "55503nn");
  EXPECT_EQ(FindSubscriber("5550399").number, "55503nn");
  EXPECT_EQ(FindSubscriber("55503*1").number, "");
}

TEST(TelephoneBook, GivesEachNumberOnce) {
  for (const Subscriber& subscriber : TelephoneBook()) {
    std::string number(subscriber.number);
    std::ranges::replace(number, 'n', '5');
    EXPECT_EQ(FindSubscriber(number).number, subscriber.number);
  }
}

}  // namespace
}  // namespace brantel::sim
