#include "system/exception_guard.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace brantel {
namespace {

TEST(GuardExceptions, AnswersWhatTheBodyDoes) {
  EXPECT_EQ(GuardExceptions([] { return kOk; }), kOk);
  EXPECT_EQ(GuardExceptions([] { return Result{1}; }), 1);
  EXPECT_EQ(GuardExceptions([] { return kFail; }), kFail);
}

TEST(GuardExceptions, AnswersEFailWhateverIsThrown) {
  EXPECT_EQ(GuardExceptions([]() -> Result { throw std::runtime_error("no memory"); }), kFail);
  EXPECT_EQ(GuardExceptions([]() -> Result { throw 5; }), kFail);
}

}  // namespace
}  // namespace brantel
