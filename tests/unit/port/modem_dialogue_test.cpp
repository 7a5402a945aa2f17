// Replays the dialogues of dialogues/beeper, dialogues/pager and dialogues/port. Lines of such a
// file, before "run":
//
//   no-instance                             the instance file is missing
//   field NAME VALUE                        of the instance, as its class's layout names it
//   setting PROFILE NAME VALUE              of the class's settings profile
//   port-busy N                             what the port-busy flag holds
//   ucp-counter N                           what the counter of UCP messages holds
//   run OPERATION ARGUMENTS                 see kOperations
//
// Behind it, each with what was answered:
//
//   expand TEMPLATE                         gives TEXT | fails RESULT
//   trigger                                 gives WORD | fails RESULT
//   log TEXT
//   open PORT                               [fails ERROR]
//   get-control                             [fails ERROR]
//   set-control RATE BITS [parity-check on|off]   [fails ERROR]
//   get-timeouts                            [fails ERROR]; gives kDriverTimeouts
//   set-timeouts read-interval MS read-total MS+MS/byte write-total MS+MS/byte   [fails ERROR]
//   write BYTES                             [fails ERROR]
//   flush
//   read LIMIT                              gives BYTES | fails ERROR
//   wait MS                                 [frees-port]
//   close
//   result RESULT
//   port-busy N                             for the operations of the port alone
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "beeper/beeper.h"
#include "beeper/beeper_description.h"
#include "beeper/beeper_port.h"
#include "instance/instance_codec.h"
#include "pager/pager.h"
#include "pager/pager_description.h"
#include "pager/pager_port.h"
#include "port/modem_dialling.h"
#include "port/modem_handshake.h"
#include "port/modem_port.h"
#include "tests/unit/dialogue/answer.h"
#include "tests/unit/dialogue/dialogue.h"
#include "tests/unit/dialogue/replay.h"
#include "tests/unit/instance/fake_instance_files.h"
#include "tests/unit/system/fake_settings_store.h"

namespace brantel {
namespace {

// What a port has before any are set.
constexpr SerialTimeouts kDriverTimeouts = {1, 2, 3, 4, 5};

Outcome<> OutcomeOf(const Answer& answer) {
  const auto error = answer.Failure();
  if (error) return Failure{*error};
  return kDone;
}

class DialogueDevice final : public SerialDevice {
 public:
  explicit DialogueDevice(Dialogue& dialogue) : dialogue_(dialogue) {}
  DialogueDevice(const DialogueDevice&) = delete;
  DialogueDevice& operator=(const DialogueDevice&) = delete;

  ~DialogueDevice() override {
    if (std::uncaught_exceptions() == 0) dialogue_.ExpectWithoutThrowing({"close"});
  }

  Outcome<> GetControl() override { return OutcomeOf({dialogue_, {"get-control"}}); }

  Outcome<> SetControl(std::uint32_t bits_per_second, const Framing& framing) override {
    Words call = {
        "set-control", std::to_string(bits_per_second),
        std::to_string(framing.data_bits) + (framing.parity == Parity::kEven ? "E" : "N") + "1"};
    if (framing.parity_check) {
      call.insert(call.end(), {"parity-check", *framing.parity_check ? "on" : "off"});
    }
    return OutcomeOf({dialogue_, call});
  }

  Outcome<SerialTimeouts> GetTimeouts() override {
    const auto outcome = OutcomeOf({dialogue_, {"get-timeouts"}});
    if (!outcome) return outcome.failure();
    return kDriverTimeouts;
  }

  Outcome<> SetTimeouts(const SerialTimeouts& timeouts) override {
    return OutcomeOf(
        {dialogue_,
         {"set-timeouts", "read-interval", std::to_string(timeouts.read_interval), "read-total",
          Total(timeouts.read_total_constant, timeouts.read_total_multiplier), "write-total",
          Total(timeouts.write_total_constant, timeouts.write_total_multiplier)}});
  }

  Outcome<> Write(std::string_view bytes) override {
    return OutcomeOf({dialogue_, {"write", std::string(bytes)}});
  }

  Outcome<std::size_t> Read(std::span<char> buffer) override {
    const Answer answer(dialogue_, {"read", std::to_string(buffer.size())});
    if (answer.Is("fails")) return Failure{answer.Number("fails")};
    const std::string& bytes = answer.Text("gives");
    if (bytes.size() > buffer.size()) throw DialogueMismatch("the answer is longer than the read");
    std::ranges::copy(bytes, buffer.begin());
    return bytes.size();
  }

  void Flush() override { Answer(dialogue_, {"flush"}).Nothing(); }

