// Makes the class of its parts and of the system's things.
#include <memory>
#include <utility>

#include "instance/instance_files_win32.h"
#include "smtp_mail/message/mail_environment_win32.h"
#include "smtp_mail/network/mail_socket_win32.h"
#include "smtp_mail/network/name_resolver_win32.h"
#include "smtp_mail/smtp_mail.h"
#include "smtp_mail/smtp_mail_dialog.h"
#include "system/machine_name_win32.h"
#include "system/registry_settings_win32.h"
#include "system/sockets_library_win32.h"

namespace brantel {
namespace {

constinit SystemMailEnvironment mail_environment;
constinit SystemMailNetwork mail_network;
constinit SystemNameResolver name_resolver(win_sock);

// What mail sessions leave behind for each other, whichever object runs them.
constinit SmtpState smtp_state;

}  // namespace

std::unique_ptr<Notifier> MakeSMTPMail() {
  return std::make_unique<SmtpMail>(
      disk_instance_files, registry_settings, win_sock,
      SmtpSystem{mail_network, mail_environment, system_machine_name, smtp_state});
}

std::unique_ptr<InstanceDialog> MakeSMTPMailDialog(DialogView& view, InstanceDialogCall call) {
  return std::make_unique<SmtpMailDialog>(view, disk_instance_files, std::move(call), mail_network,
                                          name_resolver);
}

}  // namespace brantel
