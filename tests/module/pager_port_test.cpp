// How Pager's Send sets its port. Pseudo-terminals keep neither 7 bits nor parity, so the module's
// calls of the system are caught here.
#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string_view>

#include "system/windows/bstr_win32.h"
#include "tests/module/import_patch.h"
#include "tests/module/modem_dialog_fixture.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;

// What the module has asked of the system.
std::string opened_port;
DCB wanted_control;

HANDLE WINAPI OpenAnyPort(const char* path, DWORD access, DWORD share,
                          SECURITY_ATTRIBUTES* security, DWORD creation, DWORD flags, HANDLE like) {
  const std::string_view name = path;
  if (!name.starts_with("COM")) {
    return CreateFileA(path, access, share, security, creation, flags, like);
  }
  opened_port = name;
  return CreateFileA("NUL", access, share, security, creation, flags, like);
}

// Every flag is set, as some driver might have it.
BOOL WINAPI ReportControl(HANDLE, DCB* control) {
  std::memset(control, 0xFF, sizeof *control);
  return TRUE;
}

// Ends the send there.
BOOL WINAPI RefuseControl(HANDLE, DCB* control) {
  wanted_control = *control;
  SetLastError(ERROR_GEN_FAILURE);
  return FALSE;
}

class PagerPortTest : public ModemDialogFixture {
 protected:
  PagerPortTest() : ModemDialogFixture(ExpectedPagerDialog(), kPagerSettingsKey, 234) {
    opened_port.clear();
    std::memset(&wanted_control, 0, sizeof wanted_control);
  }

  // Sends with the instance and expects that it fails where its port is set.
  void ExpectPort(const std::wstring& instance, const wchar_t* announcement) {
    const auto notifier = module_.CreateNotifier(expected_.notifier_class);
    ASSERT_EQ(notifier->Initialize(&host_), S_OK);
    host_.log_calls.clear();
    EXPECT_EQ(notifier->Send(Bstr((scratch_.path() / instance).wstring()).get()), E_FAIL);
    EXPECT_THAT(host_.log_calls,
                ElementsAre(LogCall{1, announcement}, LogCall{1, L"set comm state error 31\r\n"}));
    notifier->Shutdown();
  }

 private:
  ImportPatch open_{module_.handle(), "CreateFileA", reinterpret_cast<void*>(OpenAnyPort)};
  ImportPatch get_{module_.handle(), "GetCommState", reinterpret_cast<void*>(ReportControl)};
  ImportPatch set_{module_.handle(), "SetCommState", reinterpret_cast<void*>(RefuseControl)};
};

// A control block with every flag set but for what is given.
void ExpectControl(DWORD rate, DWORD parity_check, BYTE bits, BYTE parity) {
  DCB expected;
  std::memset(&expected, 0xFF, sizeof expected);
  expected.BaudRate = rate;
  expected.fBinary = 1;
  expected.fParity = parity_check & 1;
  expected.ByteSize = bits;
  expected.Parity = parity;
  expected.StopBits = ONESTOPBIT;
  EXPECT_EQ(std::memcmp(&wanted_control, &expected, sizeof expected), 0);
}

TEST_F(PagerPortTest, HasSevenBitsAndEvenParityWhereNothingIsSet) {
  Store(L"night", expected_.sample_file);
  ExpectPort(L"night", L"Sending message to 0041 79 via 5550200 on COM1\r\n");
  EXPECT_EQ(opened_port, "COM1");
  ExpectControl(300, 1, 7, EVENPARITY);
}

TEST_F(PagerPortTest, HasWhatAnOperatorSetsForAlternate2) {
  Store(L"Default", expected_.sample_file);
  Add();
  session_->SetText(NameControl(), "night");
  PressInList(VK_END);
  OpenSettings();
  session_->ClickInPopup(k2400Baud);
  session_->ClickInPopup(kCom3);
  session_->ClickInPopup(k8N1);
  session_->ClickInPopup(kOk);
  session_->Click(kOk);
  ExpectEnd(S_OK, L"night");

  ExpectPort(L"night", L"Sending message to 0041 79 via 5550200 on COM3\r\n");
  EXPECT_EQ(opened_port, "COM3");
  ExpectControl(2400, 0, 8, NOPARITY);
}

TEST_F(PagerPortTest, HasTheRateOfAnIndexAndNoneBelow300) {
  Store(L"night", expected_.sample_file);
  const std::vector<std::pair<const wchar_t*, DWORD>> rates = {
      {L"4", 9600}, {L"9600", 9600}, {L"115200", 115200}, {L"150", 300}};
  for (const auto& [setting, rate] : rates) {
    StoreSetting(L"", L"Settings_Baud", setting);
    ExpectPort(L"night", L"Sending message to 0041 79 via 5550200 on COM1\r\n");
    ExpectControl(rate, 1, 7, EVENPARITY);
  }
}

}  // namespace
}  // namespace brantel
