#pragma once

#include <cstddef>
#include <string>

#include "framework/instance_dialog.h"
#include "mail/mail_socket.h"
#include "mail/name_resolver.h"

namespace brantel {

// The dialog of SMTPMail's instances. Mail goes to an address alone, so the name of a relay that an
// operator enters is looked up here, once, and its address takes the name's place.
class SmtpMailDialog final : public InstanceDialog {
 public:
  // All but the call must outlive the object.
  SmtpMailDialog(DialogView& view, InstanceFiles& files, InstanceDialogCall call,
                 const MailNetwork& network, NameResolver& resolver);

 private:
  bool RequireValidFields() override;
  bool RequireGateway();
  bool RequireAddress(std::size_t field, unsigned invalid_text_id);
  // Whether the text is an address or has become one in the dialog.
  bool BecomesAddress(const std::string& gateway);

  const MailNetwork& network_;
  NameResolver& resolver_;
};

}  // namespace brantel
