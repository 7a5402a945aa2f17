#include "host/report/record.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace brantel::host {
namespace {

TEST(Record, KeepsItsParticularsInTheirOrder) {
  Record record{{"b", 1}, {"a", 2}};
  record["c"] = "three";
  record["b"] = false;
  ASSERT_EQ(record.members().size(), 3U);
  EXPECT_EQ(record.members()[0].name, "b");
  EXPECT_FALSE(record.members()[0].value.Flag());
  EXPECT_EQ(record.members()[2].value.Text(), "three");
}

TEST(Record, HasNullForWhatIsNew) {
  Record record;
  EXPECT_TRUE(record["a"].is_null());
  EXPECT_NE(record.Find("a"), nullptr);
  EXPECT_EQ(record.Find("b"), nullptr);
}

TEST(Record, GivesWhatIsOfTheKind) {
  const Record record{{"text", "x"}, {"inner", Record{{"number", 7}}}};
  EXPECT_EQ(*record.Get<std::string>("text"), "x");
  EXPECT_EQ(record.Get<std::string>("inner"), nullptr);
  EXPECT_EQ(record.Get<std::string>("other"), nullptr);
  EXPECT_EQ(record.Get<Record>("inner")->At("number").Whole<int>(), 7);
}

TEST(Record, ComplainsOfWhatIsNotThereOrOfAnotherKind) {
  const Record record{{"text", "x"}, {"number", 300}, {"half", 0.5}};
  EXPECT_THROW((void)record.At("other"), WrongRecord);
  EXPECT_THROW((void)record.At("text").Flag(), WrongRecord);
  EXPECT_THROW((void)record.At("text").Number(), WrongRecord);
  EXPECT_THROW((void)record.At("text").Values(), WrongRecord);
  EXPECT_THROW((void)record.At("text").Particulars(), WrongRecord);
  EXPECT_THROW((void)record.At("number").Text(), WrongRecord);
  EXPECT_THROW((void)record.At("number").Whole<std::uint8_t>(), WrongRecord);
  EXPECT_THROW((void)record.At("half").Whole<int>(), WrongRecord);
  EXPECT_EQ(record.At("number").Number(), 300);
  EXPECT_EQ(record.At("half").Number(), 0.5);
}

}  // namespace
}  // namespace brantel::host
