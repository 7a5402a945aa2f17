// Calls by Voice through the simulated telephone exchange, in time that passes as waits let it.
// Each stands in tests/unit/golden/courses_of_the_exchange.txt: what happens; the lines of the log,
// and the phase that has begun with one behind it; then the verdict.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <sstream>
#include <string>
#include <vector>

#include "instance/instance_codec.h"
#include "sim/exchange_script.h"
#include "sim/telephone_exchange.h"
#include "sim/timeline.h"
#include "sim/transcript.h"
#include "telephone/line_constants.h"
#include "tests/unit/host/course/following_host.h"
#include "tests/unit/instance/fake_instance_files.h"
#include "tests/unit/made_file.h"
#include "tests/unit/telephone/fake_voice_system.h"
#include "tests/unit/telephone/wave_bytes.h"
#include "voice/voice.h"
#include "voice/voice_description.h"

namespace brantel::host {
namespace {

// The functions of telephony, as the exchange has them.
class ExchangeTelephony final : public Telephony {
 public:
  ExchangeTelephony(const std::string& script, sim::Timeline& plan)
      : transcript_(notes_, plan),
        exchange_(sim::ParseExchangeScript(script), plan, transcript_,
                  [this](const sim::ExchangeMessage& message) {
                    if (receiver_ == nullptr) return;
                    receiver_->Receive({message.kind, message.first, message.second});
                  }) {}

  LineCode Initialize(LineMessageReceiver& receiver, std::uint32_t& application,
                      std::uint32_t& device_count) override {
    receiver_ = &receiver;
    application = sim::TelephoneExchange::kApplication;
    return exchange_.Initialize(device_count);
  }

  LineCode NegotiateVersion(std::uint32_t, std::uint32_t device, const VersionRange& range,
                            std::uint32_t& version) override {
    return exchange_.Negotiate(device, range.lowest, range.highest, version);
  }

  LineCode GetCapabilities(std::uint32_t, std::uint32_t device, std::uint32_t,
                           std::span<std::byte> capabilities) override {
    const sim::ExchangeLine* line = nullptr;
    const LineCode code = exchange_.ReadCapabilities(device, line);
    if (code != 0) return code;
    StoreWord(capabilities, line_structure::kNeededSize, line_structure::kCapabilitiesSize);
    StoreWord(capabilities, line_structure::kCapabilitiesMediaModes, line->media_modes);
    return 0;
  }

  LineCode Open(std::uint32_t, std::uint32_t device, std::uint32_t, std::uint32_t media_mode,
                std::span<const std::byte>, std::uint32_t& line) override {
    line = sim::TelephoneExchange::kLine;
    return exchange_.Open(device, media_mode, kCallPrivilegeOwner);
  }

  LineCode MakeCall(std::uint32_t line, const std::string& number, std::span<const std::byte>,
                    std::uint32_t& call) override {
    return exchange_.MakeCall(line, number, call, sim::Time(0));
  }

  LineCode GetId(std::uint32_t line, std::uint32_t call, CallSelect select,
                 const char* device_class, std::span<std::byte> id) override {
    constexpr std::uint32_t kSize = line_structure::kVariableTextSize;
    const LineCode code =
        exchange_.GetWaveDevice(line, call, static_cast<std::uint32_t>(select), device_class);
    if (code != 0) return code;
    StoreWord(id, line_structure::kNeededSize, kSize + 4);
    if (id.size() < kSize + 4) return 0;
    StoreWord(id, line_structure::kVariableTextOffset, kSize);
    StoreWord(id, kSize, exchange_.script().wave_device);
    return 0;
  }

  LineCode MonitorDigits(std::uint32_t call, std::uint32_t digit_mode) override {
    return exchange_.MonitorDigits(call, digit_mode);
  }

  LineCode Close(std::uint32_t line) override { return exchange_.Close(line); }

  LineCode Shutdown(std::uint32_t application) override {
    receiver_ = nullptr;
    return exchange_.Shutdown(application);
  }

 private:
  std::ostringstream notes_;
  sim::Transcript transcript_;
  LineMessageReceiver* receiver_ = nullptr;
  sim::TelephoneExchange exchange_;
};

// Lets time pass while somebody waits. A sound lasts for two seconds.
class ExchangePump final : public MessagePump {
 public:
  ExchangePump(sim::Timeline& plan, FakeWaveOutput& output) : plan_(plan), output_(output) {}

