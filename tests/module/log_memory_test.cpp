// An alert for whose log there is no memory. The module makes a BSTR for each line, and these fail
// here, one in each alert.
#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <oleauto.h>

#include <optional>
#include <string>
#include <vector>

#include "system/windows/bstr_win32.h"
#include "tests/module/expected_classes.h"
#include "tests/module/import_patch.h"
#include "tests/module/instance_bytes.h"
#include "tests/module/loaded_module.h"
#include "tests/module/recording_host.h"
#include "tests/module/scratch_directory.h"
#include "tests/module/settings_key.h"
#include "tests/module/stand_in_modem.h"
#include "tests/module/stand_in_telephony.h"

namespace brantel {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;

// The module's BSTRs since the last alert began, and which of them there is no memory for.
std::size_t texts_made = 0;
std::optional<std::size_t> lost_text;

BSTR WINAPI AllocateText(const OLECHAR* text, UINT length) {
  return lost_text == texts_made++ ? nullptr : SysAllocStringLen(text, length);
}

class LogMemory : public ::testing::Test {
 protected:
  LogMemory() { lost_text.reset(); }
  ~LogMemory() override { lost_text.reset(); }

  HRESULT Send(const ComPointer<INotifier>& notifier) {
    host_.log_calls.clear();
    texts_made = 0;
    return notifier->Send(instance_.get());
  }

  void Write(const std::string& bytes) {
    instance_ = Bstr(scratch_.Write(L"night", bytes).wstring());
  }

  ScratchDirectory scratch_;
  Bstr instance_;
  LoadedModule module_;
  RecordingHost host_;
  ImportPatch patch_{module_.handle(), "SysAllocStringLen", reinterpret_cast<void*>(&AllocateText)};
};

class ModemLogMemory : public LogMemory {
 protected:
  // Sends once for each line of the log that can be lost.
  void ExpectTheSameWithoutAnyLine(const ExpectedClass& expected, std::size_t lines) {
    const auto notifier = module_.CreateNotifier(expected);
    ASSERT_EQ(notifier->Initialize(&host_), S_OK);
    modem_.answer_to = AnswerOfCentres;
    ASSERT_EQ(Send(notifier), S_OK);
    ASSERT_EQ(host_.log_calls.size(), lines);
    // The first is the text that the host expands.
    ASSERT_EQ(texts_made, lines + 1);
    const std::vector<std::string> written = modem_.written;
    ASSERT_THAT(written, Contains("+++"));
    for (lost_text = 1; *lost_text <= lines; ++*lost_text) {
      modem_.written.clear();
      EXPECT_EQ(Send(notifier), S_OK) << *lost_text;
      EXPECT_EQ(host_.log_calls.size(), lines - 1) << *lost_text;
      EXPECT_EQ(modem_.written, written) << *lost_text;
      EXPECT_TRUE(modem_.ports.empty()) << *lost_text;
    }
    notifier->Shutdown();
  }

  StandInModem modem_{module_.handle()};
};

TEST_F(ModemLogMemory, DoesNotLoseThePager) {
  const NoSettings no_settings(kPagerSettingsKey);
  Write(MagicBytes(kPager) + TextField("5550200") + TextField("secret") + TextField("0041") +
        TextField("down") + TextField("TAP") + LengthBytes(0));
  ExpectTheSameWithoutAnyLine(kPager, 23);
}

TEST_F(ModemLogMemory, DoesNotLoseTheBeeper) {
  const NoSettings no_settings(kBeeperSettingsKey);
  host_.trigger_word = kAlertItemDown;
  Write(MagicBytes(kBeeper) + TextField("5550300") + TextField("") + TextField("1") +
        TextField("2") + TextField("3") + TextField("") + LengthBytes(0));
  ExpectTheSameWithoutAnyLine(kBeeper, 22);
}

// Without that line the call used to wait for ever.
TEST_F(LogMemory, DoesNotLoseTheConnectionOfACall) {
  const StandInTelephony telephony(module_.handle());
  const std::string nothing_played("\xFF\xFF\xFF\xFF\0\0\0\0", 8);  // a count of -1, button 0
  Write(MagicBytes(kVoice) + TextField("5550100") + TextField("repeat.wav") + nothing_played +
        TextField("") + TextField("") + TextField("") + TextField(""));
  const auto notifier = module_.CreateNotifier(kVoice);
  ASSERT_EQ(notifier->Initialize(&host_), S_OK);
  ASSERT_EQ(Send(notifier), E_FAIL);
  const std::vector<LogCall> log = host_.log_calls;
  constexpr std::size_t kExpandedTexts = 2;
  ASSERT_EQ(texts_made, log.size() + kExpandedTexts);
  for (lost_text = kExpandedTexts; *lost_text < log.size() + kExpandedTexts; ++*lost_text) {
    std::vector<LogCall> shorter_log = log;
    shorter_log.erase(shorter_log.begin() + static_cast<int>(*lost_text - kExpandedTexts));
    EXPECT_EQ(Send(notifier), E_FAIL) << *lost_text;
    EXPECT_EQ(host_.log_calls, shorter_log) << *lost_text;
  }
  notifier->Shutdown();
}

TEST_F(LogMemory, DoesNotLoseTheReasonWhyAnInstanceIsNotLoaded) {
  instance_ = Bstr((scratch_.path() / L"missing").wstring());
  const auto notifier = module_.CreateNotifier(kLaunchProgram);
  ASSERT_EQ(notifier->Initialize(&host_), S_OK);
  lost_text = 0;
  EXPECT_EQ(Send(notifier), E_FAIL);
  EXPECT_THAT(host_.log_calls, ElementsAre(LogCall{1, L" - Failed to load notification from disk."},
                                           LogCall{1, L"\r"}));
}

}  // namespace
}  // namespace brantel
