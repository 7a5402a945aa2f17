#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "host/console/console_backend.h"
#include "host/console/module_pages_win32.h"
#include "host/console/send_desk_win32.h"
#include "host/machine/system_machine_win32.h"
#include "host/system/rotated_file_win32.h"
#include "instance/instance_files_win32.h"

namespace brantel::host {

// A console's view of this computer: the instances of a directory on disk, its journal, and the
// module's own pages.
class DiskConsoleBackend final : public ConsoleBackend {
 public:
  // The setup must outlive the object. Throws CommandFailure when the code page lacks characters of
  // the directory.
  explicit DiskConsoleBackend(const SendSetup& setup);

  InstanceFiles& files() override { return disk_instance_files; }
  [[nodiscard]] const std::string& directory() const override { return stored_directory_; }
  CheckedSystem& system() override { return machine_; }
  std::vector<InstanceFile> ReadInstances() override;
  bool MakeFolder(const std::string& path) override;
  std::vector<std::string> FilesIn(const std::string& folder) override;
  std::optional<std::string> AddPage(const ClassDescription& notifier_class) override;
  std::optional<std::string> EditPage(const ClassDescription& notifier_class,
                                      const std::string& name) override;
  bool SubmitForm(const ClassDescription& notifier_class, const std::optional<std::string>& edited,
                  const std::string& form) override;
  std::optional<std::string> BeginSend(const SendOrder& order) override;
  std::optional<SendProgress> ProgressOf(const std::string& id) override;
  const std::vector<JournalEntry>& Journal() override;
  bool RunsStill(const JournalEntry& entry) override;

 private:
  const std::wstring directory_;
  const std::string stored_directory_;
  SystemMachine machine_;
  const ModulePages pages_;
  const RotatedFile journal_;
  // What the journal held when it was looked at last.
  std::vector<JournalEntry> entries_;
  std::string seen_;
  std::optional<std::chrono::steady_clock::time_point> looked_;
  // Last, so that it waits for its threads before the rest is gone.
  SendDesk desk_;
};

}  // namespace brantel::host
