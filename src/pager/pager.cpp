#include "pager/pager.h"

#include "instance/class_settings.h"
#include "notifier/alert_log.h"
#include "notifier/instance_loading.h"
#include "pager/centre/pager_call.h"
#include "pager/ntt/ntt_session.h"
#include "pager/pager_description.h"
#include "pager/pager_port.h"
#include "pager/pager_protocol.h"
#include "pager/tap/tap_session.h"
#include "port/com_port_number.h"
#include "text/leading_number.h"
#include "text/string_table.h"
#include "text/text_end.h"

namespace brantel {
namespace {

using Settings = std::vector<std::string>;

const Framing& FramingOf(const Settings& settings) {
  return settings[pager_setting::k8N1] == kFramed8N1 ? kPagerFraming8N1 : kPagerFraming7E1;
}

PagerCall MakeCall(const Instance& instance, const Settings& settings, std::string_view message) {
  return {
      .modem_string = settings[pager_setting::kModemString],
      .pager_number = instance.text(pager_field::kPagerNumber),
      .terminal_password = instance.text(pager_field::kTerminalPassword),
      .pager_id = instance.text(pager_field::kPagerId),
      .message = UpToNul(message),
  };
}

// UCP tells of a page that was not taken in words of its own; NTT deliberately tells of success
// alone.
bool SendByTapAndTell(ModemPort& port, const PagerCall& call, const TapVariant& variant) {
  const bool sent = SendByTap(port, call, variant);
  if (!sent) port.log().Line(text_id::kTransmissionFailed);
  return sent;
}

bool SendBy(PagerProtocol protocol, ModemPort& port, const PagerCall& call,
            UcpTransactionCounter& ucp_counter) {
  switch (protocol) {
    case PagerProtocol::kNtt:
      return SendByNtt(port, call);
    case PagerProtocol::kUcpSms:
      return SendByUcp(port, call, ucp_counter);
    case PagerProtocol::kSmsTap:
      return SendByTapAndTell(port, call, kSmsTap);
    default:
      return SendByTapAndTell(port, call, kTap);
  }
}

}  // namespace

Result Pager::Send(const InstanceArgument& argument, NotifierHost* host) {
  const auto instance = LoadInstanceForAlert(files_, kPager.instances, argument, host);
  if (!instance || host == nullptr) return kFail;

  std::string message = instance->text(pager_field::kMessage);
  const Result expanded = host->ExpandMessage(message);
  if (Failed(expanded)) return expanded;

  const Settings settings =
      ReadSettings(settings_, kPager.settings, instance->integer(pager_field::kSettingsProfile));
  const std::optional<std::uint32_t> port_number = ComPortNumber(settings[pager_setting::kComPort]);
  const PagerCall call = MakeCall(*instance, settings, message);
  AlertLog(host).Inserts(text_id::kSendingPage,
                         {call.pager_id, call.pager_number, port_number.value_or(0)});
  ModemPort port(kPagerPolicy, port_busy_, ports_, clock_, *host);
  if (!port.OpenPort(port_number, LeadingNumber(settings[pager_setting::kBaud]),
                     FramingOf(settings))) {
    return kFail;
  }
  const PagerProtocol protocol = ProtocolNamed(instance->text(pager_field::kProtocol));
  return SendBy(protocol, port, call, ucp_counter_) ? kOk : kFail;
}

}  // namespace brantel