  void PumpUntil(const std::function<bool()>& is_over, EventHandle) override {
    constexpr sim::Time kSoundLength(2000);
    const bool is_playing = output_.is_open() && !output_.is_done();
    const sim::Time end_of_sound = plan_.now() + kSoundLength;
    while (!is_over()) {
      const auto next = plan_.NextTime();
      if (is_playing && (!next || *next > end_of_sound)) {
        plan_.AdvanceTo(end_of_sound);
        output_.ReportDone();
      } else if (next) {
        plan_.AdvanceTo(*next);
      } else {
        throw EndlessWait();
      }
    }
  }

 private:
  sim::Timeline& plan_;
  FakeWaveOutput& output_;
};

Instance CallTo(const std::string& number) {
  Instance instance(voice_field::kFieldCount);
  instance.set_text(voice_field::kPhoneNumber, number);
  instance.set_text(voice_field::kRepeatMessage, "repeat.wav");
  instance.set_text(voice_field::kItemDown, "down.wav");
  instance.set_integer(voice_field::kCount, 1);
  instance.set_integer(voice_field::kButton, 5);
  return instance;
}

// What is told of a call with this script, while there are these wave files.
std::string CourseOf(const std::string& script, const std::vector<std::string>& waves) {
  const Instance instance = CallTo("5550100");
  sim::Timeline plan;
  ExchangeTelephony telephony(script, plan);
  FakeVoiceSystem fakes;
  for (const std::string& wave : waves) {
    fakes.riff_files.files[wave] =
        RiffForm(RiffChunk("fmt ", kWaveFormat) + RiffChunk("data", "sound"));
  }
  ExchangePump pump(plan, fakes.wave_output);
  FakeInstanceFiles files;
  files.files["alert"] = EncodeInstance(kVoice.instances, instance);

  const auto host = std::make_shared<FollowingHost>(AlertCourse("Voice", instance));
  VoiceState state;
  state.probe_done = true;  // once, when the line was another
  state.host = host;
  Voice voice(files,
              {telephony, fakes.riff_files, fakes.wave_output, pump, fakes.clock, fakes.memory,
               kCodePage1252},
              state);
  try {
    return host->Finish(AttemptEnd::kReturned, voice.Send({u"alert", "alert"}, host.get()));
  } catch (const EndlessWait&) {
    return host->Finish(AttemptEnd::kTimedOut, std::nullopt);
  }
}

TEST(ExchangeCourses, AreToldAsTheyAreWritten) {
  struct Course {
    std::string what;
    std::string script;
    std::vector<std::string> waves = {"repeat.wav", "17", "down.wav"};
  };
  const std::string answered =
      "at 0.5 call-state dialing\nat 1 call-state ringback\nat 3 call-state connected\n";
  const std::string key = answered + "at 4 digit 5\n";
  const std::string other_key = answered + "at 4 digit 6\n";
  const std::string gone = answered + "at 4 call-state disconnected\nat 4.5 call-state idle\n";
  const std::string closed = answered + "at 4 line-close\nat 4.5 device-state 0x8\n";
  const std::string no_keys = answered + "fails lineMonitorDigits 0x80000049\n";
  const std::string no_wave_device = answered + "fails lineGetID 0x8000004B\n";
  std::string text;
  for (const Course& course : {
           Course{"somebody presses the key", key},
           Course{"somebody presses another key", other_key},
           Course{"nobody presses a key", answered},
           Course{"somebody answers and hangs up", gone},
           Course{"the line closes during the call", closed},
           Course{"the number is busy", "at 0.5 call-state dialing\nat 1 call-state busy\n"},
           Course{"nobody answers", "at 0.5 call-state dialing\nat 1 call-state ringback\n"},
           Course{"the network says that there is no such number",
                  "at 0.5 call-state proceeding\nat 1 call-state specialinfo\n"
                  "at 4 call-state disconnected\n"},
           Course{"nothing is told of the call", ""},
           Course{"there is no line", "no-lines\n"},
           Course{"no line takes automated voice", "line media-modes 0x4\nline version 0x1\n"},
           Course{"the second line is used",
                  "line negotiation-error 0x8000000C\nline media-modes 0x8\n" + key},
           Course{"telephony cannot be started", "fails lineInitialize 0x80000043\n"},
           Course{"another program has the line", "fails lineOpen 0x80000001\n"},
           Course{"the line does not tell of keys", no_keys},
           Course{"the call has no wave device", no_wave_device},
           Course{"the repeated message is not there", key, {"17", "down.wav"}},
           Course{"the first message is not there", key, {"repeat.wav", "down.wav"}},
           Course{"the second message is not there", key, {"repeat.wav", "17"}},
       }) {
    text += "# " + course.what + "\n" + CourseOf(course.script, course.waves) + "\n";
  }
  ExpectMadeFile("tests/unit/golden/courses_of_the_exchange.txt", text);
}

}  // namespace
}  // namespace brantel::host
