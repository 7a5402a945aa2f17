#pragma once

#include <map>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "notifier/notifier.h"
#include "pager/ucp/ucp_session.h"
#include "smtp_mail/session/smtp_session.h"
#include "telephone/voice_state.h"
#include "telephone/voice_system.h"
#include "tests/torture/far_end.h"
#include "tests/torture/faults.h"
#include "tests/torture/strained_clock.h"
#include "tests/torture/strained_files.h"
#include "tests/torture/strained_host.h"
#include "tests/torture/strained_mail.h"
#include "tests/torture/strained_modem.h"
#include "tests/torture/strained_popup.h"
#include "tests/torture/strained_system.h"
#include "tests/torture/strained_voice.h"
#include "win_popup/popup_delivery.h"

namespace brantel {

// Where the instance of an alert stands, and its directory.
inline constexpr std::string_view kDirectory = "C:\\the directory of the alerts";
inline constexpr std::string_view kInstanceName = "the night shift of the day";
std::string InstancePath();

// A computer with everything that alerts go out by, all of which works until a fault is planned,
// and one notifier on it.
struct Machine {
  Faults faults;
  StrainedClock clock;
  FarEnd far_end;

  HostObject host_object{faults};
  StrainedFiles files{faults};
  StrainedSettings settings{faults};
  StrainedSockets sockets{faults};
  StrainedMachineName machine_name{faults};
  StrainedPorts ports{faults, far_end, clock};
  StrainedMailNetwork mail_network{faults, far_end, clock};
  StrainedMailEnvironment mail_environment{faults};
  StrainedNameResolver name_resolver{faults};
  StrainedPlayer player{faults};
  StrainedStarter starter{faults};
  StrainedRecorder recorder{faults};
  StrainedNetworkSystem network_system{faults};
  StrainedNeighbourhood neighbourhood{faults};
  StrainedWorkers workers;
  StrainedTelephony telephony{faults};
  StrainedRiffFiles riff_files{faults};
  StrainedWaveOutput wave_output{faults};
  StrainedPump pump{clock, telephony, wave_output};
  StrainedMemory memory;

  // What the classes keep for all of their objects.
  UcpTransactionCounter ucp_counter = 0;
  SmtpState smtp_state;
  VoiceState voice_state;

  SmtpSystem smtp_system{mail_network, mail_environment, machine_name, smtp_state};
  PopupSystem popup_system{machine_name, kCodePage1252};
  VoiceSystem voice_system{telephony, riff_files, wave_output, pump, clock, memory, kCodePage1252};

  // What happens on the telephone line during a call.
  std::vector<LineEvent> line_events;

  // What the last run has given beside its result.
  std::string page;
  std::map<std::string, std::string> registered;  // values by their keys
  int users_while_bound = 0;

  std::shared_ptr<NotifierHost> host = std::make_shared<StrainedHost>(host_object);
  std::unique_ptr<Notifier> notifier;

  // All works again, and the next alert begins. What is left by the one before stays.
  void BeginAlert();

  // Sends the instance as the module's object does for its host.
  Result Send();

  // Whether the far end has the alert: the relay or the centre has taken it, the call was made, the
  // sound played, the program started, the message shown.
  [[nodiscard]] bool HasTaken() const;
  // Whether it has also said so.
  [[nodiscard]] bool HasToldSo() const;

  // What is open or taken though no call is running; empty when nothing is.
  [[nodiscard]] std::string Leftovers() const;
};

}  // namespace brantel
