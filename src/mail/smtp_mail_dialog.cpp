#include "mail/smtp_mail_dialog.h"

#include <array>
#include <bit>
#include <cstdint>

#include "framework/format_text.h"
#include "mail/smtp_mail_layout.h"

namespace brantel {
namespace {

using namespace smtp_mail_field;

// The help file has no page of this dialog's own, so help opens at the contents.
constexpr InstanceDialogSpec kSpec = {
    .layout = kSmtpMailLayout,
    .template_id = 112,
    .add_title_id = text_id::kAddSmtpMail,
    .edit_title_id = text_id::kEditSmtpMail,
    .name_control = 203,
    .name_error_focus = 203,
    .prefilled = false,
    .help_button = 208,
};

std::string ToDottedText(Ipv4Address address) {
  const auto bytes = std::bit_cast<std::array<std::uint8_t, 4>>(address.network_order);
  return FormatText("%d.%d.%d.%d", {std::uint32_t{bytes[0]}, std::uint32_t{bytes[1]},
                                    std::uint32_t{bytes[2]}, std::uint32_t{bytes[3]}});
}

int ControlOf(std::size_t field) {
  return kSmtpMailLayout.fields[field].control.id;
}

}  // namespace

SmtpMailDialog::SmtpMailDialog(DialogView& view, InstanceFiles& files, InstanceDialogCall call,
                               const MailNetwork& network, NameResolver& resolver)
    : InstanceDialog(kSpec, view, files, std::move(call)), network_(network), resolver_(resolver) {}

bool SmtpMailDialog::RequireValidFields() {
  return RequireGateway() && RequireAddress(kFrom, text_id::kSenderInvalid) &&
         RequireAddress(kTo, text_id::kRecipientsInvalid);
}

bool SmtpMailDialog::RequireGateway() {
  const std::string gateway = FieldText(kGateway);
  if (!gateway.empty() && BecomesAddress(gateway)) return true;
  Refuse(text_id::kGatewayInvalid, "", ControlOf(kGateway));
  return false;
}

bool SmtpMailDialog::BecomesAddress(const std::string& gateway) {
  if (network_.ParseAddress(gateway)) return true;
  const auto address = resolver_.Resolve(gateway);
  if (address) view().SetText(ControlOf(kGateway), ToDottedText(*address));
  return address.has_value();
}

bool SmtpMailDialog::RequireAddress(std::size_t field, unsigned invalid_text_id) {
  if (FieldText(field).find('@') != std::string::npos) return true;
  Refuse(invalid_text_id, "", ControlOf(field));
  return false;
}

}  // namespace brantel
