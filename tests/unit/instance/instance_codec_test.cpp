#include "instance/instance_codec.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

#include "tests/unit/allocation_counter.h"

namespace brantel {
namespace {

using namespace std::string_literals;

constexpr Guid kMagic = ParseGuid("00112233-4455-6677-8899-AABBCCDDEEFF");
const std::string kMagicBytes = "\x33\x22\x11\x00\x55\x44\x77\x66\x88\x99\xAA\xBB\xCC\xDD\xEE\xFF"s;

constexpr auto kTwoTexts =
    FieldsInFileOrder<2>({{.index = 0, .name = "first"}, {.index = 1, .name = "second"}});
constexpr InstanceLayout kLimited = {.magic = kMagic, .fields = kTwoTexts};
constexpr InstanceLayout kChunked = {
    .magic = kMagic, .fields = kTwoTexts, .text_reader = TextReader::kChunked};
constexpr InstanceLayout kChunkedWhole = {.magic = kMagic,
                                          .fields = kTwoTexts,
                                          .text_reader = TextReader::kChunked,
                                          .short_file = ShortFile::kRefused};

constexpr auto kWithOptional = FieldsInFileOrder<3>({
    {.index = 0, .name = "text"},
    {.index = 1, .name = "late text", .presence = FieldPresence::kOptional},
    {.index = 2,
     .name = "late number",
     .kind = FieldKind::kInteger,
     .presence = FieldPresence::kOptional,
     .minimum = 0,
     .maximum = 10},
});
constexpr InstanceLayout kOptional = {.magic = kMagic, .fields = kWithOptional};

constexpr auto kNumberBetween = FieldsInFileOrder<3>({
    {.index = 0, .name = "before"},
    {.index = 1, .name = "number", .kind = FieldKind::kInteger},
    {.index = 2, .name = "after"},
});
constexpr InstanceLayout kWithNumber = {.magic = kMagic, .fields = kNumberBetween};

std::string Length(std::uint32_t length) {
  std::string bytes;
  for (unsigned shift = 0; shift < 32; shift += 8) {
    bytes.push_back(static_cast<char>(static_cast<std::uint8_t>(length >> shift)));
  }
  return bytes;
}

std::string StoredText(const std::string& text) {
  return Length(static_cast<std::uint32_t>(text.size() + 1)) + text + "\0"s;
}

std::optional<FlawedField> FindFlaw(const InstanceLayout& layout, std::string_view file) {
  MemorySource source(file);
  InstanceReader reader(source);
  static_cast<void>(reader.Read(layout));
  return reader.flaw();
}

// Bytes that come in pieces of this size, as those of a pipe may.
class PiecemealSource final : public ByteSource {
 public:
  PiecemealSource(std::string_view bytes, std::size_t piece) : whole_(bytes), piece_(piece) {}

  std::size_t Read(std::span<char> buffer) override {
    return whole_.Read(buffer.first(std::min(piece_, buffer.size())));
  }

 private:
  MemorySource whole_;
  const std::size_t piece_;
};

// A beginning that x follows for ever.
class EndlessSource final : public ByteSource {
 public:
  explicit EndlessSource(std::string beginning) : beginning_(std::move(beginning)) {}
  EndlessSource(const EndlessSource&) = delete;
  EndlessSource& operator=(const EndlessSource&) = delete;

  std::size_t Read(std::span<char> buffer) override {
    ++reads;
    std::ranges::fill(buffer, 'x');
    static_cast<void>(rest_of_beginning_.Read(buffer));
    return buffer.size();
  }

  int reads = 0;

