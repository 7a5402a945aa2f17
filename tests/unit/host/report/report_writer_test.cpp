#include "host/report/report_writer.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

#include "tests/unit/host/report/kept_text.h"

namespace brantel::host {
namespace {

constexpr std::array kColumns = {Column{"name", "Name"}, Column{"there", "There"},
                                 Column{"count", "Count"}};

const std::array<Record, 2> kRecords = {
    Record{{"name", "a\x1B"}, {"there", true}, {"count", 7}, {"more", "x"}},
    Record{{"name", nullptr}, {"there", false}}};

TEST(ReportWriter, WritesATableForPeople) {
  const KeptText written;
  ReportWriter(written, ReportForm::kText, false).Table(kColumns, kRecords);
  EXPECT_EQ(written.text(),
            "Name   There  Count\n"
            "a<1B>  yes    7\n"
            "-      no     -\n");
}

TEST(ReportWriter, WritesARecordALineForPrograms) {
  const KeptText written;
  ReportWriter(written, ReportForm::kJson, true).Table(kColumns, kRecords);
  EXPECT_EQ(written.text(),
            "{\"name\":\"a\\u001b\",\"there\":true,\"count\":7,\"more\":\"x\"}\n"
            "{\"name\":null,\"there\":false}\n");
}

TEST(ReportWriter, SparesProgramsTheProse) {
  for (const ReportForm form : {ReportForm::kText, ReportForm::kJson}) {
    const KeptText written;
    const ReportWriter report(written, form, true);
    report.Prose("Some words.\n");
    report.Entry(report.Painted(Colour::kRed, "no") + "\n", {{"is", false}});
    EXPECT_EQ(written.text(),
              form == ReportForm::kText ? "Some words.\n\x1B[31mno\x1B[0m\n" : "{\"is\":false}\n");
  }
}

TEST(ReportWriter, PaintsWhereColoursAreWanted) {
  const KeptText written;
  EXPECT_EQ(ReportWriter(written, ReportForm::kText, false).Painted(Colour::kGreen, "ok"), "ok");
  EXPECT_EQ(ReportWriter(written, ReportForm::kText, true).Painted(Colour::kGreen, "ok"),
            "\x1B[32mok\x1B[0m");
}

}  // namespace
}  // namespace brantel::host
