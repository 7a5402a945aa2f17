#include "beeper/beeper.h"

#include <algorithm>
#include <vector>

#include "beeper/beeper_call.h"
#include "beeper/beeper_description.h"
#include "beeper/beeper_port.h"
#include "instance/class_settings.h"
#include "notifier/alert_log.h"
#include "notifier/alert_text.h"
#include "notifier/instance_loading.h"
#include "port/com_port_number.h"
#include "text/format_text.h"
#include "text/leading_number.h"
#include "text/string_table.h"
#include "text/text_end.h"

namespace brantel {
namespace {

using Settings = std::vector<std::string>;

// The host's own variable for what a beeper is to show.
constexpr std::string_view kEventTemplate = "%C";

std::size_t CodeField(AlertKind kind) {
  switch (kind) {
    case AlertKind::kUp:
      return beeper_field::kUpCode;
    case AlertKind::kDown:
      return beeper_field::kDownCode;
    default:
      return beeper_field::kTrapCode;
  }
}

// For a modem, to which a byte's lower seven bits are all of it (ITU-T V.250).
constexpr bool IsControl(char c) {
  const int seven_bits = c & 0x7F;
  return seven_bits < ' ' || seven_bits == 0x7F;
}

// The alert as it may stand in a dial command. What the host fills in comes from the network, and a
// carriage return in it would end the command: the modem would execute what follows. Formatting
// without arguments brings no such character back.
AlertText ForDialling(AlertText alert) {
  alert.text.resize(UpToNul(alert.text).size());
  std::erase_if(alert.text, IsControl);
  return alert;
}

std::string CompleteMessage(const Instance& instance, const AlertText& alert) {
  const std::string_view expanded = UpToNul(alert.text);
  const std::string message =
      alert.kind ? FormatText("%s%s", {instance.text(CodeField(*alert.kind)), expanded})
                 : std::string(expanded);
  // Deliberately formatted once more, without arguments: operators write "%%" for a percent sign.
  return FormatText(message);
}

void LogCall(const AlertLog& log, const Instance& instance, const Settings& settings,
             const std::string& message) {
  log.Line(text_id::kSendBeeperMessage);
  log.Line(text_id::kBeepNumber);
  log.Text(instance.text(beeper_field::kBeeperNumber));
  log.Line(text_id::kModemString);
  log.Text(settings[beeper_setting::kModemString]);
  log.Line(text_id::kDialString);
  log.Text(settings[beeper_setting::kDialString]);
  log.Line(text_id::kCompleteMessage);
  log.Text(message);
  log.Line(text_id::kSendingMessage);
}

BeeperCall MakeCall(const Instance& instance, const Settings& settings,
                    const std::string& message) {
  return {
      .port_number = ComPortNumber(settings[beeper_setting::kComPort]),
      .baud_selector = LeadingNumber(settings[beeper_setting::kBaud]),
      .modem_string = settings[beeper_setting::kModemString],
      .dial_command = FormatText(settings[beeper_setting::kDialString],
                                 {instance.text(beeper_field::kBeeperNumber), message}),
      .extra_wait = static_cast<std::uint32_t>(
          std::max(LeadingNumber(settings[beeper_setting::kTimeout]), 0)),
  };
}

}  // namespace

Result Beeper::Send(const InstanceArgument& argument, NotifierHost* host) {
  const auto instance = LoadInstanceForAlert(files_, kBeeper.instances, argument, host);
  if (!instance || host == nullptr) return kFail;

  const Settings settings =
      ReadSettings(settings_, kBeeper.settings, instance->integer(beeper_field::kSettingsProfile));
  const AlertComposition composition =
      ComposeAlertText(*host, kEventTemplate, instance->text(beeper_field::kReportMessage));
  if (!composition.alert) return composition.result;

  LogCall(AlertLog(host), *instance, settings, CompleteMessage(*instance, *composition.alert));
  const std::string message = CompleteMessage(*instance, ForDialling(*composition.alert));
  ModemPort port(kBeeperPolicy, port_busy_, ports_, clock_, *host);
  return PlaceCall(port, MakeCall(*instance, settings, message)) ? kOk : kFail;
}

}  // namespace brantel
