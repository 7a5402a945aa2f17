#include "port/serial_device_win32.h"

#include <gtest/gtest.h>

#include <cstring>

#include "beeper/beeper_port.h"
#include "pager/pager_port.h"
#include "port/modem_policy.h"

namespace brantel {
namespace {

// A control block with every bit set, or with none, as if a driver had reported it.
DCB BlockOf(int byte) {
  DCB block;
  std::memset(&block, byte, sizeof block);
  return block;
}

bool SameBytes(const DCB& one, const DCB& other) {
  return std::memcmp(&one, &other, sizeof one) == 0;
}

TEST(SetControlBlock, ChangesRateAndBitsAloneForTheBeeper) {
  for (const int byte : {0x00, 0xFF}) {
    DCB expected = BlockOf(byte);
    expected.BaudRate = 2400;
    expected.ByteSize = 8;
    expected.Parity = NOPARITY;
    expected.StopBits = ONESTOPBIT;

    DCB block = BlockOf(byte);
    SetControlBlock(block, 2400, kBeeperFraming);
    EXPECT_TRUE(SameBytes(block, expected)) << byte;
  }
}

TEST(SetControlBlock, SetsBinaryModeAndParityCheckForThePager) {
  for (const int byte : {0x00, 0xFF}) {
    DCB expected = BlockOf(byte);
    expected.BaudRate = 9600;
    expected.fBinary = 1;
    expected.fParity = 1;
    expected.ByteSize = 7;
    expected.Parity = EVENPARITY;
    expected.StopBits = ONESTOPBIT;

    DCB block = BlockOf(byte);
    SetControlBlock(block, 9600, kPagerFraming7E1);
    EXPECT_TRUE(SameBytes(block, expected)) << byte;

    expected.fParity = 0;
    expected.ByteSize = 8;
    expected.Parity = NOPARITY;
    SetControlBlock(block, 9600, kPagerFraming8N1);
    EXPECT_TRUE(SameBytes(block, expected)) << byte;
  }
}

TEST(ToCommTimeouts, KeepsEachOfTheFive) {
  const COMMTIMEOUTS timeouts = ToCommTimeouts({1000, 100, 10000, 20, 35000});
  EXPECT_EQ(timeouts.ReadIntervalTimeout, 1000U);
  EXPECT_EQ(timeouts.ReadTotalTimeoutMultiplier, 100U);
  EXPECT_EQ(timeouts.ReadTotalTimeoutConstant, 10000U);
  EXPECT_EQ(timeouts.WriteTotalTimeoutMultiplier, 20U);
  EXPECT_EQ(timeouts.WriteTotalTimeoutConstant, 35000U);
  EXPECT_EQ(FromCommTimeouts(timeouts), (SerialTimeouts{1000, 100, 10000, 20, 35000}));
}

TEST(SerialPortPath, NamesPortsAboveNineInTheDeviceNamespace) {
  EXPECT_EQ(SerialPortPath(1), "COM1");
  EXPECT_EQ(SerialPortPath(9), "COM9");
  EXPECT_EQ(SerialPortPath(10), R"(\\.\COM10)");
  EXPECT_EQ(SerialPortPath(4294967295U), R"(\\.\COM4294967295)");
  // A file of this name in the working directory is no port.
  EXPECT_EQ(SerialPortPath(0), R"(\\.\COM0)");
}

TEST(SystemSerialPorts, GivesTheSystemsErrorNumberForAPortThatDoesNotExist) {
  const auto device = SystemSerialPorts().Open(200);
  ASSERT_FALSE(device);
  EXPECT_EQ(device.reason(), DWORD{ERROR_FILE_NOT_FOUND});
}

}  // namespace
}  // namespace brantel
