// Hosts that misbehave in their callbacks, before alerts of every class and protocol: whatever they
// do there, nothing crashes, nobody is told of a success that is none, nothing stays open or held,
// and the next alert goes out.
#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <objbase.h>
#include <oleauto.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "system/windows/bstr_win32.h"
#include "tests/far_ends/alert_sender.h"
#include "tests/far_ends/far_ends.h"
#include "tests/module/allocation_ledger.h"
#include "tests/module/settings_key.h"
#include "tests/module/test_program.h"

namespace brantel {
namespace {

using ::testing::AnyOf;
using ::testing::Optional;
using Course = AlertSender::Course;

// Of another class or protocol: the next one of the table.
const SampleAlert& AnotherThan(const SampleAlert& alert) {
  const auto alerts = SampleAlerts();
  const auto found = std::ranges::find(alerts, std::string_view(alert.name), &SampleAlert::name);
  return found + 1 == alerts.end() ? alerts.front() : found[1];
}

// The module anew, what its alerts go to, and a host with a notifier.
struct World {
  World(const SampleInstances& instances, const SampleAlert& alert)
      : sender(std::in_place, module, instances, alert) {}

  LoadedModule module;
  FarEnds far_ends{module.handle()};
  std::optional<AlertSender> sender;
};

class HostileHost : public ::testing::TestWithParam<SampleAlert> {
 protected:
  AlertSender& sender() { return *world_->sender; }
  AlertHost& host() { return sender().host(); }
  const LoadedModule& module() { return world_->module; }

  // How many callbacks an alert has when nothing is amiss.
  std::size_t CountCallbacks() {
    EXPECT_EQ(sender().Send(), Course::kDelivered) << sender().DescribeLast();
    return sender().last_alert().callbacks;
  }

  void ExpectNextAlertToGoOut() {
    EXPECT_TRUE(world_->far_ends.AreIdle());
    EXPECT_EQ(sender().Send(), Course::kDelivered) << sender().DescribeLast();
  }

  // With the module anew, of which the first host has the log of all calls.
  void Rebind() {
    world_.reset();
    world_.emplace(instances_, GetParam());
  }

  // Sends another alert from within the n-th callback, for each n, and expects of both that they go
  // out, or that the inner one fails.
  void ExpectAlertsWithin(AlertSender& other) {
    const std::size_t callbacks = CountCallbacks();
    for (std::size_t n = 0; n < callbacks; ++n) {
      std::optional<Course> inner;
      bool is_within = false;
      host().at_callback = [&](std::size_t number) {
        if (number != n || is_within) return;
        is_within = true;
        inner = other.Send();
      };
      const Course outer = sender().Send();
      host().at_callback = nullptr;
      EXPECT_THAT(inner, Optional(AnyOf(Course::kDelivered, Course::kFailed))) << n;
      EXPECT_EQ(outer, Course::kDelivered) << n << ' ' << sender().DescribeLast();
      ExpectNextAlertToGoOut();
    }
  }

  // What a modem answers to a dial command, which may be longer than it takes, is deliberately
  // never examined.
  void ExpectNoFalseSuccess(Course course) {
    if (&GetParam().notifier_class == &kBeeper) return;
    EXPECT_NE(course, Course::kFalseSuccess) << sender().DescribeLast().substr(0, kMostShown);
  }

  // Ends the binding, after which nothing is held.
  void ExpectNothingLeft() {
    const FarEnds& far_ends = world_->far_ends;
    sender().notifier()->Shutdown();
    EXPECT_EQ(host().references(), 1);
    world_->sender.reset();
    EXPECT_TRUE(far_ends.AreIdle());
    EXPECT_EQ(far_ends.libraries.loaded(), LibrariesForGood());
    EXPECT_EQ(module().CanUnloadNow(), S_OK);
    EXPECT_FALSE(far_ends.modem.has_waited_for_ever());
    EXPECT_FALSE(far_ends.telephone.has_waited_for_ever());
  }

  const SampleInstances instances_;

 private:
  static constexpr std::size_t kMostShown = 200;

  // Telephony stays loaded as long as the process lives.
  static long LibrariesForGood() { return &GetParam().notifier_class == &kVoice ? 1 : 0; }

