// What the dialogues do not show: Voice without a host, and how long it keeps one.
#include "voice/voice.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "instance/instance_codec.h"
#include "tests/unit/failing_allocations.h"
#include "tests/unit/instance/fake_instance_files.h"
#include "tests/unit/notifier/fake_notifier_host.h"
#include "tests/unit/telephone/fake_voice_system.h"
#include "voice/voice_description.h"

namespace brantel {
namespace {

using ::testing::Contains;
using ::testing::Each;
using ::testing::IsEmpty;

class VoiceTest : public ::testing::Test {
 protected:
  static HostQuery Offering(const std::shared_ptr<FakeNotifierHost>& host) {
    return [host] { return host; };
  }

  FakeInstanceFiles files_;
  FakeVoiceSystem system_;
  VoiceState state_;
  Voice voice_{files_, system_.system, state_};
  Voice other_{files_, system_.system, state_};
};

TEST_F(VoiceTest, CallsNobodyWithoutAHost) {
  EXPECT_EQ(voice_.Send({u"alert", "alert"}, nullptr), kFail);
  files_.files["alert"] =
      EncodeInstance(kVoice.instances, Instance(kVoice.instances.fields.size()));
  EXPECT_EQ(voice_.Send({u"alert", "alert"}, nullptr), kFail);
  EXPECT_THAT(system_.telephony.calls, IsEmpty());
}

TEST_F(VoiceTest, KeepsTheHostOfTheFirstBindingForTheLogUntilTheShutdown) {
  auto host = std::make_shared<FakeNotifierHost>();
  const std::weak_ptr<FakeNotifierHost> watch = host;
  ASSERT_EQ(voice_.Initialize(Offering(host)), host);
  EXPECT_TRUE(state_.probe_done);
  EXPECT_EQ(state_.host.load(), host);
  host.reset();
  EXPECT_FALSE(watch.expired());
  voice_.Shutdown();
  EXPECT_TRUE(watch.expired());
  EXPECT_TRUE(state_.probe_done);
}

TEST_F(VoiceTest, LeavesTheLogWithTheHostOfTheFirstBinding) {
  const auto first = std::make_shared<FakeNotifierHost>();
  const auto second = std::make_shared<FakeNotifierHost>();
  voice_.Initialize(Offering(first));
  EXPECT_EQ(other_.Initialize(Offering(second)), second);
  EXPECT_EQ(state_.host.load(), first);
  // Whose object it is that ends its binding makes no difference.
  other_.Shutdown();
  EXPECT_EQ(state_.host.load(), nullptr);
}

// Counts what holds it beside its first owner.
class CountingHost final : public NotifierHost {
 public:
  int references = 0;

