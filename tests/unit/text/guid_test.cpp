#include "text/guid.h"

#include <gtest/gtest.h>

namespace brantel {
namespace {

TEST(Guid, IsStoredWithItsFirstThreeGroupsLittleEndian) {
  constexpr Guid kGuid = ParseGuid("ECEC7E6C-8E18-4CA2-C56F-5334C2BD7945");
  constexpr std::array<std::uint8_t, 16> kExpected = {0x6C, 0x7E, 0xEC, 0xEC, 0x18, 0x8E,
                                                      0xA2, 0x4C, 0xC5, 0x6F, 0x53, 0x34,
                                                      0xC2, 0xBD, 0x79, 0x45};
  EXPECT_EQ(GuidBytes(kGuid), kExpected);
}

}  // namespace
}  // namespace brantel
