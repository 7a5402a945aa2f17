#include "smtp_mail/smtp_mail_dialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <map>

#include "instance/instance_codec.h"
#include "smtp_mail/smtp_mail_description.h"
#include "tests/unit/dialog/instance_dialog_fixture.h"
#include "tests/unit/smtp_mail/network/fake_relay.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

constexpr int kName = 203;
constexpr int kGateway = 202;
constexpr int kTo = 205;
constexpr int kFrom = 204;
constexpr int kSubject = 206;
constexpr int kMessage = 201;
constexpr int kHelp = 208;

const std::string kGatewayInvalid =
    "message Invalid value - The 'Mail Server' field must have a valid Internet Protocol (IP) "
    "address";
const std::string kFromInvalid = "message Invalid value - The 'From' field must have a valid value";
const std::string kToInvalid = "message Invalid value - The 'To' field must have a valid value";

// An address in network order, whatever the machine's own is.
Ipv4Address AddressOf(const std::array<std::uint8_t, 4>& bytes) {
  return {std::bit_cast<std::uint32_t>(bytes)};
}

class FakeNameResolver final : public NameResolver {
 public:
  std::map<std::string, Ipv4Address> hosts;
  std::vector<std::string> questions;

  std::optional<Ipv4Address> Resolve(const std::string& name) override {
    questions.push_back(name);
    const auto host = hosts.find(name);
    return host == hosts.end() ? std::nullopt : std::optional(host->second);
  }
};

std::string FileOf(const std::string& gateway) {
  Instance instance(5);
  instance.set_text(smtp_mail_field::kGateway, gateway);
  instance.set_text(smtp_mail_field::kTo, "ann@example.com, bob@example.com");
  instance.set_text(smtp_mail_field::kFrom, "Watch <ops@%s>");
  instance.set_text(smtp_mail_field::kSubject, "%D is down");
  instance.set_text(smtp_mail_field::kMessage, "First line\r\n\r\nLast line\r\n");
  return EncodeInstance(kSMTPMail.instances, instance);
}

class SmtpMailDialogTest : public ClassDialogFixture {
 protected:
  std::unique_ptr<InstanceDialog> Make(InstanceDialogCall call) override {
    return std::make_unique<SmtpMailDialog>(view_, files_, std::move(call), network_, resolver_);
  }

  void EnterSamples() {
    view_.texts[kName] = "night";
    view_.texts[kGateway] = "192.0.2.25";
    view_.texts[kTo] = "ann@example.com, bob@example.com";
    view_.texts[kFrom] = "Watch <ops@%s>";
    view_.texts[kSubject] = "%D is down";
    view_.texts[kMessage] = "First line\r\n\r\nLast line\r\n";
  }

  FakeRelay network_;
  FakeNameResolver resolver_;
};

TEST_F(SmtpMailDialogTest, IsDialog112WithoutPicturesAndWithHelpAtTheContents) {
  ExpectDialog(112, 0, kHelp, "help contents");
  dialog_->Help();
  EXPECT_THAT(view_.events, ElementsAre("help contents", "help contents"));
}

TEST_F(SmtpMailDialogTest, AddsWithEmptyFieldsWhateverTheDefaultInstanceHolds) {
  files_.files["dir\\Default"] = FileOf("192.0.2.25");
  Add().Open();
  EXPECT_EQ(view_.title, "Add SMTP Instance");
  EXPECT_THAT(view_.texts, IsEmpty());
  EXPECT_THAT(view_.events, IsEmpty());
  files_.files.clear();
  Add().Open();
  EXPECT_THAT(view_.texts, IsEmpty());
  EXPECT_THAT(host_.log, IsEmpty());
}

TEST_F(SmtpMailDialogTest, EditsTheNamedInstance) {
  files_.files["dir\\night"] = FileOf("mail.example.com");
  Edit("night").Open();
  EXPECT_EQ(view_.title, "Edit SMTP Instance");
  EXPECT_EQ(view_.texts[kName], "night");
  EXPECT_EQ(view_.texts[kGateway], "mail.example.com");
  EXPECT_EQ(view_.texts[kTo], "ann@example.com, bob@example.com");
  EXPECT_EQ(view_.texts[kFrom], "Watch <ops@%s>");
  EXPECT_EQ(view_.texts[kSubject], "%D is down");
  EXPECT_EQ(view_.texts[kMessage], "First line\r\n\r\nLast line\r\n");
  EXPECT_THAT(resolver_.questions, IsEmpty());
  EXPECT_THAT(host_.log, IsEmpty());
}