  std::shared_ptr<NotifierHost> AddReference() override {
    ++references;
    return {this, [](CountingHost* host) { --host->references; }};
  }
  Result ExpandMessage(std::string&, EmptyText) override { return kOk; }
  void LogMessage(std::string_view) override {}
  void LogMessage(std::u16string_view) override {}
  Result GetAlertTrigger(std::uint32_t&) override { return kOk; }
};

TEST_F(VoiceTest, HoldsTheHostOfTheLogByAReferenceOfItsOwn) {
  const auto first = std::make_shared<CountingHost>();
  const auto second = std::make_shared<CountingHost>();
  system_.telephony.open = line_error::kAllocated;
  EXPECT_EQ(voice_.Initialize([&] { return first; }), nullptr);
  EXPECT_EQ(first->references, 0);
  system_.telephony.open = 0;
  EXPECT_EQ(voice_.Initialize([&] { return first; }), first);
  EXPECT_EQ(first->references, 1);
  EXPECT_EQ(other_.Initialize([&] { return second; }), second);
  EXPECT_EQ(second->references, 0);
  other_.Shutdown();
  EXPECT_EQ(first->references, 0);
  EXPECT_EQ(other_.Initialize([&] { return second; }), second);
  EXPECT_EQ(second->references, 0);
}

TEST_F(VoiceTest, LetsGoOfAHostThatItCannotBind) {
  system_.telephony.initialize = 0x80000049;
  auto host = std::make_shared<FakeNotifierHost>();
  EXPECT_EQ(voice_.Initialize(Offering(host)), nullptr);
  EXPECT_FALSE(state_.probe_done);
  EXPECT_EQ(state_.host.load(), nullptr);
  EXPECT_EQ(host.use_count(), 1);
  EXPECT_THAT(host->log, IsEmpty());
}

// A host may end the binding from within its log.
TEST_F(VoiceTest, StandsAHostThatIsShutDownWhileItIsTold) {
  class ShuttingDownHost final : public NotifierHost {
   public:
    explicit ShuttingDownHost(Voice& voice) : voice_(voice) {}
    ~ShuttingDownHost() override { told_.clear(); }
    Result ExpandMessage(std::string&, EmptyText) override { return kOk; }
    void LogMessage(std::string_view text) override {
      voice_.Shutdown();
      told_ += text;
    }
    void LogMessage(std::u16string_view) override {}
    Result GetAlertTrigger(std::uint32_t&) override { return kOk; }

   private:
    Voice& voice_;
    std::string told_;
  };
  state_.host = std::make_shared<ShuttingDownHost>(voice_);
  state_.log().Text("first");
  EXPECT_EQ(state_.host.load(), nullptr);
  state_.log().Text("second");
}

// A call that is connected and whose key is pressed while the repeat message plays.
class AcknowledgedCall : public VoiceTest {
 protected:
  AcknowledgedCall() {
    Instance instance(kVoice.instances.fields.size());
    instance.set_text(voice_field::kPhoneNumber, "5550100");
    instance.set_text(voice_field::kRepeatMessage, "repeat.wav");
    instance.set_text(voice_field::kItemDown, "down.wav");
    instance.set_integer(voice_field::kButton, 5);
    files_.files["alert"] = EncodeInstance(kVoice.instances, instance);
    for (const char* const wave : {"repeat.wav", "device.wav", "down.wav"}) {
      system_.riff_files.files[wave] = WaveBytes(wave);
    }
  }

  Result SendTo(const std::shared_ptr<FakeNotifierHost>& host) {
    host->trigger_word = 2;
    host->expansions = {{kOk, "device.wav"}, {kOk, "router7"}};
    state_.host = host;
    FakeTelephony& telephony = system_.telephony;
    const auto played = [this] { system_.wave_output.ReportDone(); };
    system_.pump.events = {
        [&] { telephony.Tell(line_message::kDeviceState, device_state::kOpen); },
        [&] { telephony.Tell(line_message::kCallState, call_state::kConnected); },
        [&] { telephony.Tell(line_message::kMonitorDigits, '5'); },
        played,
        played,
    };
    return voice_.Send({u"alert", "alert"}, host.get());
  }
};

TEST_F(AcknowledgedCall, IsMadeWhateverIsAllocatedForTheLogFindsNoMemory) {
  const auto whole_log = std::make_shared<FakeNotifierHost>();
  ASSERT_EQ(SendTo(whole_log), kOk);
  ASSERT_THAT(system_.wave_output.calls, Contains("write down.wav"));
  const std::vector<std::string> telephony_calls = system_.telephony.calls;
  const std::vector<std::string> wave_calls = system_.wave_output.calls;
  std::vector<std::size_t> line_counts;
  ForEachLogAllocation([&](std::size_t allocation) {
    system_.telephony.calls.clear();
    system_.wave_output.calls.clear();
    const auto host = std::make_shared<FakeNotifierHost>();
    EXPECT_EQ(SendTo(host), kOk) << allocation;
    EXPECT_EQ(system_.telephony.calls, telephony_calls) << allocation;
    EXPECT_EQ(system_.wave_output.calls, wave_calls) << allocation;
    line_counts.push_back(host->log.size());
  });
  // The last of these has found all memory that it wanted.
  ASSERT_GT(line_counts.size(), whole_log->log.size());
  EXPECT_EQ(line_counts.back(), whole_log->log.size());
  line_counts.pop_back();
  EXPECT_THAT(line_counts, Each(whole_log->log.size() - 1));
}

}  // namespace
}  // namespace brantel
