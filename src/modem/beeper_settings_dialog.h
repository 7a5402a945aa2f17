#pragma once

#include "modem/port_settings_dialog.h"

namespace brantel {

extern const PortSettingsDialogSpec kBeeperSettingsDialog;

}  // namespace brantel