TEST_F(SmtpMailDialogTest, TellsWhenTheInstanceCannotBeLoaded) {
  ExpectLoadFailureTold("Edit SMTP Instance", "\r\n");
  EXPECT_THAT(view_.texts, IsEmpty());
}

TEST_F(SmtpMailDialogTest, LimitsTheNameAndTheServerAlone) {
  Add().Open();
  EXPECT_EQ(view_.limits[kName], 512U);
  EXPECT_EQ(view_.limits[kGateway], 512U);
  for (const int control : {kTo, kFrom, kSubject, kMessage}) {
    EXPECT_EQ(view_.limits[control], std::string::npos) << control;
  }
}

TEST_F(SmtpMailDialogTest, WantsNameServerSenderAndRecipientsInThisOrder) {
  InstanceDialog& dialog = Add();
  dialog.Open();
  EXPECT_THAT(PressOk(dialog), ElementsAre(kNameMissing, "focus 203"));
  files_.files["dir\\taken"] = FileOf("192.0.2.25");
  view_.texts[kName] = "taken";
  EXPECT_THAT(PressOk(dialog), ElementsAre(kNameTaken, "focus 203"));
  view_.texts[kName] = "night";
  EXPECT_THAT(PressOk(dialog), ElementsAre(kGatewayInvalid, "focus 202"));
  view_.texts[kGateway] = "192.0.2.25";
  EXPECT_THAT(PressOk(dialog), ElementsAre(kFromInvalid, "focus 204"));
  view_.texts[kFrom] = "@";
  EXPECT_THAT(PressOk(dialog), ElementsAre(kToInvalid, "focus 205"));
  view_.texts[kTo] = "@";
  EXPECT_EQ(files_.files.size(), 1U);
  EXPECT_THAT(PressOk(dialog), ElementsAre("close"));
  EXPECT_EQ(dialog.saved_name(), "night");
}

TEST_F(SmtpMailDialogTest, SavesWhatWasEntered) {
  InstanceDialog& dialog = Add();
  dialog.Open();
  EnterSamples();
  EXPECT_THAT(PressOk(dialog), ElementsAre("close"));
  EXPECT_THAT(files_.files, ElementsAre(Pair("dir\\night", FileOf("192.0.2.25"))));
}

TEST_F(SmtpMailDialogTest, SavesTextsOfAnyLength) {
  InstanceDialog& dialog = Add();
  dialog.Open();
  EnterSamples();
  view_.texts[kMessage] = std::string(40000, 'x');
  EXPECT_THAT(PressOk(dialog), ElementsAre("close"));
  const auto saved = DecodeInstance(kSMTPMail.instances, files_.files["dir\\night"]);
  ASSERT_TRUE(saved);
  EXPECT_EQ(saved->text(smtp_mail_field::kMessage), std::string(40000, 'x'));
}

TEST_F(SmtpMailDialogTest, NeedsNeitherSubjectNorMessage) {
  InstanceDialog& dialog = Add();
  dialog.Open();
  EnterSamples();
  view_.texts[kSubject] = view_.texts[kMessage] = "";
  EXPECT_THAT(PressOk(dialog), ElementsAre("close"));
}

TEST_F(SmtpMailDialogTest, WantsAnAtSignInSenderAndRecipients) {
  InstanceDialog& dialog = Add();
  dialog.Open();
  EnterSamples();
  for (const std::string without : {"", "ops", "ops.example.com", " "}) {
    view_.texts[kFrom] = without;
    EXPECT_THAT(PressOk(dialog), ElementsAre(kFromInvalid, "focus 204")) << without;
  }
  view_.texts[kFrom] = "ops@example.com";
  for (const std::string without : {"", "ann, bob", " "}) {
    view_.texts[kTo] = without;
    EXPECT_THAT(PressOk(dialog), ElementsAre(kToInvalid, "focus 205")) << without;
  }
  EXPECT_THAT(files_.files, IsEmpty());
}

TEST_F(SmtpMailDialogTest, LooksUpNoAddress) {
  InstanceDialog& dialog = Add();
  EnterSamples();
  resolver_.hosts["192.0.2.25"] = AddressOf({10, 0, 0, 1});
  EXPECT_THAT(PressOk(dialog), ElementsAre("close"));
  EXPECT_THAT(resolver_.questions, IsEmpty());
}

