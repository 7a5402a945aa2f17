#pragma once

#include "port/modem_instance_dialog.h"

namespace brantel {

// The dialogs of Pager's instances and of its settings.
extern const ModemDialogDescription kPagerDialog;

}  // namespace brantel
