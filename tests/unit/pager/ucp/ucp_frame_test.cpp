#include "pager/ucp/ucp_frame.h"

#include <gtest/gtest.h>

#include <string>

namespace brantel {
namespace {

TEST(BuildUcpFrame, BuildsTheWorkedExample) {
  const auto body = BuildUcpBody("0041791234567", "Hi");
  ASSERT_TRUE(body);
  EXPECT_EQ(*body, "1/0041791234567///3/4869");
  EXPECT_EQ(BuildUcpFrame(7, *body),
            "\x02"
            "07/00041/O/02/1/0041791234567///3/4869/C3\x03");
}

TEST(BuildUcpFrame, CountsWhatStandsBetweenItsEnds) {
  for (const std::size_t size : {0U, 1U, 24U, 180U, 982U, 983U, 5000U}) {
    const std::string frame = BuildUcpFrame(0, std::string(size, '1'));
    EXPECT_EQ(frame.size(), size + 19);
    EXPECT_EQ(frame.substr(1, 3), "00/");
    EXPECT_EQ(std::stoul(frame.substr(4, 5)), frame.size() - 2);
  }
}

TEST(BuildUcpBody, IsNothingWithoutPagerIdOrMessage) {
  EXPECT_FALSE(BuildUcpBody("", "Hi"));
  EXPECT_FALSE(BuildUcpBody("123", ""));
}

struct AddressCase {
  std::string_view pager_id;
  std::string_view address;
};

void PrintTo(const AddressCase& address_case, std::ostream* stream) {
  *stream << ::testing::PrintToString(address_case.pager_id);
}

class UcpAddressTest : public ::testing::TestWithParam<AddressCase> {};

INSTANTIATE_TEST_SUITE_P(Addresses, UcpAddressTest,
                         ::testing::Values(AddressCase{"0041791234567", "0041791234567"},
                                           AddressCase{"+41 79,123", "4179/123"},
                                           AddressCase{"1/2", "12"}, AddressCase{",", "/"},
                                           AddressCase{"1,,2", "1//2"}, AddressCase{"Ann", ""}));

TEST_P(UcpAddressTest, KeepsDigitsAndMakesFieldsOfLists) {
  EXPECT_EQ(BuildUcpBody(GetParam().pager_id, "A"),
            "1/" + std::string(GetParam().address) + "///3/41");
}

TEST(BuildUcpBody, EncodesEveryByte) {
  for (int byte = 0; byte < 256; ++byte) {
    const char c = static_cast<char>(byte);
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    const auto value = static_cast<std::size_t>(byte);
    EXPECT_EQ(BuildUcpBody("1", std::string(2, c)), std::string("1/1///3/") + kDigits[value / 16] +
                                                        kDigits[value % 16] + kDigits[value / 16] +
                                                        kDigits[value % 16]);
  }
}

TEST(BuildUcpBody, CutsTheMessageBehindItsEightiethByte) {
  for (const std::size_t size : {1U, 79U, 80U}) {
    EXPECT_EQ(BuildUcpBody("1", std::string(size, 'A'))->size(), 8 + 2 * size);
  }
  for (const std::size_t size : {81U, 100U, 5000U}) {
    EXPECT_EQ(BuildUcpBody("1", std::string(80, 'A') + std::string(size - 80, 'B')),
              BuildUcpBody("1", std::string(80, 'A')));
  }
}

}  // namespace
}  // namespace brantel
