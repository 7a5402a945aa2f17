#include "sim/ntt_line.h"

#include <gtest/gtest.h>

namespace brantel::sim {
namespace {

const std::string kHead = "8000C00000********,10000,";

std::string Fault(const std::string& line) {
  const auto reading = ReadNttLine(line);
  const auto* const fault = std::get_if<NttFault>(&reading);
  return fault == nullptr ? "none" : fault->what;
}

TEST(ReadNttLine, TakesAPage) {
  const auto reading = ReadNttLine(kHead + "0312345678AAAAA,0007,004TEST");
  ASSERT_TRUE(std::holds_alternative<NttPage>(reading));
  const auto& page = std::get<NttPage>(reading);
  EXPECT_EQ(page.pager_id, "0312345678");
  EXPECT_EQ(page.password, "0007");
  EXPECT_EQ(page.text, "TEST");
}

TEST(ReadNttLine, TakesAnIdWithoutFillingAndAPageWithoutPasswordOrText) {
  const auto reading = ReadNttLine(kHead + "012345678901234,AAAA,000");
  ASSERT_TRUE(std::holds_alternative<NttPage>(reading));
  EXPECT_EQ(std::get<NttPage>(reading).pager_id, "012345678901234");
  EXPECT_EQ(std::get<NttPage>(reading).password, "");
  EXPECT_EQ(std::get<NttPage>(reading).text, "");
}

TEST(ReadNttLine, RefusesAnotherLayout) {
  for (const std::string line : {"", "TEST", "8000C00000*******,10000,0312345678AAAAA,0007,004TEST",
                                 "8000C00000********,10000,0312345678AAAA,0007,004TEST",
                                 "8000C00000********,10000,0312345678AAAAAA,0007,004TEST",
                                 "8000C00000********,10000,03-2345678AAAAA,0007,004TEST",
                                 "8000C00000********,10000,A312345678AAAAA,0007,004TEST",
                                 "8000C00000********,10000,0312345678AAAAA,007,004TEST",
                                 "8000C00000********,10000,0312345678AAAAA,00007,004TEST",
                                 "8000C00000********,10000,0312345678AAAAA,0007,04TEST",
                                 " 8000C00000********,10000,0312345678AAAAA,0007,004TEST"}) {
    EXPECT_EQ(Fault(line), "layout") << line;
  }
  EXPECT_EQ(Fault(kHead + "AAAAAAAAAAAAAAA,0007,004TEST"), "no pager ID");
}

TEST(ReadNttLine, ChecksTheText) {
  const auto with_text = [](const std::string& length, const std::string& text) {
    return kHead + "0312345678AAAAA,AAAA," + length + text;
  };
  EXPECT_EQ(Fault(with_text("003", "TEST")), "length 003 instead of 4");
  EXPECT_EQ(Fault(with_text("100", std::string(100, 'x'))), "none");
  EXPECT_EQ(Fault(with_text("101", std::string(101, 'x'))), "too long");
  EXPECT_EQ(Fault(with_text("005", "\x82\xA0 \xB1~")), "none");
  EXPECT_EQ(Fault(with_text("002", "x\x82")), "a sign that is no text");
  EXPECT_EQ(Fault(with_text("002", "\x82 ")), "a sign that is no text");
  EXPECT_EQ(Fault(with_text("001", "\n")), "a sign that is no text");
}

}  // namespace
}  // namespace brantel::sim
