#pragma once

#include <cstdint>
#include <string>

#include "description/class_description.h"
#include "host/alert/alert_event.h"
#include "host/alert/text_expander.h"
#include "host/preview/delivery_time.h"
#include "host/preview/preview_part.h"
#include "host/preview/text_conversions.h"
#include "instance/instance_argument.h"
#include "instance/instance_files.h"
#include "smtp_mail/message/mail_environment.h"
#include "smtp_mail/network/mail_socket.h"
#include "system/machine_name.h"
#include "system/result.h"
#include "system/settings_store.h"
#include "system/sockets_library.h"
#include "telephone/wave_system.h"
#include "text/code_page.h"

namespace brantel::host {

// What a preview reads of the computer. It changes nothing of it, and of the network it has
// addresses read alone.
struct PreviewSources {
  InstanceFiles& files;
  SettingsStore& settings;
  SocketsLibrary& sockets;
  MachineName& machine_name;
  MailEnvironment& mail_environment;
  const MailNetwork& mail_network;
  RiffFiles& waves;
  const CodePage& code_page;
  TextConversions texts;
};

// The alert that is looked at.
struct PreviewedAlert {
  const ClassDescription& notifier_class;
  InstanceArgument instance;
  AlertEvent event;
  TextExpander expand;
};

// What goes out when every far end is willing.
struct Preview {
  Result result = kOk;  // of the alert
  PreviewParts parts;
  std::string log;  // of the alert, UTF-8
  DeliveryTime time;
};

// Has the module's own class deliver the alert to far ends on paper, by a clock that only counts.
Preview PreviewAlert(const PreviewSources& sources, const PreviewedAlert& alert);

}  // namespace brantel::host
