// Makes the class of its parts and of the system's things.
#include <memory>
#include <utility>

#include "instance/instance_files_win32.h"
#include "launch_program/launch_program.h"
#include "launch_program/launch_program_dialog.h"
#include "launch_program/process_starter_win32.h"

namespace brantel {
namespace {

constinit SystemProcessStarter process_starter;

}  // namespace

std::unique_ptr<Notifier> MakeLaunchProgram() {
  return std::make_unique<LaunchProgram>(disk_instance_files, process_starter);
}

std::unique_ptr<InstanceDialog> MakeLaunchProgramDialog(DialogView& view, InstanceDialogCall call) {
  return std::make_unique<LaunchProgramDialog>(view, disk_instance_files, std::move(call),
                                               process_starter);
}

}  // namespace brantel