TEST_F(SmtpMailDialogTest, SavesTheAddressOfAName) {
  resolver_.hosts = {{"mail", AddressOf({10, 20, 30, 40})},
                     {"zero", AddressOf({0, 0, 0, 0})},
                     {"high", AddressOf({255, 254, 128, 255})}};
  const std::map<std::string, std::string> addresses = {
      {"mail", "10.20.30.40"}, {"zero", "0.0.0.0"}, {"high", "255.254.128.255"}};
  for (const auto& [name, address] : addresses) {
    files_.files.clear();
    InstanceDialog& dialog = Add();
    EnterSamples();
    view_.texts[kGateway] = name;
    EXPECT_THAT(PressOk(dialog), ElementsAre("close"));
    EXPECT_THAT(files_.files, ElementsAre(Pair("dir\\night", FileOf(address))));
  }
}

TEST_F(SmtpMailDialogTest, LooksUpANameWhenItIsSavedAndOnlyThen) {
  files_.files["dir\\night"] = FileOf("mail");
  resolver_.hosts["mail"] = AddressOf({10, 20, 30, 40});
  InstanceDialog& dialog = Edit("night");
  dialog.Open();
  dialog.Change(kGateway);
  EXPECT_THAT(resolver_.questions, IsEmpty());
  EXPECT_THAT(PressOk(dialog), ElementsAre("close"));
  EXPECT_THAT(resolver_.questions, ElementsAre("mail"));
  EXPECT_THAT(files_.files, ElementsAre(Pair("dir\\night", FileOf("10.20.30.40"))));
}

TEST_F(SmtpMailDialogTest, ShowsTheAddressAlsoWhenAnotherFieldIsRefused) {
  resolver_.hosts["mail"] = AddressOf({10, 20, 30, 40});
  InstanceDialog& dialog = Add();
  EnterSamples();
  view_.texts[kGateway] = "mail";
  view_.texts[kFrom] = "";
  EXPECT_THAT(PressOk(dialog), ElementsAre(kFromInvalid, "focus 204"));
  EXPECT_EQ(view_.texts[kGateway], "10.20.30.40");
}

TEST_F(SmtpMailDialogTest, RefusesANameThatNobodyKnows) {
  InstanceDialog& dialog = Add();
  EnterSamples();
  for (const std::string unknown : {"mail", " ", "192.0.2.256"}) {
    view_.texts[kGateway] = unknown;
    EXPECT_THAT(PressOk(dialog), ElementsAre(kGatewayInvalid, "focus 202"));
    EXPECT_EQ(view_.texts[kGateway], unknown);
  }
  EXPECT_THAT(resolver_.questions, ElementsAre("mail", " ", "192.0.2.256"));
  view_.texts[kGateway] = "";
  EXPECT_THAT(PressOk(dialog), ElementsAre(kGatewayInvalid, "focus 202"));
  EXPECT_EQ(resolver_.questions.size(), 3U);
  EXPECT_THAT(files_.files, IsEmpty());
}

TEST_F(SmtpMailDialogTest, ReadsNoMoreThan512BytesOfTheServer) {
  resolver_.hosts[std::string(512, 'x')] = AddressOf({10, 20, 30, 40});
  InstanceDialog& dialog = Add();
  EnterSamples();
  view_.texts[kGateway] = std::string(600, 'x');
  EXPECT_THAT(PressOk(dialog), ElementsAre("close"));
  EXPECT_THAT(resolver_.questions, ElementsAre(std::string(512, 'x')));
}

TEST_F(SmtpMailDialogTest, RenamesAnInstance) {
  files_.files["dir\\night"] = FileOf("192.0.2.25");
  InstanceDialog& dialog = Edit("night");
  dialog.Open();
  view_.texts[kName] = "day";
  EXPECT_THAT(PressOk(dialog), ElementsAre("close"));
  EXPECT_THAT(files_.files, ElementsAre(Pair("dir\\day", FileOf("192.0.2.25"))));
}

TEST_F(SmtpMailDialogTest, IsModifiedByEachOfItsFields) {
  for (const int control : {kName, kGateway, kTo, kFrom, kSubject, kMessage}) {
    InstanceDialog& dialog = Add();
    dialog.Open();
    EXPECT_FALSE(dialog.modified());
    dialog.Change(control);
    EXPECT_TRUE(dialog.modified()) << control;
  }
}

}  // namespace
}  // namespace brantel
