#include "smtp_mail/smtp_mail_dialog.h"

#include <array>
#include <bit>
#include <cstdint>

#include "smtp_mail/smtp_mail_description.h"
#include "smtp_mail/smtp_mail_ids.h"
#include "text/format_text.h"

namespace brantel {
namespace {

std::string ToDottedText(Ipv4Address address) {
  const auto bytes = std::bit_cast<std::array<std::uint8_t, 4>>(address.network_order);
  return FormatText("%d.%d.%d.%d", {std::uint32_t{bytes[0]}, std::uint32_t{bytes[1]},
                                    std::uint32_t{bytes[2]}, std::uint32_t{bytes[3]}});
}

}  // namespace

SmtpMailDialog::SmtpMailDialog(DialogView& view, InstanceFiles& files, InstanceDialogCall call,
                               const MailNetwork& network, NameResolver& resolver)
    : InstanceDialog(kSMTPMail, view, files, std::move(call)),
      network_(network),
      resolver_(resolver) {}

bool SmtpMailDialog::Accepts(std::size_t field, const std::string& text) {
  if (field != smtp_mail_field::kGateway || network_.ParseAddress(text)) return true;
  const auto address = resolver_.Resolve(text);
  if (address) view().SetText(SMTP_MAIL_GATEWAY, ToDottedText(*address));
  return address.has_value();
}

}  // namespace brantel
