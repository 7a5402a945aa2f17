#include "sim/ucp_frame.h"

#include <gtest/gtest.h>

#include "sim/byte_sum.h"

namespace brantel::sim {
namespace {

std::string FaultOfFrame(const std::string& frame) {
  const auto reading = ReadUcpOperation(frame);
  const auto* const fault = std::get_if<UcpFault>(&reading);
  return fault == nullptr ? "none" : fault->reference + " " + fault->error + " " + fault->what;
}

// A frame in order but for what stands in it, with these data behind its header.
std::string Frame(const std::string& data, const std::string& operation = "O/02") {
  const std::string length = std::to_string(data.size() + 17);
  std::string frame =
      "07/" + std::string(5 - length.size(), '0') + length + "/" + operation + "/" + data + "/";
  const unsigned sum = ByteSum(frame) % 256;
  constexpr const char* kDigits = "0123456789ABCDEF";
  return frame + kDigits[sum / 16] + kDigits[sum % 16];
}

TEST(ReadUcpOperation, TakesAMessage) {
  const auto reading = ReadUcpOperation("07/00041/O/02/1/0041791234567///3/4869/C3");
  ASSERT_TRUE(std::holds_alternative<UcpOperation>(reading));
  const auto& operation = std::get<UcpOperation>(reading);
  EXPECT_EQ(operation.reference, "07");
  EXPECT_EQ(operation.recipients, "0041791234567");
  EXPECT_EQ(operation.text, "Hi");
}

TEST(ReadUcpOperation, TakesSeveralRecipients) {
  const auto reading = ReadUcpOperation(Frame("3/1/22/333///3/00FF0A"));
  ASSERT_TRUE(std::holds_alternative<UcpOperation>(reading));
  EXPECT_EQ(std::get<UcpOperation>(reading).recipients, "1/22/333");
  EXPECT_EQ(std::get<UcpOperation>(reading).text, std::string("\0\xFF\n", 3));
}

TEST(ReadUcpOperation, KnowsNoOtherOperation) {
  // A call input with an originator, with length and checksum as published.
  EXPECT_EQ(FaultOfFrame("00/00070/O/01/01234567890/09876543210//3/53686F7274204D657373616765/D9"),
            "00 03 operation");
  EXPECT_EQ(FaultOfFrame(Frame("A/1", "R/02")), "07 03 operation");
}

TEST(ReadUcpOperation, FindsADamagedFrame) {
  EXPECT_EQ(FaultOfFrame("07/00041/O/02/1/0041791234567///3/4869/C4"),
            "07 01 checksum C4 instead of C3");
  EXPECT_EQ(FaultOfFrame("07/00041/O/02/1/0041791234568///3/4869/C3"),
            "07 01 checksum C3 instead of C4");
  EXPECT_EQ(FaultOfFrame("07/00041/O/02/1/0041791234567///3/4869/c3"),
            "07 01 checksum c3 instead of C3");
  EXPECT_EQ(FaultOfFrame("07/00042/O/02/1/0041791234567///3/4869/C4"),
            "07 02 length 00042 instead of 00041");
  EXPECT_EQ(FaultOfFrame("07/0041/O/02/1/0041791234567///3/4869/93"),
            "07 02 length 0041 instead of 00040");
  EXPECT_EQ(FaultOfFrame("x7/00041/O/02/1/0041791234567///3/4869/0B"),
            "00 02 transaction reference");
  EXPECT_EQ(FaultOfFrame(""), "00 02 number of fields");
  EXPECT_EQ(FaultOfFrame("07/00041/O/02/C3"), "07 02 number of fields");
}

TEST(ReadUcpOperation, FindsWrongData) {
  EXPECT_EQ(FaultOfFrame(Frame("0////3/4869")), "07 02 no number of addresses");
  EXPECT_EQ(FaultOfFrame(Frame("x/1///3/4869")), "07 02 no number of addresses");
  EXPECT_EQ(FaultOfFrame(Frame("2/1///3/4869")), "07 02 number of fields");
  EXPECT_EQ(FaultOfFrame(Frame("1/4179/123///3/4869")), "07 02 number of fields");
  EXPECT_EQ(FaultOfFrame(Frame("1/////3/4869")), "07 02 number of fields");
  EXPECT_EQ(FaultOfFrame(Frame("1////3/4869")), "07 06 address");
  EXPECT_EQ(FaultOfFrame(Frame("1/+41///3/4869")), "07 06 address");
  EXPECT_EQ(FaultOfFrame(Frame("1/12345678901234567///3/4869")), "07 06 address");
  EXPECT_EQ(FaultOfFrame(Frame("1/1///2/4869")), "07 17 message type");
  EXPECT_EQ(FaultOfFrame(Frame("1/1///3/486")), "07 02 message is not hexadecimal");
  EXPECT_EQ(FaultOfFrame(Frame("1/1///3/4a")), "07 02 message is not hexadecimal");
  EXPECT_EQ(FaultOfFrame(Frame("1/1///3/" + std::string(640, '4'))), "none");
  EXPECT_EQ(FaultOfFrame(Frame("1/1///3/" + std::string(642, '4'))), "07 18 message too long");
}

TEST(UcpAnswer, IsAFrameWithItsOwnLengthAndChecksum) {
  EXPECT_EQ(UcpAcceptance("07", "0041791234567"),
            "\x02"
            "07/00032/R/02/A/0041791234567/0C\x03");
  EXPECT_EQ(UcpRefusal("07", "22"),
            "\x02"
            "07/00022/R/02/N/22//0A\x03");
}

}  // namespace
}  // namespace brantel::sim
