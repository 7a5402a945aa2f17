#include "host/preview/preview_report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "tests/unit/host/report/kept_text.h"

namespace brantel::host {
namespace {

Preview SamplePreview() {
  Preview preview;
  preview.parts = {{.what = "port", .words = "COM1"},
                   {.what = "log-in", .bytes = "\x1BPG1geheim\r", .text = "\x1BPG1geheim\r"},
                   {.what = "body", .words = "two lines", .bytes = "a\r\nb", .text = "a\r\nb"}};
  preview.time = {
      .least = 10'250, .beside_least = "the time to connect", .usual = "20 s", .most = "5 min"};
  return preview;
}

std::string Written(const Preview& preview, ReportForm form) {
  const KeptText kept;
  WritePreview(ReportWriter(kept, form, false), preview);
  return kept.text();
}

TEST(WritePreview, ShowsBytesInLinesWithTheirControlCharacters) {
  EXPECT_EQ(Written(SamplePreview(), ReportForm::kText),
            "port: COM1\n"
            "log-in\n"
            "    <1B>PG1geheim<0D>\n"
            "body: two lines\n"
            "    a<0D><0A>\n"
            "    b\n"
            "time\n"
            "    least  10.3 s and the time to connect, when every station answers at once\n"
            "    usual  20 s\n"
            "    most   5 min\n");
}

TEST(WritePreview, GivesProgramsTheBytesInHexadecimal) {
  EXPECT_EQ(Written(SamplePreview(), ReportForm::kJson),
            "{\"part\":\"port\",\"words\":\"COM1\",\"bytes\":\"\",\"hidden\":false}\n"
            "{\"part\":\"log-in\",\"words\":\"\",\"bytes\":\"1B50473167656865696D0D\","
            "\"hidden\":false}\n"
            "{\"part\":\"body\",\"words\":\"two lines\",\"bytes\":\"610D0A62\",\"hidden\":false}\n"
            "{\"part\":\"time\",\"least_milliseconds\":10250,"
            "\"beside_least\":\"the time to connect\",\"usual\":\"20 s\",\"most\":\"5 min\"}\n");
}

TEST(WritePreview, TellsThatNothingGoesOut) {
  Preview preview;
  preview.log = "Unhandled.\r\n";
  EXPECT_EQ(Written(preview, ReportForm::kText),
            "Nothing goes out: it is no failure, and the log says: Unhandled.\n");
  EXPECT_EQ(Written(preview, ReportForm::kJson),
            "{\"part\":\"nothing\",\"words\":\"it is no failure, and the log says: "
            "Unhandled.\"}\n");
}

TEST(WritePreview, TellsNoTimeOfAnAlertThatFails) {
  Preview preview = SamplePreview();
  preview.result = kFail;
  EXPECT_THAT(Written(preview, ReportForm::kText),
              ::testing::Not(::testing::HasSubstr("\ntime\n")));
}

constexpr TextConversions kLeftAsTheyAre = {[](std::string_view text) { return std::string(text); },
                                            [](std::string_view text) { return std::string(text); },
                                            nullptr};

TEST(PreviewSecrets, ArePutOutOfBytesTextAndLog) {
  Preview preview = SamplePreview();
  preview.log = "Sending \"PG1geheim\"";
  HideSecrets(preview, {"geheim"}, kLeftAsTheyAre);
  EXPECT_EQ(preview.parts[1].bytes, "\x1BPG1********\r");
  EXPECT_EQ(preview.parts[1].text, "\x1BPG1********\r");
  EXPECT_TRUE(preview.parts[1].hides_secret);
  EXPECT_EQ(preview.parts[1].words, "the password is hidden");
  EXPECT_FALSE(preview.parts[2].hides_secret);
  EXPECT_EQ(preview.log, "Sending \"PG1********\"");
}

// The four bytes that NTT takes of a password need not be whole characters.
TEST(PreviewSecrets, AreFoundByTheirBytes) {
  const auto hidden = [](const std::string& bytes, const std::string& password) {
    Preview preview;
    preview.parts = {{.what = "page", .bytes = bytes, .text = bytes}};
    HideSecrets(preview, {password}, kLeftAsTheyAre);
    return preview.parts[0].bytes;
  };
  EXPECT_EQ(hidden("A,a\x93\x64\x98,004\xFF", "a\x93\x64\x98\x62"), "A,********,004\xFF");
  EXPECT_EQ(hidden("A,0a\x80"
                   "1,004",
                   "a\x80"
                   "1"),
            "A,********,004");
}

}  // namespace
}  // namespace brantel::host
