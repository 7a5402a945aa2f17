#pragma once

#include <string>
#include <string_view>

#include "system/machine_name.h"
#include "text/code_page.h"
#include "win_popup/network_api.h"

namespace brantel {

// What pop-ups are delivered by.
struct PopupSystem {
  MachineName& machine_name;
  const CodePage& code_page;
};

// The message name to send to: this computer's where the destination is empty or "(local)", else
// the destination itself, also when nobody knows what this computer is called.
std::string ResolveDestination(MachineName& machine_name, std::string_view destination);

// The message as the messenger service takes it: in UTF-16, at most 1,024 characters of it, in a
// buffer of twice as many bytes as the message has in the ANSI code page. What the text does not
// fill of that, because characters took two bytes there or were left out, is zero.
std::u16string MessageBuffer(const CodePage& code_page, std::string_view message);

// Shows the message where the destination says. False when the messenger service refuses; true also
// where there is no messenger service to ask, as on the Windows 95 family: it is deliberately no
// failure of the alert that this system has no pop-ups.
bool DeliverPopup(const PopupSystem& system, NetworkApi& network, std::string_view destination,
                  std::string_view message);

}  // namespace brantel
