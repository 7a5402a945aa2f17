// Makes the class of its parts and of the system's things.
#include <memory>
#include <utility>

#include "instance/instance_files_win32.h"
#include "pager/pager.h"
#include "pager/pager_dialog.h"
#include "port/serial_device_win32.h"
#include "system/clock_win32.h"
#include "system/registry_settings_win32.h"

namespace brantel {
namespace {

// Counts what all objects send by UCP.
constinit UcpTransactionCounter module_ucp_counter = 0;

}  // namespace

std::unique_ptr<Notifier> MakePager() {
  return std::make_unique<Pager>(disk_instance_files, registry_settings, system_serial_ports,
                                 system_clock, module_ucp_counter);
}

std::unique_ptr<InstanceDialog> MakePagerDialog(DialogView& view, InstanceDialogCall call) {
  return std::make_unique<ModemInstanceDialog>(kPagerDialog, view, disk_instance_files,
                                               std::move(call), registry_settings);
}

}  // namespace brantel
