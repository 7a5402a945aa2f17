#include "instance/instance_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <new>

#include "tests/unit/allocation_counter.h"
#include "tests/unit/instance/fake_instance_files.h"

namespace brantel {
namespace {

constexpr auto kFields =
    FieldsInFileOrder<2>({{.index = 0, .name = "one"}, {.index = 1, .name = "two"}});
constexpr InstanceLayout kLayout = {.magic = ParseGuid("00112233-4455-6677-8899-AABBCCDDEEFF"),
                                    .fields = kFields};
const std::string kNight = "dir\\Night";

class InstanceDirectoryTest : public ::testing::Test {
 protected:
  InstanceDirectoryTest() {
    stored_.set_text(0, "a text that has to be allocated");
    stored_.set_text(1, std::string(900, 'x'));
    files_.files[kNight] = EncodeInstance(kLayout, stored_);
  }

  Instance stored_{kLayout.fields.size()};
  FakeInstanceFiles files_;
  InstanceDirectory directory_{files_, kLayout, "dir"};
};

TEST_F(InstanceDirectoryTest, LoadsAndLetsGoOfTheFile) {
  EXPECT_EQ(directory_.TryLoad("Night"), stored_);
  EXPECT_EQ(LoadInstance(files_, kLayout, kNight), stored_);
  EXPECT_TRUE(directory_.Save("Night", stored_));
}

TEST_F(InstanceDirectoryTest, LoadsNothingWhereTheFileIsMissingOrHeldOrCannotBeRead) {
  EXPECT_EQ(directory_.TryLoad("Day"), std::nullopt);
  files_.damaged = {kNight};
  EXPECT_EQ(directory_.TryLoad("Night"), std::nullopt);
  EXPECT_EQ(LoadInstance(files_, kLayout, kNight), std::nullopt);
  files_.held = {kNight};
  EXPECT_EQ(directory_.TryLoad("Night"), std::nullopt);
  EXPECT_EQ(LoadInstance(files_, kLayout, kNight), std::nullopt);
}

TEST_F(InstanceDirectoryTest, TakesWantOfMemoryForAFailedLoadOnlyWhenItTries) {
  std::size_t n = 0;
  for (bool failed = true; failed;) {
    FailAllocation(++n);
    const auto loaded = directory_.TryLoad("Night");
    failed = !WillFailAllocation();
    FailAllocation(0);
    EXPECT_EQ(loaded.has_value(), !failed) << n;
    EXPECT_TRUE(directory_.Save("Night", stored_)) << "the file is closed";
  }
  EXPECT_GT(n, 3U);

  const auto load_without_memory = [&] {
    FailNextAllocation();
    return LoadInstance(files_, kLayout, kNight);
  };
  EXPECT_THROW(load_without_memory(), std::bad_alloc);
}

TEST_F(InstanceDirectoryTest, KnowsFilesByEveryNameThatLeadsToThem) {
  files_.short_paths["dir\\NIGHT~1"] = kNight;
  files_.files
      ["dir\\Stra\xDF"
       "e"] = "";
  files_.files["dir\\\xC6gir"] = "";
  EXPECT_TRUE(directory_.Holds("NIGHT"));
  EXPECT_FALSE(directory_.Holds("Day"));
  EXPECT_EQ(directory_.StoredName("night~1"), "Night");
  EXPECT_TRUE(directory_.AreOne("night", "NIGHT~1"));
  EXPECT_TRUE(directory_.AreOne("\xE6gir", "\xC6GIR"));
  EXPECT_FALSE(directory_.AreOne("aegir", "\xC6GIR"));
  EXPECT_FALSE(directory_.AreOne("Strasse",
                                 "Stra\xDF"
                                 "e"));
  EXPECT_FALSE(directory_.AreOne("Night",
                                 "Stra\xDF"
                                 "e"));
  EXPECT_FALSE(directory_.AreOne("Day", "Day")) << "no such file";
}

TEST_F(InstanceDirectoryTest, KnowsTheFilesOfItsClassByTheirMagic) {
  EXPECT_TRUE(directory_.HoldsOwn("night"));
  files_.files[kNight].resize(16);
  EXPECT_TRUE(directory_.HoldsOwn("night"));
  EXPECT_FALSE(directory_.HoldsOwn("Day"));
  for (const std::string& content : {std::string(), std::string(64, 'x')}) {
    files_.files["dir\\Day"] = content;
    EXPECT_FALSE(directory_.HoldsOwn("Day"));
  }
  files_.damaged = {kNight};
  EXPECT_FALSE(directory_.HoldsOwn("night"));
  files_.held = {kNight};
  EXPECT_FALSE(directory_.HoldsOwn("night"));
}

TEST_F(InstanceDirectoryTest, ReadsOfAForeignFileItsBeginningAlone) {
  files_.files[kNight] = std::string(1'000'000, 'x');
  EXPECT_EQ(directory_.TryLoad("Night"), std::nullopt);
  EXPECT_EQ(files_.reads, 1U);
  EXPECT_LE(files_.bytes_read, 8192U);
}

TEST_F(InstanceDirectoryTest, ReadsNothingOfALongTail) {
  files_.files[kNight] += std::string(1'000'000, 'x');
  EXPECT_EQ(directory_.TryLoad("Night"), stored_);
  EXPECT_EQ(files_.reads, 1U);
  EXPECT_LE(files_.bytes_read, 8192U);
}

}  // namespace
}  // namespace brantel