  const NoSettings no_beeper_settings_{kBeeperSettingsKey};
  const NoSettings no_pager_settings_{kPagerSettingsKey};
  std::optional<World> world_{std::in_place, instances_, GetParam()};
};

INSTANTIATE_TEST_SUITE_P(Alerts, HostileHost, ::testing::ValuesIn(SampleAlerts()),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST_P(HostileHost, MayFailInAnyCallback) {
  const std::size_t callbacks = CountCallbacks();
  for (std::size_t n = 0; n < callbacks; ++n) {
    host().fails_at = n;
    const Course course = sender().Send();
    host().fails_at.reset();
    // A beeper shows the code of the event alone where the host cannot say what for.
    if (n == 0 && &GetParam().notifier_class == &kBeeper) {
      EXPECT_EQ(course, Course::kWrongDelivery) << sender().DescribeLast();
    } else if (course == Course::kFailed) {
      EXPECT_EQ(sender().last_result(), AlertHost::kFailure) << n;
    } else {
      EXPECT_EQ(course, Course::kDelivered) << n << ' ' << sender().DescribeLast();
    }
    ExpectNextAlertToGoOut();
  }
  ExpectNothingLeft();
}

TEST_P(HostileHost, MayReleaseTheObjectInAnyCallback) {
  const std::size_t callbacks = CountCallbacks();
  for (std::size_t n = 0; n < callbacks; ++n) {
    HRESULT in_callback = E_UNEXPECTED;
    host().at_callback = [&](std::size_t number) {
      if (number != n) return;
      sender().notifier() = {};
      in_callback = module().CanUnloadNow();
    };
    EXPECT_EQ(sender().Send(), Course::kDelivered) << n << ' ' << sender().DescribeLast();
    EXPECT_EQ(in_callback, S_FALSE) << n;
    EXPECT_EQ(host().references(), 1) << n;
    EXPECT_EQ(module().CanUnloadNow(), S_OK) << n;
    Rebind();
    ExpectNextAlertToGoOut();
  }
  ExpectNothingLeft();
}

TEST_P(HostileHost, MayShutTheObjectDownInAnyCallback) {
  const std::size_t callbacks = CountCallbacks();
  for (std::size_t n = 0; n < callbacks; ++n) {
    host().at_callback = [&](std::size_t number) {
      if (number != n) return;
      EXPECT_EQ(sender().notifier()->Shutdown(), S_OK);
    };
    EXPECT_EQ(sender().Send(), Course::kDelivered) << n << ' ' << sender().DescribeLast();
    EXPECT_EQ(host().references(), 1) << n;
    Rebind();
    ExpectNextAlertToGoOut();
  }
  ExpectNothingLeft();
}

// A modem's port is waited for in vain where the alert has it that is interrupted. Calls must not
// overlap: hosts see to that.
class Reentrance : public HostileHost {};

std::vector<SampleAlert> AllButCalls() {
  std::vector<SampleAlert> alerts;
  for (const SampleAlert& alert : SampleAlerts()) {
    if (&alert.notifier_class != &kVoice) alerts.push_back(alert);
  }
  return alerts;
}

INSTANTIATE_TEST_SUITE_P(Alerts, Reentrance, ::testing::ValuesIn(AllButCalls()),
                         [](const auto& tested) { return std::string(tested.param.name); });

TEST_P(Reentrance, OfAnotherObjectIsAnAlertOfItsOwn) {
  {
    AlertSender other(module(), instances_, GetParam());
    ExpectAlertsWithin(other);
  }
  ExpectNothingLeft();
}

TEST_P(Reentrance, OfTheSameObjectIsAnAlertOfItsOwn) {
  ExpectAlertsWithin(sender());
  ExpectNothingLeft();
}

TEST_P(HostileHost, MaySendAnotherAlertInAnyCallback) {
  {
    AlertSender other(module(), instances_, AnotherThan(GetParam()));
    ExpectAlertsWithin(other);
  }
  EXPECT_EQ(sender().Send(), Course::kDelivered) << sender().DescribeLast();
  sender().notifier()->Shutdown();
  EXPECT_EQ(host().references(), 1);
}

// What a host may hand back for a text, none of which holds what the alert is to say. Lengths are
// in bytes.
struct HandedBack {
  const char* name;
  HRESULT (*replace)(BSTR* text);
};

HRESULT HandBack(BSTR* text, BSTR replacement, HRESULT result = S_OK) {
  SysFreeString(*text);
  *text = replacement;
  return result;
}

BSTR TextOf(std::size_t characters) {
  BSTR text = SysAllocStringLen(nullptr, static_cast<UINT>(characters));
  if (text != nullptr) std::fill_n(text, characters, L'1');
  return text;
}

const std::array kHandedBack = {
    HandedBack{"Null", [](BSTR* text) { return HandBack(text, nullptr); }},
    HandedBack{"Empty", [](BSTR* text) { return HandBack(text, SysAllocString(L"")); }},
    HandedBack{"OneByte", [](BSTR* text) { return HandBack(text, SysAllocStringByteLen("1", 1)); }},
    HandedBack{"OddLength",
               [](BSTR* text) { return HandBack(text, SysAllocStringByteLen("1\0002\0003", 5)); }},
    HandedBack{"OnlyNuls",
               [](BSTR* text) { return HandBack(text, SysAllocStringLen(L"\0\0\0\0", 4)); }},
    HandedBack{"NulsInside",
               [](BSTR* text) { return HandBack(text, SysAllocStringLen(L"1\0002\0003", 5)); }},
    HandedBack{"HalfOfAPair",
               [](BSTR* text) { return HandBack(text, SysAllocStringLen(L"\xD83D", 1)); }},
    HandedBack{
        "LineEnds",
        [](BSTR* text) { return HandBack(text, SysAllocString(L"1\r\nATDT999\r\x1A\x1B\x04")); }},
    HandedBack{"Directives",
               [](BSTR* text) { return HandBack(text, SysAllocString(L"%s%n%1!s!%99999d%")); }},
    HandedBack{"AMegabyte", [](BSTR* text) { return HandBack(text, TextOf(500'000)); }},
    HandedBack{"NullAndAFailure",
               [](BSTR* text) { return HandBack(text, nullptr, E_OUTOFMEMORY); }},
    HandedBack{"AnotherAndAFailure",
               [](BSTR* text) { return HandBack(text, TextOf(10), E_ACCESSDENIED); }},
    HandedBack{"AnUncommonSuccess", [](BSTR* text) { return HandBack(text, TextOf(10), S_FALSE); }},
};

TEST_P(HostileHost, MayHandBackAnyText) {
  for (const HandedBack& handed_back : kHandedBack) {
    SCOPED_TRACE(handed_back.name);
    const AllocationBalance balance;
    host().expansion = handed_back.replace;
    const Course course = sender().Send();
    host().expansion = nullptr;
    // What arrives is what the host said, and not what it would have said.
    ExpectNoFalseSuccess(course);
    EXPECT_NE(course, Course::kFalseFailure) << sender().DescribeLast();
    EXPECT_NE(course, Course::kLeftOpen) << sender().DescribeLast();
    EXPECT_EQ(balance.Outstanding(), 0);
    EXPECT_EQ(balance.StrayFrees(), 0);
    ExpectNextAlertToGoOut();
  }
  ExpectNothingLeft();
}

// The largest text that this process can hold, from so many megabytes on as the environment says.
// With 300 the tests take half a minute.
BSTR LargestText() {
  constexpr std::size_t kMegabyte = std::size_t{1} << 20;
  const std::wstring wanted = EnvironmentText(L"HOSTILE_TEXT_MEGABYTES");
  for (std::size_t megabytes = wanted.empty() ? 30 : std::stoul(wanted); megabytes != 0;
       megabytes /= 2) {
    if (BSTR text = TextOf(megabytes * kMegabyte / sizeof(wchar_t))) return text;
  }
  return nullptr;
}

TEST_P(HostileHost, MayHandBackTheLargestTextThatThereIsRoomFor) {
  const AllocationBalance balance;
  std::size_t bytes = 0;
  host().expansion = [&](BSTR* text) {
    SysFreeString(*text);
    *text = LargestText();
    bytes = std::max<std::size_t>(bytes, SysStringByteLen(*text));
    return S_OK;
  };
  const Course course = sender().Send();
  host().expansion = nullptr;
  RecordProperty("bytes", static_cast<int>(bytes));
  ExpectNoFalseSuccess(course);
  EXPECT_NE(course, Course::kFalseFailure);
  EXPECT_EQ(balance.Outstanding(), 0);
  ExpectNextAlertToGoOut();
  ExpectNothingLeft();
}

// Apartments

class OfApartment {
 public:
  explicit OfApartment(DWORD kind) { CoInitializeEx(nullptr, kind); }
  OfApartment(const OfApartment&) = delete;
  OfApartment& operator=(const OfApartment&) = delete;
  ~OfApartment() { CoUninitialize(); }
};

TEST_P(HostileHost, MayBeOfAnyApartment) {
  for (const DWORD kind : {COINIT_APARTMENTTHREADED, COINIT_MULTITHREADED}) {
    std::thread([&] {
      const OfApartment apartment(kind);
      AlertSender own(module(), instances_, GetParam());
      EXPECT_EQ(own.Send(), Course::kDelivered) << own.DescribeLast();
      EXPECT_EQ(own.notifier()->Shutdown(), S_OK);
      EXPECT_EQ(own.host().references(), 1);
    }).join();
  }
  ExpectNextAlertToGoOut();
  ExpectNothingLeft();
}

// Against the rule, by the bare pointer.
TEST_P(HostileHost, MayCallFromAnotherApartmentThanTheObjectsOwn) {
  for (const DWORD kind : {COINIT_APARTMENTTHREADED, COINIT_MULTITHREADED}) {
    std::thread([&] {
      const OfApartment apartment(kind);
      EXPECT_EQ(sender().Send(), Course::kDelivered) << sender().DescribeLast();
    }).join();
    ExpectNextAlertToGoOut();
  }
  ExpectNothingLeft();
}

TEST_P(HostileHost, MayLetGoOnAnotherThread) {
  std::thread([&] {
    const OfApartment apartment(COINIT_MULTITHREADED);
    sender().notifier() = {};
  }).join();
  EXPECT_EQ(host().references(), 1);
  EXPECT_EQ(module().CanUnloadNow(), S_OK);
  Rebind();
  ExpectNextAlertToGoOut();
  ExpectNothingLeft();
}

}  // namespace
}  // namespace brantel
