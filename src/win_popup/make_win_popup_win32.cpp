// Makes the class of its parts and of the system's things.
#include <memory>
#include <utility>

#include "instance/instance_files_win32.h"
#include "system/machine_name_win32.h"
#include "system/sockets_library_win32.h"
#include "system/windows/code_page_win32.h"
#include "win_popup/network_neighbourhood_win32.h"
#include "win_popup/network_system_win32.h"
#include "win_popup/win_popup.h"
#include "win_popup/win_popup_dialog.h"
#include "win_popup/worker_threads_win32.h"

namespace brantel {
namespace {

constinit SystemNetwork network_system;
constinit SystemNeighbourhood neighbourhood;
constinit SystemWorkerThreads worker_threads;

}  // namespace

std::unique_ptr<Notifier> MakeWinPopup() {
  return std::make_unique<WinPopup>(disk_instance_files, win_sock, network_system,
                                    PopupSystem{system_machine_name, system_code_page});
}

std::unique_ptr<InstanceDialog> MakeWinPopupDialog(DialogView& view, InstanceDialogCall call) {
  return std::make_unique<WinPopupDialog>(
      view, disk_instance_files, std::move(call),
      DestinationSources{network_system, neighbourhood, worker_threads});
}

}  // namespace brantel
