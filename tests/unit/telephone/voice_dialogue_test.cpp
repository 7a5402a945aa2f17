// Replays the dialogues of dialogues/voice. Lines of such a file, before a "run", of which there
// may be several:
//
//   field NAME VALUE                        of the instance
//   no-instance                             the instance file is missing
//   wave NAME SAMPLES                       a wave file that can be played
//   file NAME                               a file that exists, whatever is in it
//   new-process                             no line has been found yet, and no host is told
//   anything run Initialize | Shutdown | Send
//
// Behind it, each with what was answered:
//
//   query-host                              [fails]
//   expand TEMPLATE                         gives TEXT [RESULT] | fails RESULT
//   trigger                                 gives WORD | fails RESULT
//   log TEXT
//   initialize                              devices COUNT | fails ERROR
//   negotiate DEVICE                        gives VERSION | fails ERROR
//   capabilities DEVICE SIZE                media MODES | needs SIZE | fails ERROR
//   open-line DEVICE VERSION                [fails ERROR]
//   make-call NUMBER                        [fails ERROR]
//   get-id line|call SIZE                   gives DEVICE | needs SIZE | fails ERROR
//   monitor-digits MODE                     [fails ERROR]
//   close-line, shutdown                    [fails ERROR]
//   wait MS
//   query DEVICE                            [fails ERROR]
//   error-text ERROR                        gives TEXT
//   open-device DEVICE                      [fails ERROR]
//   prepare                                 [fails ERROR]
//   write SAMPLES                           [fails ERROR] [done]
//   unprepare, reset, close-device
//   message NUMBER
//   pump                                    a wait begins
//   pumped                                  and ends
//   result RESULT
//
// While a wait lasts, these happen:
//
//   tell KIND FIRST SECOND                  a message of telephony's
//   done                                    the driver is done with the sound
//   line-gone                               somebody else's session has ended
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <exception>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "instance/instance_codec.h"
#include "tests/unit/dialogue/answer.h"
#include "tests/unit/dialogue/dialogue.h"
#include "tests/unit/dialogue/replay.h"
#include "tests/unit/instance/fake_instance_files.h"
#include "tests/unit/telephone/fake_voice_system.h"
#include "tests/unit/text/few_code_pages.h"
#include "text/format_text.h"
#include "voice/voice.h"
#include "voice/voice_description.h"

namespace brantel {
namespace {

std::string Hexadecimal(std::uint32_t number) {
  return FormatText("%#x", {number});
}

class DialogueTelephony final : public Telephony {
 public:
  explicit DialogueTelephony(Dialogue& dialogue) : dialogue_(dialogue) {}

  LineMessageReceiver* receiver = nullptr;

  LineCode Initialize(LineMessageReceiver& told, std::uint32_t& application,
                      std::uint32_t& device_count) override {
    const Answer answer(dialogue_, {"initialize"});
    if (answer.Is("fails")) return answer.Number("fails");
    receiver = &told;
    application = kApplication;
    device_count = answer.Number("devices");
    return 0;
  }

  LineCode NegotiateVersion(std::uint32_t application, std::uint32_t device, const VersionRange&,
                            std::uint32_t& version) override {
    EXPECT_EQ(application, kApplication);
    const Answer answer(dialogue_, {"negotiate", std::to_string(device)});
    if (answer.Is("fails")) return answer.Number("fails");
    version = answer.Number("gives");
    return 0;
  }

  LineCode GetCapabilities(std::uint32_t, std::uint32_t device, std::uint32_t,
                           std::span<std::byte> block) override {
    const Answer answer(dialogue_,
                        {"capabilities", std::to_string(device), std::to_string(block.size())});
    if (answer.Is("fails")) return answer.Number("fails");
    if (answer.Is("needs")) {
      StoreWord(block, 4, answer.Number("needs"));
    } else {
      StoreWord(block, 60, answer.Number("media"));
    }
    return 0;
  }

  LineCode Open(std::uint32_t application, std::uint32_t device, std::uint32_t version,
                std::uint32_t, std::span<const std::byte>, std::uint32_t& line) override {
    EXPECT_EQ(application, kApplication);
    line = kLine;
    return Answer(dialogue_, {"open-line", std::to_string(device), Hexadecimal(version)})
        .Failure()
        .value_or(0);
  }

  LineCode MakeCall(std::uint32_t line, const std::string& number, std::span<const std::byte>,
                    std::uint32_t& call) override {
    EXPECT_EQ(line, kLine);
    call = kCall;
    return Answer(dialogue_, {"make-call", number}).Failure().value_or(0);
  }

  LineCode GetId(std::uint32_t line, std::uint32_t, CallSelect select, const char*,
                 std::span<std::byte> block) override {
    EXPECT_EQ(line, kLine);
    const Answer answer(dialogue_, {"get-id", select == CallSelect::kCall ? "call" : "line",
                                    std::to_string(block.size())});
    if (answer.Is("fails")) return answer.Number("fails");
    if (answer.Is("needs")) {
      StoreWord(block, 4, answer.Number("needs"));
    } else {
      StoreWord(block, 20, kIdOffset);
      StoreWord(block, kIdOffset, answer.Number("gives"));
    }
    return 0;
  }