 private:
  const std::string beginning_;
  MemorySource rest_of_beginning_{beginning_};
};

TEST(DecodeInstance, ReadsTextsInOrder) {
  const auto instance =
      DecodeInstance(kLimited, kMagicBytes + StoredText("one") + StoredText("two"));
  ASSERT_TRUE(instance);
  EXPECT_EQ(instance->text(0), "one");
  EXPECT_EQ(instance->text(1), "two");
}

TEST(DecodeInstance, RefusesEveryOtherMagic) {
  const std::string rest = StoredText("one") + StoredText("two");
  EXPECT_FALSE(DecodeInstance(kLimited, ""));
  for (std::size_t i = 0; i < kMagicBytes.size(); ++i) {
    EXPECT_FALSE(DecodeInstance(kLimited, kMagicBytes.substr(0, i))) << i;
    std::string other = kMagicBytes;
    other[i] = static_cast<char>(other[i] ^ 1);
    EXPECT_FALSE(DecodeInstance(kLimited, other + rest)) << i;
  }
}

TEST(DecodeInstance, TakesAStoredLengthOf1023AndRefuses1024) {
  const std::string longest(1022, 'x');
  const auto instance = DecodeInstance(kLimited, kMagicBytes + StoredText(longest));
  ASSERT_TRUE(instance);
  EXPECT_EQ(instance->text(0), longest);
  EXPECT_FALSE(DecodeInstance(kLimited, kMagicBytes + StoredText(longest + "x")));
  EXPECT_FALSE(DecodeInstance(kLimited, kMagicBytes + Length(0x7FFFFFFF) + "x"));
  EXPECT_FALSE(DecodeInstance(kLimited, kMagicBytes + Length(0xFFFFFFFF) + "x"));
  EXPECT_FALSE(DecodeInstance(kLimited, kMagicBytes + StoredText("") + Length(1024)));
}

TEST(DecodeInstance, EndsATextAtItsFirstNulAndGoesOnBehindItsLength) {
  const auto instance =
      DecodeInstance(kLimited, kMagicBytes + Length(6) + "ab\0cd\0"s + StoredText("two"));
  ASSERT_TRUE(instance);
  EXPECT_EQ(instance->text(0), "ab");
  EXPECT_EQ(instance->text(1), "two");
}

TEST(DecodeInstance, TakesATextWithoutANulAsItIs) {
  const auto instance = DecodeInstance(kLimited, kMagicBytes + Length(3) + "abc" + Length(0));
  ASSERT_TRUE(instance);
  EXPECT_EQ(instance->text(0), "abc");
  EXPECT_EQ(instance->text(1), "");
}

TEST(DecodeInstance, LoadsAFileThatEndsAnywhereBehindTheMagic) {
  const std::string whole = kMagicBytes + StoredText("one") + StoredText("two");
  for (std::size_t size = kMagicBytes.size(); size < whole.size(); ++size) {
    const auto instance = DecodeInstance(kLimited, whole.substr(0, size));
    ASSERT_TRUE(instance) << size;
    EXPECT_EQ(instance->text(0), std::string("one").substr(0, size < 20 ? 0 : size - 20)) << size;
  }
}

TEST(DecodeInstance, TakesMissingBytesOfALengthForZero) {
  const auto instance = DecodeInstance(kLimited, kMagicBytes + "\x02"s);
  ASSERT_TRUE(instance);
  EXPECT_EQ(instance->text(0), "");
  EXPECT_FALSE(DecodeInstance(kLimited, kMagicBytes + "\x00\x04"s));
}

TEST(DecodeInstance, RefusesAShortFileWhereTheLayoutSaysSo) {
  const std::string whole = kMagicBytes + StoredText("one") + StoredText("two");
  ASSERT_TRUE(DecodeInstance(kChunkedWhole, whole));
  for (std::size_t size = 0; size < whole.size(); ++size) {
    EXPECT_FALSE(DecodeInstance(kChunkedWhole, whole.substr(0, size))) << size;
  }
}

TEST(DecodeInstance, ChunkedReaderTakesAnyLength) {
  const std::string long_text(5000, 'y');
  const auto instance =
      DecodeInstance(kChunked, kMagicBytes + StoredText(long_text) + Length(0) + "ignored");
  ASSERT_TRUE(instance);
  EXPECT_EQ(instance->text(0), long_text);
  EXPECT_EQ(instance->text(1), "");
  const auto lying = DecodeInstance(kChunked, kMagicBytes + Length(0xFFFFFFFF) + "abc");
  ASSERT_TRUE(lying);
  EXPECT_EQ(lying->text(0), "abc");
}

TEST(DecodeInstance, GivesMissingOptionalFieldsTheirDefaults) {
  const auto instance = DecodeInstance(kOptional, kMagicBytes + StoredText("text"));
  ASSERT_TRUE(instance);
  EXPECT_EQ(instance->text(0), "text");
  EXPECT_EQ(instance->text(1), "");
  EXPECT_EQ(instance->integer(2), 0);
}

TEST(DecodeInstance, CutsAnOptionalTextInsteadOfRefusingIt) {
  const std::string too_long(1500, 'z');
  const auto instance =
      DecodeInstance(kOptional, kMagicBytes + StoredText("text") + StoredText(too_long));
  ASSERT_TRUE(instance);
  EXPECT_EQ(instance->text(1), too_long.substr(0, 1023));
}

TEST(DecodeInstance, IgnoresANumberOutsideItsRange) {
  const std::string before = kMagicBytes + StoredText("text") + StoredText("late");
  const auto number = [&](std::uint32_t stored) {
    return DecodeInstance(kOptional, before + Length(stored))->integer(2);
  };
  EXPECT_EQ(number(0), 0);
  EXPECT_EQ(number(10), 10);
  EXPECT_EQ(number(11), 0);
  EXPECT_EQ(number(0xFFFFFFFF), 0);
  EXPECT_EQ(number(0x80000000), 0);
}

TEST(DecodeInstance, ReadsABareNumberBetweenTexts) {
  const auto instance = DecodeInstance(
      kWithNumber, kMagicBytes + StoredText("a") + "\xFE\xFF\xFF\xFF" + StoredText("b"));
  ASSERT_TRUE(instance);
  EXPECT_EQ(instance->text(0), "a");
  EXPECT_EQ(instance->integer(1), -2);
  EXPECT_EQ(instance->text(2), "b");
}

TEST(DecodeInstance, ReadsWhatComesInPieces) {
  Instance instance(3);
  instance.set_text(0, std::string(300, 'a'));
  instance.set_integer(1, 0x12345678);
  instance.set_text(2, "b");
  const std::string file = EncodeInstance(kWithNumber, instance);
  for (const std::size_t piece : {1U, 2U, 3U, 5U, 7U, 16U, 17U, 20U, 100U, 320U, 500U}) {
    PiecemealSource source(file, piece);
    EXPECT_EQ(DecodeInstance(kWithNumber, source), instance) << piece;
    PiecemealSource cut(std::string_view(file).substr(0, file.size() - 1), piece);
    EXPECT_EQ(DecodeInstance(kWithNumber, cut), instance) << piece;
  }
}

TEST(DecodeInstance, EndsATextAtItsFirstNulWhateverPieceThatIsIn) {
  const std::string file = kMagicBytes + Length(6) + "ab\0cd\0"s + StoredText("two");
  for (const std::size_t piece : {1U, 2U, 3U, 4U, 5U, 6U, 21U, 22U, 23U, 24U}) {
    PiecemealSource source(file, piece);
    const auto instance = DecodeInstance(kChunkedWhole, source);
    ASSERT_TRUE(instance);
    EXPECT_EQ(instance->text(0), "ab") << piece;
    EXPECT_EQ(instance->text(1), "two") << piece;
  }
}

TEST(DecodeInstance, ReadsAnotherClasssFileNoFurtherThanItsBeginning) {
  EndlessSource foreign("");
  EXPECT_FALSE(DecodeInstance(kChunked, foreign));
  EXPECT_EQ(foreign.reads, 1);
}

TEST(DecodeInstance, ReadsNoFurtherThanItsFieldsReach) {
  const std::string longest = StoredText(std::string(1022, 'y'));
  EndlessSource limited(kMagicBytes + longest + longest);
  EXPECT_TRUE(DecodeInstance(kLimited, limited));
  EXPECT_EQ(limited.reads, 1);
  EndlessSource refused(kMagicBytes + Length(0xFFFFFFFF));
  EXPECT_FALSE(DecodeInstance(kLimited, refused));
  EXPECT_EQ(refused.reads, 1);
  EndlessSource chunked(kMagicBytes + StoredText(std::string(20'000, 'y')) + longest);
  EXPECT_TRUE(DecodeInstance(kChunked, chunked));
  EXPECT_EQ(chunked.reads, 3);
}

TEST(DecodeInstance, BelievesNoLengthBeyondTheFilesEnd) {
  const std::size_t before = AllocatedBytes();
  const auto instance = DecodeInstance(kChunked, kMagicBytes + Length(0xFFFFFFFF) + "abc");
  EXPECT_LT(AllocatedBytes() - before, 1000U);
  EXPECT_EQ(instance->text(0), "abc");
}

TEST(DecodeInstance, LetsThroughWhatTheSourceThrows) {
  class BrokenSource final : public ByteSource {
   public:
    std::size_t Read(std::span<char>) override { throw ReadFailure(23); }
  };
  BrokenSource broken;
  EXPECT_THROW(static_cast<void>(DecodeInstance(kLimited, broken)), ReadFailure);
}

TEST(FindFlaw, FindsNoneInWhatEncodeInstanceWrites) {
  EXPECT_EQ(FindFlaw(kLimited, EncodeInstance(kLimited, Instance(2))), std::nullopt);
  EXPECT_EQ(FindFlaw(kChunkedWhole, EncodeInstance(kChunkedWhole, Instance(2))), std::nullopt);
  EXPECT_EQ(FindFlaw(kOptional, EncodeInstance(kOptional, Instance(3))), std::nullopt);
  EXPECT_EQ(FindFlaw(kWithNumber, EncodeInstance(kWithNumber, Instance(3))), std::nullopt);
}

TEST(FindFlaw, LooksAtNoFileOfAnotherClass) {
  EXPECT_EQ(FindFlaw(kLimited, ""), std::nullopt);
  EXPECT_EQ(FindFlaw(kLimited, std::string(16, 'x') + Length(1024)), std::nullopt);
}

TEST(FindFlaw, NamesTheFieldBeforeWhoseEndTheFileEnds) {
  const std::string whole = kMagicBytes + StoredText("a") + Length(7) + StoredText("b");
  const std::array<std::size_t, 3> field_ends = {16 + 6, 16 + 6 + 4, 16 + 6 + 4 + 6};
  for (std::size_t size = 16; size < whole.size(); ++size) {
    const std::size_t field = size < field_ends[0] ? 0 : size < field_ends[1] ? 1 : 2;
    EXPECT_EQ(FindFlaw(kWithNumber, whole.substr(0, size)),
              (FlawedField{FileFlaw::kEndsEarly, field}))
        << size;
  }
  EXPECT_EQ(FindFlaw(kChunkedWhole, kMagicBytes + Length(0xFFFFFFFF) + "abc"),
            (FlawedField{FileFlaw::kEndsEarly, 0}));
}

TEST(FindFlaw, LetsAFileEndBeforeItsOptionalFieldsAndNotWithinThem) {
  const std::string text = kMagicBytes + StoredText("text");
  EXPECT_EQ(FindFlaw(kOptional, text), std::nullopt);
  EXPECT_EQ(FindFlaw(kOptional, text + "\x05"s), (FlawedField{FileFlaw::kEndsEarly, 1}));
  EXPECT_EQ(FindFlaw(kOptional, text + StoredText("late")), std::nullopt);
  EXPECT_EQ(FindFlaw(kOptional, text + StoredText("late") + "\0\0\0"s),
            (FlawedField{FileFlaw::kEndsEarly, 2}));
}

TEST(FindFlaw, NamesTheTextThatIsTooLong) {
  const std::string too_long = StoredText(std::string(1023, 'x'));
  EXPECT_EQ(FindFlaw(kLimited, kMagicBytes + StoredText("one") + too_long),
            (FlawedField{FileFlaw::kTextTooLong, 1}));
  EXPECT_EQ(FindFlaw(kOptional, kMagicBytes + StoredText("text") + too_long),
            (FlawedField{FileFlaw::kTextTooLong, 1}));
  EXPECT_EQ(FindFlaw(kLimited, kMagicBytes + StoredText("one") + Length(1023)),
            (FlawedField{FileFlaw::kEndsEarly, 1}));
  EXPECT_EQ(FindFlaw(kChunked, kMagicBytes + too_long + too_long), std::nullopt);
}

TEST(EncodeInstance, WritesAnEmptyTextAsLengthOneAndANul) {
  EXPECT_EQ(EncodeInstance(kLimited, Instance(2)),
            kMagicBytes + "\x01\x00\x00\x00\x00\x01\x00\x00\x00\x00"s);
}

TEST(EncodeInstance, WritesFieldsInOrderWithBareNumbers) {
  Instance instance(3);
  instance.set_text(0, "before");
  instance.set_integer(1, -2);
  instance.set_text(2, "after");
  EXPECT_EQ(EncodeInstance(kWithNumber, instance),
            kMagicBytes + "\x07\0\0\0"s + "before\0\xFE\xFF\xFF\xFF"s + "\x06\0\0\0"s + "after\0"s);
}

TEST(EncodeInstance, StoresATextUpToItsFirstNul) {
  Instance instance(2);
  instance.set_text(0, "ab\0cd"s);
  EXPECT_EQ(EncodeInstance(kLimited, instance), kMagicBytes + StoredText("ab") + StoredText(""));
}

TEST(EncodeInstance, IsReadBackByDecodeInstance) {
  Instance instance(3);
  instance.set_text(0, "text");
  instance.set_text(1, "late \xE9");
  instance.set_integer(2, 7);
  EXPECT_EQ(DecodeInstance(kOptional, EncodeInstance(kOptional, instance)), instance);
}

TEST(LongestText, IsReadBackWholeAndNotALongerOne) {
  ASSERT_EQ(LongestText(kLimited), 1022U);
  Instance instance(2);
  instance.set_text(0, std::string(1022, 'x'));
  EXPECT_EQ(DecodeInstance(kLimited, EncodeInstance(kLimited, instance)), instance);
  instance.set_text(0, std::string(1023, 'x'));
  EXPECT_FALSE(DecodeInstance(kLimited, EncodeInstance(kLimited, instance)));
}

TEST(LongestText, HasNoLimitForTheChunkedReader) {
  EXPECT_EQ(LongestText(kChunked), std::string::npos);
}

}  // namespace
}  // namespace brantel
