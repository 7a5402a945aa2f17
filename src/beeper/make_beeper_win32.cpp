// Makes the class of its parts and of the system's things.
#include <memory>
#include <utility>

#include "beeper/beeper.h"
#include "beeper/beeper_dialog.h"
#include "instance/instance_files_win32.h"
#include "port/serial_device_win32.h"
#include "system/clock_win32.h"
#include "system/registry_settings_win32.h"

namespace brantel {

std::unique_ptr<Notifier> MakeBeeper() {
  return std::make_unique<Beeper>(disk_instance_files, registry_settings, system_serial_ports,
                                  system_clock);
}

std::unique_ptr<InstanceDialog> MakeBeeperDialog(DialogView& view, InstanceDialogCall call) {
  return std::make_unique<BeeperDialog>(view, disk_instance_files, std::move(call),
                                        registry_settings);
}

}  // namespace brantel