 private:
  static std::string Total(std::uint32_t constant, std::uint32_t multiplier) {
    return std::to_string(constant) + "+" + std::to_string(multiplier) + "/byte";
  }

  Dialogue& dialogue_;
};

class DialoguePorts final : public SerialPorts {
 public:
  explicit DialoguePorts(Dialogue& dialogue) : dialogue_(dialogue) {}

  Outcome<std::unique_ptr<SerialDevice>> Open(std::uint32_t port_number) override {
    const auto outcome = OutcomeOf({dialogue_, {"open", std::to_string(port_number)}});
    if (!outcome) return outcome.failure();
    return std::make_unique<DialogueDevice>(dialogue_);
  }

 private:
  Dialogue& dialogue_;
};

class DialogueClock final : public Clock {
 public:
  DialogueClock(Dialogue& dialogue, PortBusyFlag& busy) : dialogue_(dialogue), busy_(busy) {}

  void Wait(std::uint32_t milliseconds) override {
    if (Answer(dialogue_, {"wait", std::to_string(milliseconds)}).Flag("frees-port")) busy_ = 0;
  }

 private:
  Dialogue& dialogue_;
  PortBusyFlag& busy_;
};

const ModemPolicy& PolicyNamed(const std::string& name) {
  if (name == "Beeper") return kBeeperPolicy;
  if (name == "Pager") return kPagerPolicy;
  throw DialogueMismatch("there is no notifier " + name);
}

const Framing& FramingNamed(const std::string& notifier, const std::string& bits) {
  if (notifier == "Beeper") return kBeeperFraming;
  return bits == "8N1" ? kPagerFraming8N1 : kPagerFraming7E1;
}

constexpr std::int32_t kBaud9600 = 4;

class ModemDialogue {
 public:
  explicit ModemDialogue(Dialogue& dialogue) : dialogue_(dialogue) {}

  void Replay() { Run(SetUp()); }

 private:
  using Operation = void (ModemDialogue::*)(const Words&);
  struct OperationRow {
    std::string_view name;
    std::size_t argument_count;
    Operation run;
  };
  // NOTIFIER is Beeper or Pager. All but the first three work on a port that has been opened at
  // 9600 bits per second, 7E1 for the Pager.
  static const std::array<OperationRow, 9> kOperations;

  // Reads how things stand before, up to "run", and returns what is run.
  Words SetUp() {
    for (;;) {
      const Words& line = dialogue_.TakeLine();
      const std::string& kind = line.front();
      if (kind == "run") return {line.begin() + 1, line.end()};
      if (kind == "no-instance") {
        has_instance_ = false;
      } else if (kind == "field") {
        fields_.push_back(line);
      } else if (kind == "setting") {
        stored_settings_.push_back(line);
      } else if (kind == "port-busy") {
        busy_ = ToNumber(line.at(1));
      } else if (kind == "ucp-counter") {
        ucp_counter_ = ToNumber(line.at(1));
      } else {
        throw DialogueMismatch(dialogue_.Place() + ": unknown line");
      }
    }
  }

  static void SetField(const InstanceLayout& layout, Instance& instance, const std::string& name,
                       const std::string& value) {
    const auto field = std::ranges::find(layout.fields, name, &InstanceField::name);
    if (field == layout.fields.end()) throw DialogueMismatch("there is no field " + name);
    const auto index = static_cast<std::size_t>(field - layout.fields.begin());
    if (field->kind == FieldKind::kInteger) {
      instance.set_integer(index, std::stoi(value));
    } else {
      instance.set_text(index, value);
    }
  }

  // Stores instance and settings of the class that the dialogue is about.
  void Store(const InstanceLayout& layout) {
    const std::string key =
        R"(SOFTWARE\Brantel\Vantrel\notification\)" + std::string(layout.class_name);
    for (const Words& setting : stored_settings_) {
      settings_.keys[ProfileKeyPath(key, std::stoi(setting.at(1)))][setting.at(2)] = {
          SettingType::kText, setting.at(3)};
    }
    if (!has_instance_) return;
    Instance instance(layout.fields.size());
    for (const Words& field : fields_) {
      SetField(layout, instance, field.at(1), field.at(2));
    }
    files_.files["alert"] = EncodeInstance(layout, instance);
  }

  void Run(const Words& operation) {
    const auto* const row = std::ranges::find(kOperations, operation.at(0), &OperationRow::name);
    if (row == kOperations.end() || operation.size() != row->argument_count + 1) {
      throw DialogueMismatch(dialogue_.Place() + ": no such operation");
    }
    (this->*row->run)({operation.begin() + 1, operation.end()});
  }

  void ExpectResult(const std::string& result) { Answer(dialogue_, {"result", result}).Nothing(); }