  LineCode MonitorDigits(std::uint32_t call, std::uint32_t digit_mode) override {
    EXPECT_EQ(call, kCall);
    return Answer(dialogue_, {"monitor-digits", std::to_string(digit_mode)}).Failure().value_or(0);
  }

  LineCode Close(std::uint32_t line) override {
    EXPECT_EQ(line, kLine);
    return Answer(dialogue_, {"close-line"}).Failure().value_or(0);
  }

  LineCode Shutdown(std::uint32_t application) override {
    EXPECT_EQ(application, kApplication);
    return Answer(dialogue_, {"shutdown"}).Failure().value_or(0);
  }

 private:
  static constexpr std::uint32_t kApplication = 11;
  static constexpr std::uint32_t kLine = 22;
  static constexpr std::uint32_t kCall = 33;
  static constexpr std::uint32_t kIdOffset = 24;

  Dialogue& dialogue_;
};

class DialogueWaveOutput final : public WaveOutput {
 public:
  explicit DialogueWaveOutput(Dialogue& dialogue) : dialogue_(dialogue) {}

  static constexpr EventHandle kDoneEvent = 44;

  bool done = false;

  WaveCode Query(std::uint16_t device_id, std::span<const std::byte>) override {
    return Answer(dialogue_, {"query", std::to_string(device_id)}).Failure().value_or(0);
  }

  std::string ErrorText(WaveCode error) override {
    return Answer(dialogue_, {"error-text", std::to_string(error)}).Text("gives");
  }

  WaveCode Open(std::uint16_t device_id, std::span<const std::byte>,
                std::unique_ptr<WaveDevice>& device) override {
    const WaveCode error =
        Answer(dialogue_, {"open-device", std::to_string(device_id)}).Failure().value_or(0);
    if (error == 0) device = std::make_unique<Device>(*this);
    done = false;
    return error;
  }

 private:
  class Device final : public WaveDevice {
   public:
    explicit Device(DialogueWaveOutput& output) : output_(output) {}
    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;

    ~Device() override {
      if (std::uncaught_exceptions() == 0) {
        output_.dialogue_.ExpectWithoutThrowing({"close-device"});
      }
    }

    WaveCode Prepare(WaveHeader&) override {
      return Answer(output_.dialogue_, {"prepare"}).Failure().value_or(0);
    }

    WaveCode Write(WaveHeader& header) override {
      const std::string samples(reinterpret_cast<const char*>(header.data), header.length);
      const Answer answer(output_.dialogue_, {"write", samples});
      output_.done = answer.Is("done");
      return answer.Is("fails") ? answer.Number("fails") : 0;
    }

    [[nodiscard]] bool IsDone() const override { return output_.done; }
    [[nodiscard]] EventHandle DoneEvent() const override { return kDoneEvent; }
    void Unprepare(WaveHeader&) override { Expect("unprepare"); }

    void Reset() override {
      if (std::uncaught_exceptions() == 0) Expect("reset");
      output_.done = true;
    }

    void Send(std::uint32_t message, const WaveHeader&) override {
      Answer(output_.dialogue_, {"message", std::to_string(message)}).Nothing();
    }

   private:
    void Expect(const char* call) const {
      if (std::uncaught_exceptions() == 0) Answer(output_.dialogue_, {call}).Nothing();
    }

    DialogueWaveOutput& output_;
  };

  Dialogue& dialogue_;
};

class DialogueClock final : public Clock {
 public:
  explicit DialogueClock(Dialogue& dialogue) : dialogue_(dialogue) {}

  void Wait(std::uint32_t milliseconds) override {
    Answer(dialogue_, {"wait", std::to_string(milliseconds)}).Nothing();
  }

 private:
  Dialogue& dialogue_;
};

struct NamedNumber {
  std::string_view name;
  std::uint32_t number;
};

constexpr std::array kMessageNames = {
    NamedNumber{"call-state", 2}, NamedNumber{"line-close", 3}, NamedNumber{"device-state", 8},
    NamedNumber{"digit", 9},      NamedNumber{"reply", 12},
};

class DialoguePump final : public MessagePump {
 public:
  DialoguePump(Dialogue& dialogue, DialogueTelephony& telephony, DialogueWaveOutput& output,
               VoiceState& state)
      : dialogue_(dialogue), telephony_(telephony), output_(output), state_(state) {}

  void PumpUntil(const std::function<bool()>& is_over, EventHandle awaited) override {
    Answer(dialogue_, {"pump"}).Nothing();
    while (!is_over()) {
      const Words& event = dialogue_.TakeEvent("pump", {"tell", "done", "line-gone"});
      if (event[0] == "done" && awaited != DialogueWaveOutput::kDoneEvent) {
        throw DialogueMismatch(dialogue_.Place() + ": nobody is woken by the driver");
      }
      Happen(event);
    }
    Answer(dialogue_, {"pumped"}).Nothing();
  }

