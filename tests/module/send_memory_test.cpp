// Alerts of every class and every protocol for which the module finds no memory at one place, or
// from there on.
#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "system/windows/bstr_win32.h"
#include "tests/module/expected_classes.h"
#include "tests/module/instance_bytes.h"
#include "tests/module/loaded_module.h"
#include "tests/module/module_memory.h"
#include "tests/module/recording_host.h"
#include "tests/module/scratch_directory.h"
#include "tests/module/settings_key.h"
#include "tests/module/stand_in_modem.h"
#include "tests/module/stand_in_telephony.h"

namespace brantel {
namespace {

struct StrainedAlert {
  std::string name;
  ExpectedClass notifier_class;
  std::string fields;  // of the instance
  // What goes to the far end when it has taken the alert, if it can.
  std::string_view delivery{};
};

std::string PagerFields(std::string_view protocol) {
  return TextField("5550200") + TextField("7") + TextField("03-1234-5678") +
         TextField("the disk of the server is full") + TextField(protocol) + LengthBytes(0);
}

const std::vector<StrainedAlert> kAlerts = {
    {"Beeper", kBeeper,
     TextField("5550300") + TextField("") + TextField("1") + TextField("2") + TextField("3") +
         TextField("") + LengthBytes(0),
     "ATDT5550300"},
    {"Tap", kPager, PagerFields("TAP"), "\x02"},
    {"SmsTap", kPager, PagerFields("SMS-TAP"), "\x02"},
    {"Ucp", kPager, PagerFields("UCP-SMS"), "\x02"},
    {"Ntt", kPager, PagerFields("NTT"), "8000C00000"},
    // Where nobody listens, nobody answers, nothing is installed.
    {"Mail", kSMTPMail,
     TextField("127.26.1.1") + TextField("ann@example.org") + TextField("ops@example.org") +
         TextField("the disk is full") + TextField("It is.\r\n")},
    {"Call", kVoice,
     TextField("5550100") + TextField("repeat.wav") + std::string("\xFF\xFF\xFF\xFF\0\0\0\0", 8) +
         TextField("") + TextField("") + TextField("") + TextField("")},
    {"Program", kLaunchProgram,
     TextField("C:\\no such program.exe") + TextField("C:\\") + TextField("the device is down")},
};

class SendWithoutMemory : public ::testing::TestWithParam<StrainedAlert> {
 protected:
  SendWithoutMemory() {
    modem_.answer_to = AnswerOfCentres;
    host_.trigger_word = kAlertItemDown;
    instance_ =
        Bstr(scratch_.Write(L"night", MagicBytes(GetParam().notifier_class) + GetParam().fields)
                 .wstring());
  }

  HRESULT Send(const ComPointer<INotifier>& notifier) {
    host_.log_calls.clear();
    modem_.written.clear();
    memory_.allocations = 0;
    return notifier->Send(instance_.get());
  }

  [[nodiscard]] bool IsDelivered() const {
    return std::ranges::any_of(modem_.written, [](const std::string& sent) {
      return sent.starts_with(GetParam().delivery);
    });
  }

  const NoSettings no_beeper_settings_{kBeeperSettingsKey};
  const NoSettings no_pager_settings_{kPagerSettingsKey};
  ScratchDirectory scratch_;
  Bstr instance_;
  LoadedModule module_;
  RecordingHost host_;
  StandInModem modem_{module_.handle()};
  StandInTelephony telephony_{module_.handle()};
  ModuleMemory memory_{module_.handle()};
};

INSTANTIATE_TEST_SUITE_P(Alerts, SendWithoutMemory, ::testing::ValuesIn(kAlerts),
                         [](const auto& tested) { return tested.param.name; });

TEST_P(SendWithoutMemory, IsNoSuccessUnlessTheAlertIsDelivered) {
  const auto notifier = module_.CreateNotifier(GetParam().notifier_class);
  ASSERT_EQ(notifier->Initialize(&host_), S_OK);
  const HRESULT expected = Send(notifier);
  ASSERT_EQ(expected, GetParam().delivery.empty() ? E_FAIL : S_OK);
  const std::size_t allocations = memory_.allocations;
  ASSERT_GT(allocations, 0U);
  RecordProperty("allocations", static_cast<int>(allocations));
  const LONG references = host_.references();
  for (const bool fails_for_good : {false, true}) {
    memory_.fails_for_good = fails_for_good;
    for (std::size_t n = 0; n < allocations; ++n) {
      memory_.fails_at = n;
      const HRESULT result = Send(notifier);
      memory_.fails_at.reset();
      EXPECT_TRUE(result == expected || result == E_FAIL) << n;
      EXPECT_TRUE(result == E_FAIL || IsDelivered()) << n;
      EXPECT_TRUE(result == S_OK || fails_for_good || !host_.log_calls.empty()) << n;
      EXPECT_TRUE(modem_.ports.empty()) << n;
      EXPECT_EQ(host_.references(), references) << n;
      EXPECT_EQ(Send(notifier), expected) << n;
    }
  }
  notifier->Shutdown();
}

TEST_P(SendWithoutMemory, TellsTheHostThatItWasForWantOfMemory) {
  const auto notifier = module_.CreateNotifier(GetParam().notifier_class);
  ASSERT_EQ(notifier->Initialize(&host_), S_OK);
  // The path, before anything else.
  memory_.fails_at = 0;
  EXPECT_EQ(Send(notifier), E_FAIL);
  memory_.fails_at.reset();
  EXPECT_THAT(host_.log_calls, ::testing::ElementsAre(LogCall{1, L"Failed alloc memory data\r\n"}));
  notifier->Shutdown();
}

}  // namespace
}  // namespace brantel
