#include "web/web_page.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "beeper/beeper_description.h"
#include "instance/instance_codec.h"
#include "pager/pager_description.h"
#include "smtp_mail/smtp_mail_description.h"
#include "tests/unit/project_file.h"
#include "win_popup/win_popup_description.h"

namespace brantel {
namespace {

using ::testing::HasSubstr;

// The values of the fields that are texts, in file order.
Instance WithTexts(const ClassDescription& notifier_class, const std::vector<std::string>& texts) {
  Instance instance(notifier_class.instances.fields.size());
  for (std::size_t i = 0; i < texts.size(); ++i)
    instance.set_text(i, texts[i]);
  return instance;
}

std::string AddPage(const ClassDescription& notifier_class, const std::vector<std::string>& texts) {
  return std::string(BuildAddPage(notifier_class, WithTexts(notifier_class, texts)).view());
}

std::string EditPage(const ClassDescription& notifier_class, std::string_view name,
                     const std::vector<std::string>& texts) {
  return std::string(BuildEditPage(notifier_class, name, WithTexts(notifier_class, texts)).view());
}

struct Golden {
  const char* stem;
  const ClassDescription& notifier_class;
  std::vector<std::string> add_values;
  std::vector<std::string> edit_values;
};

// Values without a row stand there to show that they stay out of the pages.
const std::vector<std::string> kBeeperValues = {"555-0199", "no row",  "11*\"up\"",
                                                "12<down>", "13&trap", "no row either"};
std::vector<std::string> PagerValues(const std::string& protocol) {
  return {"+44 20 7946 0958", "se\"cret", "12<34>5", "%C & more", protocol};
}
const std::vector<std::string> kMailValues = {
    "192.0.2.25", "ops@example.com,\"Night\" <night@example.com>", "%s <monitor@example.com>",
    "Alert & more", "Device <b>%D</b> is \"down\".\r\nSecond line\r\n\r\nLast & least"};
const std::vector<std::string> kPopupValues = {"NIGHT\"PC\"", "Device <%D> is down & out"};

const Golden kGoldens[] = {
    {"beeper", kBeeper, kBeeperValues, kBeeperValues},
    {"pager", kPager, PagerValues("NTT"), PagerValues("UCP-SMS")},
    {"smtp_mail", kSMTPMail, kMailValues, kMailValues},
    {"win_popup", kWinPopup, kPopupValues, kPopupValues},
};

class GoldenPages : public ::testing::TestWithParam<Golden> {
 protected:
  [[nodiscard]] static std::string Page(const std::string& name) {
    return GoldenFile(GetParam().stem + ("_" + name) + ".html");
  }
};

INSTANTIATE_TEST_SUITE_P(Classes, GoldenPages, ::testing::ValuesIn(kGoldens),
                         [](const auto& golden) { return std::string(golden.param.stem); });

TEST_P(GoldenPages, AreTheAddPages) {
  EXPECT_EQ(AddPage(GetParam().notifier_class, GetParam().add_values), Page("add_page"));
}

TEST_P(GoldenPages, AreTheAddPagesWithoutValues) {
  EXPECT_EQ(AddPage(GetParam().notifier_class, {}), Page("add_page_without_default"));
}

TEST_P(GoldenPages, AreTheEditPages) {
  EXPECT_EQ(EditPage(GetParam().notifier_class, "Night shift", GetParam().edit_values),
            Page("edit_page"));
}

TEST(BuildEditPage, EscapesTheNameAtBothPlaces) {
  const std::string page = EditPage(kWinPopup, "R&D \"<b>\"", {});
  EXPECT_THAT(page, HasSubstr(R"(name="origname" value="R&amp;D &quot;&lt;b&gt;&quot;">)"));
  EXPECT_THAT(page, HasSubstr("name=instancename value=\"R&amp;D &quot;&lt;b&gt;&quot;\">"));
}

TEST(BuildEditPage, TakesPercentSignsInValuesAsTheyAre) {
  const std::string page = EditPage(kWinPopup, "%s", {"%s", "%n%d"});
  EXPECT_THAT(page, HasSubstr(R"(name="origname" value="%s">)"));
  EXPECT_THAT(page, HasSubstr("name=destination value=\"%s\">"));
  EXPECT_THAT(page, HasSubstr("name=message value=\"%n%d\">"));
}

TEST(BuildEditPage, TakesValuesOfAnyLength) {
  const std::string value(100000, '"');
  std::string escaped;
  for (std::size_t i = 0; i < value.size(); ++i)
    escaped += "&quot;";
  EXPECT_THAT(EditPage(kWinPopup, "name", {value, value}),
              HasSubstr("name=message value=\"" + escaped + "\"></TD></TR>\r\n"));
}

TEST(BuildAddPage, TakesValuesOfAnyLength) {
  const std::string value(100000, '"');
  EXPECT_THAT(AddPage(kWinPopup, {value, value}),
              HasSubstr("name=message value=\"" + value + "\"></TD></TR>\r\n"));
}

std::string WithProtocol(const std::string& protocol) {
  return EditPage(kPager, "name", {"", "", "", "", protocol});
}

TEST(PagerPage, ChecksTheProtocolOfTheInstanceAlone) {
  for (const std::string protocol : {"TAP", "SMS-TAP", "NTT", "UCP-SMS"}) {
    const std::string page = WithProtocol(protocol);
    EXPECT_THAT(page, HasSubstr(" value=\"" + protocol + "\" checked>" + protocol));
    EXPECT_EQ(page.find(" checked"), page.rfind(" checked")) << protocol;
  }
}

TEST(PagerPage, ChecksTapForEveryOtherTextAndKeepsThatOutOfThePage) {
  for (const std::string protocol : {"", "tap", "Sms-Tap", "TAP ", "\"><b>"}) {
    EXPECT_EQ(WithProtocol(protocol), WithProtocol("TAP")) << protocol;
  }
}

}  // namespace
}  // namespace brantel
