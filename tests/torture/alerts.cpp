#include "tests/torture/alerts.h"

#include <array>
#include <cstdint>
#include <initializer_list>
#include <string>

#include "beeper/beeper.h"
#include "beeper/beeper_description.h"
#include "instance/instance_codec.h"
#include "launch_program/launch_program.h"
#include "launch_program/launch_program_description.h"
#include "pager/pager.h"
#include "pager/pager_description.h"
#include "smtp_mail/smtp_mail.h"
#include "smtp_mail/smtp_mail_description.h"
#include "sound/sound.h"
#include "sound/sound_description.h"
#include "voice/voice.h"
#include "voice/voice_description.h"
#include "win_popup/win_popup.h"
#include "win_popup/win_popup_description.h"

namespace brantel {
namespace {

// Texts are longer than what strings hold without memory.

constexpr std::string_view kModemOk = "\r\nOK\r\n";
constexpr std::string_view kConnected = "\r\nCONNECT 2400\r\n";

constexpr std::array kBeeperModem = {Reply{"ATDT", "", 0}, Reply{"AT", kModemOk}};
constexpr std::array kBeeperBusy = {Reply{"ATDT", "\r\nBUSY\r\n"}, Reply{"AT", kModemOk}};
constexpr std::array kModemWithoutOk = {Reply{"ATDT", ""}, Reply{"AT", "\r\nERROR\r\n"}};

constexpr std::string_view kLogIn = "\x1BPG1";
constexpr std::string_view kGoAhead = "\x06\r\x1B[p\r";
constexpr std::string_view kBlock = "\x02";

// A centre of TAP, with what it says to the block.
constexpr std::array<Reply, 6> TapCentre(Reply to_block) {
  return {Reply{"ATDT", kConnected}, Reply{"AT", kModemOk},   Reply{"\r", "ID="},
          Reply{kLogIn, kGoAhead},   Reply{"\x04", "\x04\r"}, to_block};
}
constexpr auto kTapTakes = TapCentre({kBlock, "\x06\r", 1});
constexpr auto kTapRefuses = TapCentre({kBlock, "\x15\r"});
constexpr auto kTapRejects = TapCentre({kBlock, "\x1E\r"});
constexpr auto kTapRejectsAndEnds = TapCentre({kBlock, "\x1E\r\x1B\x04\r"});
constexpr std::array kTapBusyAtFirst = {Reply{"ATDT", "\r\nBUSY\r\n"}, Reply{"ATDT", kConnected},
                                        Reply{"AT", kModemOk},         Reply{"\r", "ID="},
                                        Reply{kLogIn, "ID="},          Reply{kLogIn, kGoAhead},
                                        Reply{kBlock, "\x15\r"},       Reply{kBlock, "\x06\r", 1},
                                        Reply{"\x04", "\x04\r"}};

// One of UCP, and one of NTT.
constexpr std::array<Reply, 4> UcpCentre(Reply to_frame) {
  return {Reply{"ATDT", kConnected}, Reply{"ATH0", ""}, Reply{"AT", kModemOk}, to_frame};
}
constexpr std::string_view kUcpAcceptance =
    "\x02"
    "00/00037/R/02/A/:120393153020/9D\x03";
constexpr auto kUcpTakes = UcpCentre({kBlock, kUcpAcceptance, kUcpAcceptance.find("/A/") + 3});
constexpr auto kUcpRefuses = UcpCentre({kBlock,
                                        "\x02"
                                        "00/00022/R/02/N/02/AA\x03"});

constexpr std::string_view kLine = "8000C00000";
constexpr std::array<Reply, 4> NttCentre(Reply to_line) {
  return {Reply{"ATDT", kConnected}, Reply{"AT", kModemOk}, Reply{"\r", "READY"}, to_line};
}
constexpr auto kNttTakes = NttCentre({kLine, "28 OK", 2});
constexpr auto kNttRefuses = NttCentre({kLine, "17 NO"});

// A relay, with what it says to a recipient and to the message.
constexpr std::array<Reply, 7> Relay(std::string_view to_recipient, Reply to_message) {
  return {Reply{"connection", "220-relay.example.org\r\n220 is ready for mail\r\n"},
          Reply{"HELO ", "250 relay.example.org\r\n"},
          Reply{"MAIL From:", "250 sender\r\n"},
          Reply{"RCPT To:", to_recipient},
          Reply{"DATA", "354 go ahead\r\n"},
          to_message,
          Reply{"QUIT", "221 relay.example.org closes\r\n"}};
}
constexpr auto kRelayTakes = Relay("250 recipient\r\n", {".", "250 queued as 20040305\r\n", 1});
// Says farewell before it is asked to.
constexpr auto kRelayEndsEarly =
    Relay("250 recipient\r\n", {".", "250 queued\r\n221 relay.example.org ends\r\n", 1});
constexpr auto kRelayRefusesRecipient = Relay("550 no such user here\r\n", {".", "503 no\r\n"});
constexpr auto kRelayRefusesMessage = Relay("250 recipient\r\n", {".", "554 is no mail\r\n"});

// Stores the texts of an instance in the order of its fields, and its numbers.
struct FieldValue {
  std::string_view text{};
  std::int32_t number = 0;

