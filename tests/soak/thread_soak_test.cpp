// Sixteen threads at once, each with a host, an apartment and objects of its own.
#include <windows.h>
#include <gtest/gtest.h>
#include <objbase.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <iostream>
#include <list>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "tests/far_ends/alert_sender.h"
#include "tests/far_ends/far_ends.h"
#include "tests/module/settings_key.h"
#include "tests/soak/soak.h"

namespace brantel {
namespace {

using Course = AlertSender::Course;

// What each thread sends. There can be one telephone call at a time in a process; the classes with
// a modem share its port, and whoever finds it taken fails.
constexpr std::array<std::string_view, 16> kThreads = {
    "LaunchProgram", "LaunchProgram", "Sound",    "Sound",    "WinPopup", "WinPopup",
    "WinPopup",      "SMTPMail",      "SMTPMail", "SMTPMail", "Beeper",   "Tap",
    "SmsTap",        "Ucp",           "Ntt",      "Voice"};

const SampleAlert& AlertNamed(std::string_view name) {
  return *std::ranges::find(SampleAlerts(), name, &SampleAlert::name);
}

class Apartment {
 public:
  Apartment() { CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
  ~Apartment() { CoUninitialize(); }
};

// What has become of a thread's alerts.
struct Tally {
  unsigned long delivered = 0;
  unsigned long busy = 0;
  std::string mistake;
};

class ThreadSoak : public ::testing::Test {
 protected:
  // All threads send for so many seconds.
  std::vector<Tally> SendFor(unsigned seconds) {
    constexpr ULONGLONG kMilliseconds = 1000;
    const ULONGLONG end = GetTickCount64() + seconds * kMilliseconds;
    std::vector<Tally> tallies(kThreads.size());
    std::vector<std::jthread> threads;
    for (std::size_t i = 0; i < kThreads.size(); ++i) {
      threads.emplace_back(
          [this, i, end, &tallies] { SendUntil(end, AlertNamed(kThreads.at(i)), tallies[i]); });
    }
    threads.clear();
    // The system is not done with a thread when that has been waited for.
    constexpr DWORD kSettling = 500;
    Sleep(kSettling);
    return tallies;
  }

  const NoSettings no_beeper_settings_{kBeeperSettingsKey};
  const NoSettings no_pager_settings_{kPagerSettingsKey};
  const SampleInstances instances_;
  const LoadedModule module_;
  const FarEnds far_ends_{module_.handle()};

 private:
  static constexpr unsigned kAlertsOfAnObject = 50;

  void SendUntil(ULONGLONG end, const SampleAlert& alert, Tally& tally) const {
    const Apartment apartment;
    while (GetTickCount64() < end && tally.mistake.empty()) {
      AlertSender sender(module_, instances_, alert);
      for (unsigned i = 0; i < kAlertsOfAnObject && tally.mistake.empty(); ++i)
        SendOne(sender, alert, tally);
    }
  }

  static void SendOne(AlertSender& sender, const SampleAlert& alert, Tally& tally) {
    const Course course = sender.Send();
    const bool is_port_taken =
        alert.uses_modem && sender.last_alert().last_line == L"open error 5\r\n";
    if (course == Course::kDelivered) {
      ++tally.delivered;
    } else if (course == Course::kFailed && is_port_taken) {
      ++tally.busy;
    } else {
      tally.mistake = sender.DescribeLast();
    }
  }
};

TEST_F(ThreadSoak, DeliversEachOrFailsAndLeavesNothing) {
  const unsigned seconds = Setting(L"SOAK_SECONDS", 600);
  SendFor(std::clamp(seconds / 10, 2U, 20U));
  const GrowthWatch watch;
  const std::vector<Tally> tallies = SendFor(seconds);
  unsigned long delivered = 0;
  unsigned long busy = 0;
  for (std::size_t i = 0; i < tallies.size(); ++i) {
    const Tally& tally = tallies[i];
    delivered += tally.delivered;
    busy += tally.busy;
    std::cout << "  " << kThreads.at(i) << ": " << tally.delivered << " delivered, " << tally.busy
              << " found the port taken" << std::endl;
    EXPECT_EQ(tally.mistake, "");
    EXPECT_GT(tally.delivered, 0U);
  }
  EXPECT_GT(busy, 0U);
  watch.ExpectNone(
      "16 threads, " + std::to_string(seconds) + " s, " + std::to_string(delivered) +
          " delivered, " + std::to_string(busy) + " found the port taken",
      {.handles = kThreads.size(),  // what the thread library keeps for threads to come
       .heap_bytes = 65536,
       .committed_bytes = std::size_t{4} << 20});
  EXPECT_TRUE(far_ends_.AreIdle());
  EXPECT_FALSE(far_ends_.modem.has_waited_for_ever());
  EXPECT_FALSE(far_ends_.telephone.has_waited_for_ever());
  EXPECT_EQ(module_.CanUnloadNow(), S_OK);
}

}  // namespace
}  // namespace brantel