  void RunBeeper(const Words&) {
    Store(kBeeper.instances);
    Beeper beeper(files_, settings_, ports_, clock_);
    ExpectResult(ResultWord(beeper.Send({u"alert", "alert"}, &host_)));
  }

  void RunPager(const Words&) {
    Store(kPager.instances);
    Pager pager(files_, settings_, ports_, clock_, ucp_counter_);
    ExpectResult(ResultWord(pager.Send({u"alert", "alert"}, &host_)));
  }

  void RunOpenPort(const Words& arguments) {
    RunOnPort(arguments.at(0), [&](ModemPort& port) {
      return port.OpenPort(ToNumber(arguments.at(1)), std::stoi(arguments.at(2)),
                           FramingNamed(arguments.at(0), arguments.at(3)));
    });
  }

  void RunWriteLogged(const Words& arguments) {
    RunOnOpenPort(arguments, [&](ModemPort& port) { return port.WriteLogged(arguments.at(1)); });
  }

  void RunReadLogged(const Words& arguments) {
    RunOnOpenPort(arguments, [&](ModemPort& port) { return port.ReadLogged(); });
  }

  void RunSendCommand(const Words& arguments) {
    RunOnOpenPort(arguments, [&](ModemPort& port) { return port.SendCommand(arguments.at(1)); });
  }

  void RunHangUp(const Words& arguments) {
    RunOnOpenPort(arguments, [&](ModemPort& port) {
      port.HangUp();
      return true;
    });
  }

  void RunInitialiseModem(const Words& arguments) {
    RunOnOpenPort(arguments,
                  [&](ModemPort& port) { return InitialiseModem(port, arguments.at(1)); });
  }

  void RunDialCentre(const Words& arguments) {
    RunOnOpenPort({"Pager"}, [&](ModemPort& port) {
      return DialCentre(port, arguments.at(0), ToNumber(arguments.at(1)));
    });
  }

  template <typename Body>
  void RunOnPort(const std::string& notifier, Body body) {
    {
      ModemPort port(PolicyNamed(notifier), busy_, ports_, clock_, host_);
      ExpectResult(body(port) ? "true" : "false");
    }
    Answer(dialogue_, {"port-busy", std::to_string(busy_)}).Nothing();
  }

  template <typename Body>
  void RunOnOpenPort(const Words& arguments, Body body) {
    RunOnPort(arguments.at(0), [&](ModemPort& port) {
      EXPECT_TRUE(port.OpenPort(1, kBaud9600, FramingNamed(arguments.at(0), "7E1")));
      return body(port);
    });
  }

  Dialogue& dialogue_;
  bool has_instance_ = true;
  std::vector<Words> fields_;
  std::vector<Words> stored_settings_;
  FakeInstanceFiles files_;
  FakeSettingsStore settings_;
  PortBusyFlag busy_ = 0;
  UcpTransactionCounter ucp_counter_ = 0;
  DialogueHost host_{dialogue_};
  DialoguePorts ports_{dialogue_};
  DialogueClock clock_{dialogue_, busy_};
};

const std::array<ModemDialogue::OperationRow, 9> ModemDialogue::kOperations = {{
    {"Beeper.Send", 0, &ModemDialogue::RunBeeper},
    {"Pager.Send", 0, &ModemDialogue::RunPager},
    {"OpenPort", 4, &ModemDialogue::RunOpenPort},                // NOTIFIER PORT SELECTOR BITS
    {"WriteLogged", 2, &ModemDialogue::RunWriteLogged},          // NOTIFIER TEXT
    {"ReadLogged", 1, &ModemDialogue::RunReadLogged},            // NOTIFIER
    {"SendCommand", 2, &ModemDialogue::RunSendCommand},          // NOTIFIER TEXT
    {"HangUp", 1, &ModemDialogue::RunHangUp},                    // NOTIFIER
    {"InitialiseModem", 2, &ModemDialogue::RunInitialiseModem},  // NOTIFIER MODEM-STRING
    {"DialCentre", 2, &ModemDialogue::RunDialCentre},            // NUMBER BUSY-WAIT
}};

class ModemDialogueTest : public ::testing::TestWithParam<std::filesystem::path> {};

TEST_P(ModemDialogueTest, GoesAsItIsWritten) {
  ReplayDialogue(GetParam(), [](Dialogue& dialogue) { ModemDialogue(dialogue).Replay(); });
}

// Without any file this would be a test that runs nothing; GoogleTest reports that as a failure.
INSTANTIATE_TEST_SUITE_P(Files, ModemDialogueTest,
                         ::testing::ValuesIn(DialogueFiles({"beeper", "pager", "port"})),
                         [](const auto& tested) { return DialogueName(tested.param); });

}  // namespace
}  // namespace brantel