 private:
  void Happen(const Words& event) {
    if (event[0] == "done") {
      output_.done = true;
    } else if (event[0] == "line-gone") {
      state_.line_open = false;
    } else if (event[0] == "tell") {
      Tell(event.at(1), event.at(2), event.at(3));
    } else {
      throw DialogueMismatch(dialogue_.Place() + ": the wait is not over yet");
    }
  }

  void Tell(const std::string& kind, const std::string& first, const std::string& second) {
    const auto* const named = std::ranges::find(kMessageNames, kind, &NamedNumber::name);
    if (named == kMessageNames.end()) throw DialogueMismatch("there is no message " + kind);
    const std::uint32_t parameter =
        kind == "digit" ? static_cast<std::uint32_t>(first.at(0)) : ToNumber(first);
    telephony_.receiver->Receive({named->number, parameter, ToNumber(second)});
  }

  Dialogue& dialogue_;
  DialogueTelephony& telephony_;
  DialogueWaveOutput& output_;
  VoiceState& state_;
};

class VoiceDialogue {
 public:
  explicit VoiceDialogue(Dialogue& dialogue) : dialogue_(dialogue) {
    files_.files["alert"] = "";
    state_.probe_done = true;
    state_.host = host_;
  }

  void Replay() {
    while (!dialogue_.AtEnd()) {
      const std::string operation = SetUp();
      Answer(dialogue_, {"result", Run(operation)}).Nothing();
      if (memory_.in_use() != 0) throw DialogueMismatch("memory is left");
    }
  }

 private:
  // Reads how things stand before, up to "run", and returns what is run.
  std::string SetUp() {
    for (;;) {
      const Words& line = dialogue_.TakeLine();
      const std::string& kind = line.front();
      if (kind == "run") return line.at(1);
      if (kind == "no-instance") {
        files_.files.erase("alert");
      } else if (kind == "field") {
        SetField(line.at(1), line.at(2));
      } else if (kind == "wave") {
        riff_files_.files[line.at(1)] = WaveBytes(line.at(2));
      } else if (kind == "file") {
        files_.files[line.at(1)] = "";
      } else if (kind == "new-process") {
        std::destroy_at(&state_);
        std::construct_at(&state_);
      } else {
        throw DialogueMismatch(dialogue_.Place() + ": unknown line");
      }
    }
  }

  void SetField(const std::string& name, const std::string& value) {
    const auto field = std::ranges::find(kVoice.instances.fields, name, &InstanceField::name);
    if (field == kVoice.instances.fields.end()) throw DialogueMismatch("there is no field " + name);
    const auto index = static_cast<std::size_t>(field - kVoice.instances.fields.begin());
    if (field->kind == FieldKind::kInteger) {
      instance_.set_integer(index, std::stoi(value));
    } else {
      instance_.set_text(index, value);
    }
  }

  std::string Run(const std::string& operation) {
    if (operation == "Initialize") {
      const auto bound = voice_.Initialize([this]() -> std::shared_ptr<NotifierHost> {
        if (Answer(dialogue_, {"query-host"}).Is("fails")) return nullptr;
        return host_;
      });
      return ResultWord(bound ? kOk : kFail);
    }
    if (operation == "Shutdown") {
      voice_.Shutdown();
      return ResultWord(kOk);
    }
    if (operation != "Send") throw DialogueMismatch("there is no operation " + operation);
    if (files_.files.contains("alert")) {
      files_.files["alert"] = EncodeInstance(kVoice.instances, instance_);
    }
    return ResultWord(voice_.Send({u"alert", "alert"}, host_.get()));
  }

  Dialogue& dialogue_;
  Instance instance_{kVoice.instances.fields.size()};
  FakeInstanceFiles files_;
  FakeRiffFiles riff_files_;
  CountingMemory memory_;
  VoiceState state_;
  std::shared_ptr<DialogueHost> host_ = std::make_shared<DialogueHost>(dialogue_);
  DialogueTelephony telephony_{dialogue_};
  DialogueWaveOutput output_{dialogue_};
  DialoguePump pump_{dialogue_, telephony_, output_, state_};
  DialogueClock clock_{dialogue_};
  Voice voice_{
      files_, {telephony_, riff_files_, output_, pump_, clock_, memory_, kCodePage1252}, state_};
};

class VoiceDialogueTest : public ::testing::TestWithParam<std::filesystem::path> {};

TEST_P(VoiceDialogueTest, GoesAsItIsWritten) {
  ReplayDialogue(GetParam(), [](Dialogue& dialogue) { VoiceDialogue(dialogue).Replay(); });
}

// Without any file this would be a test that runs nothing; GoogleTest reports that as a failure.
INSTANTIATE_TEST_SUITE_P(Files, VoiceDialogueTest, ::testing::ValuesIn(DialogueFiles({"voice"})),
                         [](const auto& tested) { return DialogueName(tested.param); });

}  // namespace
}  // namespace brantel
