#include "host/alert/log_secrets.h"

#include <gtest/gtest.h>

namespace brantel::host {
namespace {

TEST(LogSecrets, HidesAPasswordWhereverItStands) {
  const LogSecrets secrets({"sesame"});
  EXPECT_EQ(secrets.Hide("sending \"\x1BPG1sesame\r\""), "sending \"\x1BPG1********\r\"");
  EXPECT_EQ(secrets.Hide("sesame, sesamesesame"), "********, ****************");
  EXPECT_EQ(secrets.Hide("open, open"), "open, open");
}

TEST(LogSecrets, HidesAShortPasswordInLogInsAlone) {
  const LogSecrets secrets({"1"});
  EXPECT_EQ(secrets.Hide("PG11\r"), "PG1********\r");
  EXPECT_EQ(secrets.Hide("8000C00000********,10000,111AAAAAAAAAAAA,0001,003a 1\r"),
            "8000C00000********,10000,111AAAAAAAAAAAA,********,003a 1\r");
  EXPECT_EQ(secrets.Hide("ATDT5551111\r"), "ATDT5551111\r");
}

TEST(LogSecrets, HidesWhatNttSendsOfALongPassword) {
  EXPECT_EQ(LogSecrets({"geheim"}).Hide(",gehe,"), ",********,");
  EXPECT_EQ(LogSecrets({"öäüß!"}).Hide(",öäüß,"), ",********,");
}

TEST(LogSecrets, HidesNothingWhereThereIsNoPassword) {
  EXPECT_EQ(LogSecrets({""}).Hide("PG1\r,AAAA,"), "PG1\r,AAAA,");
  EXPECT_EQ(LogSecrets().Hide("PG1\r"), "PG1\r");
}

}  // namespace
}  // namespace brantel::host
