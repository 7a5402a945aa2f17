#pragma once

#include <string_view>

#include "instance/instance_files.h"
#include "notifier/notifier.h"
#include "smtp_mail/session/smtp_session.h"
#include "system/settings_store.h"
#include "system/sockets_library.h"

namespace brantel {

// What SMTPMail's Send answers when the relay refuses the recipient as unavailable (reply 550).
inline constexpr Result kRecipientRefused = static_cast<Result>(0x80140001);

// How many milliseconds each receive waits when the settings do not say.
inline constexpr std::string_view kDefaultMailTimeout = "10000";

// Sends an e-mail through a relay.
class SmtpMail final : public Notifier {
 public:
  // What is passed by reference must outlive the object.
  SmtpMail(InstanceFiles& files, SettingsStore& settings, SocketsLibrary& sockets,
           const SmtpSystem& system)
      : files_(files), settings_(settings), sockets_(sockets), system_(system) {}

  // The sockets library is started while a host is bound.
  std::shared_ptr<NotifierHost> Initialize(const HostQuery& query_host) override;
  void Shutdown() noexcept override;

  // S_OK when the relay accepted the message, kRecipientRefused, or E_FAIL for any other failure;
  // the host's result when it cannot expand the sender, the subject or the message. Without a host
  // they are sent unexpanded.
  Result Send(const InstanceArgument& argument, NotifierHost* host) override;

 private:
  InstanceFiles& files_;
  SettingsStore& settings_;
  SocketsLibrary& sockets_;
  SmtpSystem system_;
};

}  // namespace brantel
