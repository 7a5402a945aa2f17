#pragma once

#include <cstddef>
#include <string>

#include "dialog/instance_dialog.h"
#include "smtp_mail/network/mail_socket.h"
#include "smtp_mail/network/name_resolver.h"

namespace brantel {

// The dialog of SMTPMail's instances. Mail goes to an address alone, so the name of a relay that an
// operator enters is looked up here, once, and its address takes the name's place.
class SmtpMailDialog final : public InstanceDialog {
 public:
  // All but the call must outlive the object.
  SmtpMailDialog(DialogView& view, InstanceFiles& files, InstanceDialogCall call,
                 const MailNetwork& network, NameResolver& resolver);

 private:
  // A gateway that is the name of a host becomes its address in the dialog.
  bool Accepts(std::size_t field, const std::string& text) override;

  const MailNetwork& network_;
  NameResolver& resolver_;
};

}  // namespace brantel