  constexpr FieldValue(const char* value) : text(value) {}       // NOLINT(*-explicit-*)
  constexpr FieldValue(std::string_view value) : text(value) {}  // NOLINT(*-explicit-*)
  constexpr FieldValue(std::int32_t value) : number(value) {}    // NOLINT(*-explicit-*)
};

void Store(Machine& machine, const ClassDescription& description,
           std::initializer_list<FieldValue> values) {
  Instance instance(description.instances.fields.size());
  std::size_t index = 0;
  for (const FieldValue& value : values) {
    if (description.instances.fields[index].kind == FieldKind::kInteger) {
      instance.set_integer(index, value.number);
    } else {
      instance.set_text(index, std::string(value.text));
    }
    ++index;
  }
  machine.files.disk.files[InstancePath()] = EncodeInstance(description.instances, instance);
}

void StoreSettings(Machine& machine, const std::string& class_name,
                   std::initializer_list<std::pair<const char*, const char*>> settings) {
  auto& values =
      machine.settings.registry.keys[R"(SOFTWARE\Brantel\Vantrel\notification\)" + class_name];
  for (const auto& [name, text] : settings)
    values[name] = {SettingType::kText, text};
}

void SetUpBeeper(Machine& machine) {
  machine.far_end.is_modem = true;
  Store(machine, kBeeper,
        {"5550300 5550300 5550300", "ATDT%s,,,,%s#", "11111111111111111", "22222222222222222",
         "33333333333333333", "a report of the event", 0});
  StoreSettings(machine, "Beeper",
                {{"Settings_COMPort", "COM2"},
                 {"Settings_Baud", "2400"},
                 {"Settings_ModemString", "ATE0Q0V1X4S0=0S7=60S8=2"}});
  machine.notifier =
      std::make_unique<Beeper>(machine.files, machine.settings, machine.ports, machine.clock);
}

void SetUpPager(Machine& machine, std::string_view protocol) {
  machine.far_end.is_modem = true;
  Store(machine, kPager,
        {"5550200 5550200 5550200", "a secret of the night", "0041 79 123 45 67 89 01 23",
         "the disk of the server is full", protocol, 0});
  StoreSettings(machine, "Pager",
                {{"Settings_COMPort", "COM2"},
                 {"Settings_Baud", "2400"},
                 {"Settings_ModemString", "ATE0Q0V1X4S0=0S7=60S8=2"}});
  machine.notifier = std::make_unique<Pager>(machine.files, machine.settings, machine.ports,
                                             machine.clock, machine.ucp_counter);
}

void SetUpTap(Machine& machine) {
  SetUpPager(machine, "TAP");
}
void SetUpSmsTap(Machine& machine) {
  SetUpPager(machine, "SMS-TAP");
}
void SetUpUcp(Machine& machine) {
  SetUpPager(machine, "UCP-SMS");
}
void SetUpNtt(Machine& machine) {
  SetUpPager(machine, "NTT");
}

void SetUpMail(Machine& machine, std::string_view to, std::string_view subject) {
  Store(machine, kSMTPMail,
        {"192.0.2.25", to, "the operators <operators@example.org>", subject,
         "The disk of the server is full.\r\nSee to it.\r\n"});
  StoreSettings(machine, "SMTPMail", {{"Settings_Timeout", "20000"}});
  machine.notifier = std::make_unique<SmtpMail>(machine.files, machine.settings, machine.sockets,
                                                machine.smtp_system);
}

void SetUpMailToOne(Machine& machine) {
  SetUpMail(machine, "ann.of.the.night@example.org", "the disk is full again");
}
void SetUpMailToMany(Machine& machine) {
  SetUpMail(machine, "ann.of.the.night@example.org,<bob.of.the.day@example.org>",
            "die Platte l\xE4uft \xFC"
            "ber");
}
void SetUpJapaneseMail(Machine& machine) {
  SetUpMail(machine, "ann.of.the.night@example.org", "\x93\x64\x98\x62\x93\x64\x98\x62");
  machine.mail_environment.code_page = 932;
}

void SetUpVoice(Machine& machine) {
  Store(machine, kVoice,
        {"5550100 5550100 5550100", "the sound that is repeated.wav", 1, 99,
         "the sound of what is down.wav", "", "", ""});
  for (const char* const name : {"the sound that is repeated.wav", "the sound of what is down.wav",
                                 "a-message-of-the-device.wav"}) {
    machine.riff_files.disk.files[name] = WaveBytes("samples of a sound");
  }
  machine.voice_state.probe_done = true;
  machine.voice_state.host = machine.host;
  machine.notifier =
      std::make_unique<Voice>(machine.files, machine.voice_system, machine.voice_state);
}

void SetUpAcknowledgedCall(Machine& machine) {
  SetUpVoice(machine);
  machine.line_events = {kAnswered, kKeyPressed, kSoundEnds, kSoundEnds};
}
void SetUpIgnoredCall(Machine& machine) {
  SetUpVoice(machine);
  machine.line_events = {kAnswered, kSoundEnds, kSoundEnds};
}

void SetUpPopup(Machine& machine) {
  Store(machine, kWinPopup, {"(local)", "the disk of the server is full"});
  machine.notifier = std::make_unique<WinPopup>(machine.files, machine.sockets,
                                                machine.network_system, machine.popup_system);
}
void SetUpRefusedPopup(Machine& machine) {
  SetUpPopup(machine);
  machine.network_system.has_messenger = false;
}

void SetUpSound(Machine& machine, std::int32_t is_continuous) {
  Store(machine, kSound, {"C:\\sounds\\a siren of the old days.wav", is_continuous});
  machine.notifier = std::make_unique<Sound>(machine.files, machine.player);
}
void SetUpSoundOnce(Machine& machine) {
  SetUpSound(machine, 0);
}
void SetUpSoundInALoop(Machine& machine) {
  SetUpSound(machine, 1);
}

void SetUpProgram(Machine& machine) {
  Store(machine, kLaunchProgram,
        {"C:\\programs\\restart.exe", "C:\\programs\\work", "the name of the device"});
  machine.notifier = std::make_unique<LaunchProgram>(machine.files, machine.starter);
}

constexpr std::array kAlerts = {
    Alert{"mail", SetUpMailToOne, kRelayTakes},
    Alert{"mail_ended_early", SetUpMailToOne, kRelayEndsEarly, brantel::kOk, true},
    Alert{"mail_to_many", SetUpMailToMany, kRelayTakes},
    Alert{"japanese_mail", SetUpJapaneseMail, kRelayTakes},
    Alert{"mail_for_nobody", SetUpMailToOne, kRelayRefusesRecipient, kRecipientRefused},
    Alert{"mail_refused", SetUpMailToOne, kRelayRefusesMessage, kFail},
    Alert{"beeper", SetUpBeeper, kBeeperModem},
    Alert{"beeper_busy", SetUpBeeper, kBeeperBusy},
    Alert{"beeper_without_modem", SetUpBeeper, kModemWithoutOk, kFail},
    Alert{"tap", SetUpTap, kTapTakes},
    Alert{"tap_busy_at_first", SetUpTap, kTapBusyAtFirst},
    Alert{"tap_refused", SetUpTap, kTapRefuses, kFail},
    Alert{"tap_rejected", SetUpTap, kTapRejects, kFail},
    Alert{"tap_rejected_and_ended", SetUpTap, kTapRejectsAndEnds},
    Alert{"sms_tap", SetUpSmsTap, kTapTakes},
    Alert{"sms_tap_refused", SetUpSmsTap, kTapRefuses, kFail},
    Alert{"sms_tap_rejected", SetUpSmsTap, kTapRejects},
    Alert{"ucp", SetUpUcp, kUcpTakes},
    Alert{"ucp_refused", SetUpUcp, kUcpRefuses, kFail},
    Alert{"ntt", SetUpNtt, kNttTakes},
    Alert{"ntt_refused", SetUpNtt, kNttRefuses, kFail},
    Alert{"call", SetUpAcknowledgedCall},
    Alert{"call_ignored", SetUpIgnoredCall, {}, kFail},
    Alert{"popup", SetUpPopup},
    Alert{"popup_refused", SetUpRefusedPopup, {}, kFail},
    Alert{"sound", SetUpSoundOnce},
    Alert{"sound_in_a_loop", SetUpSoundInALoop, {}, kSoundGoesOn},
    Alert{"program", SetUpProgram},
};

}  // namespace

void Prepare(Machine& machine, const Alert& alert) {
  machine.far_end.replies = alert.replies;
  alert.set_up(machine);
  machine.BeginAlert();
}

std::span<const Alert> Alerts() {
  return kAlerts;
}

}  // namespace brantel
