#include <winsock2.h>
#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/module/dialog_fixture.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::Ge;
using ::testing::IsEmpty;
using ::testing::Pair;

constexpr int kMailName = 203;
constexpr int kServer = 202;
constexpr int kTo = 205;
constexpr int kFrom = 204;
constexpr int kSubject = 206;
constexpr int kMailMessage = 201;

constexpr const char* kServerInvalid =
    "Invalid value - The 'Mail Server' field must have a valid Internet Protocol (IP) address";
constexpr const char* kFromInvalid = "Invalid value - The 'From' field must have a valid value";
constexpr const char* kToInvalid = "Invalid value - The 'To' field must have a valid value";

// A label of more than 63 characters: the resolver itself knows that there is no such host.
const std::string kUnknown = std::string(64, 'x') + ".example";

class SmtpMailDialogTest : public DialogFixture {
 protected:
  SmtpMailDialogTest() : DialogFixture(ExpectedSmtpMailDialog()) {}

  void Store(const wchar_t* name, const std::string& file) {
    ASSERT_TRUE(std::filesystem::exists(scratch_.Write(name, file)));
  }

  // The file of the instance "night", which has to be the only one. The server's text in it is of
  // the sample's length.
  [[nodiscard]] std::string SavedServer() const {
    const auto files = scratch_.Files();
    const auto night = files.find(L"night");
    if (files.size() != 1 || night == files.end()) return "not saved";
    return night->second.substr(20, static_cast<unsigned char>(night->second[16]) - 1U);
  }
};

TEST_F(SmtpMailDialogTest, OpensEmptyAndLogsNothingWithAndWithoutADefault) {
  Add();
  EXPECT_EQ(WindowText(session_->dialog()), "Add SMTP Instance");
  session_.reset();
  Store(L"Default", expected_.sample_file);
  Add();
  for (const ExpectedEdit& edit : expected_.edits) {
    EXPECT_EQ(session_->Text(edit.control), "") << edit.control;
  }
  EXPECT_EQ(session_->Focus(), kMailName);
  EXPECT_THAT(host_.log_calls, IsEmpty());
}

TEST_F(SmtpMailDialogTest, SavesTheAddressOfAServersName) {
  Add();
  EnterSamples();
  session_->SetText(kServer, "localhost");
  session_->Click(kOk);
  ExpectEnd(S_OK, L"night");
  EXPECT_THAT(scratch_.Files(), ElementsAre(Pair(L"night", expected_.sample_file)));
}

TEST_F(SmtpMailDialogTest, ShowsTheAddressWhileAnotherFieldIsRefused) {
  Add();
  EnterSamples();
  session_->SetText(kServer, "localhost");
  session_->SetText(kFrom, "watch");
  session_->Click(kOk);
  ExpectMessage(kFromInvalid);
  EXPECT_EQ(session_->Focus(), kFrom);
  EXPECT_EQ(session_->Text(kServer), "127.0.0.1");
}

TEST_F(SmtpMailDialogTest, KeepsAnAddressAsItIsWritten) {
  for (const char* address : {"127.0.0.1", "10.20.30.40", "127.1"}) {
    Store(L"night", expected_.sample_file);
    Edit(L"night");
    session_->SetText(kServer, address);
    session_->Click(kOk);
    ExpectEnd(S_OK, L"night");
    EXPECT_EQ(SavedServer(), address);
  }
}

TEST_F(SmtpMailDialogTest, RefusesANameThatNobodyKnows) {
  Add();
  EnterSamples();
  session_->SetText(kServer, kUnknown);
  session_->Click(kOk);
  ExpectMessage(kServerInvalid);
  EXPECT_EQ(session_->Focus(), kServer);
  EXPECT_EQ(session_->Text(kServer), kUnknown);
  EXPECT_THAT(scratch_.Files(), IsEmpty());
}

TEST_F(SmtpMailDialogTest, LooksNamesUpAlsoWithoutAHost) {
  DialogSession session(module_, {.notifier_class = expected_.notifier_class,
                                  .directory = scratch_.path().wstring()});
  for (const ExpectedEdit& edit : expected_.edits) {
    session.SetText(edit.control, edit.sample);
  }
  session.SetText(kServer, "localhost");
  session.Click(kOk);
  EXPECT_EQ(session.Await().result, S_OK);
  EXPECT_EQ(SavedServer(), "127.0.0.1");
  EXPECT_EQ(socket(AF_INET, SOCK_STREAM, IPPROTO_TCP), INVALID_SOCKET);
  EXPECT_EQ(WSAGetLastError(), WSANOTINITIALISED);
}

TEST_F(SmtpMailDialogTest, WantsAnAtSignFromSenderAndRecipients) {
  Add();
  EnterSamples();
  session_->SetText(kTo, "ann, bob");
  session_->Click(kOk);
  ExpectMessage(kToInvalid);
  EXPECT_EQ(session_->Focus(), kTo);
  session_->SetText(kTo, "@");
  session_->Click(kOk);
  ExpectEnd(S_OK, L"night");
}

TEST_F(SmtpMailDialogTest, TakesEnterInTheMessageForALineEnd) {
  Add();
  EnterSamples();
  session_->SetText(kMailMessage, "");
  session_->PressAltAnd('s');
  session_->PressKey(VK_TAB);
  ASSERT_EQ(session_->Focus(), kMailMessage);
  session_->Type("a");
  session_->PressKey(VK_RETURN);
  session_->Type("b");
  ASSERT_NE(session_->dialog(), nullptr);
  EXPECT_EQ(session_->Text(kMailMessage), "a\r\nb");
  session_->PressKey(VK_TAB);
  EXPECT_EQ(session_->Focus(), kOk);
}

TEST_F(SmtpMailDialogTest, LimitsTheNameAndTheServerAlone) {
  Add();
  const auto limit = [&](int control) {
    return static_cast<DWORD>(SendMessageA(session_->Control(control), EM_GETLIMITTEXT, 0, 0));
  };
  EXPECT_EQ(limit(kMailName), 512U);
  EXPECT_EQ(limit(kServer), 512U);
  for (const int control : {kTo, kFrom, kSubject, kMailMessage}) {
    EXPECT_THAT(limit(control), Ge(0x7FFFFFFEU)) << control;
  }
}

TEST_F(SmtpMailDialogTest, KeepsTextsOfAnyLength) {
  std::string long_message;
  while (long_message.size() < 40000) {
    long_message += "A line of a message that is long.\r\n";
  }
  Add();
  EnterSamples();
  session_->SetText(kMailMessage, long_message);
  session_->SetText(kTo, std::string(2000, 'x') + "@b.example");
  session_->Click(kOk);
  ExpectEnd(S_OK, L"night");
  const auto saved = scratch_.Files();
  Edit(L"night");
  EXPECT_EQ(session_->Text(kMailMessage), long_message);
  EXPECT_EQ(session_->Text(kTo), std::string(2000, 'x') + "@b.example");
  session_->Click(kOk);
  ExpectEnd(S_OK, L"night");
  EXPECT_EQ(scratch_.Files(), saved);
}

}  // namespace
}  // namespace brantel
