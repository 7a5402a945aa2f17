#include "host/commands/status_command.h"

#include <array>
#include <string>
#include <vector>

#include "host/commands/command_context_win32.h"
#include "host/module/module_file_win32.h"
#include "host/module/module_registration_win32.h"
#include "host/system/file_path_win32.h"
#include "host/text/version.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

constexpr std::array kStatusColumns = {Column{"role", "Module"},     Column{"file", "File"},
                                       Column{"version", "Version"}, Column{"bits", "Bits"},
                                       Column{"classes", "Classes"}, Column{"state", "State"}};

Record RecordOf(const ModuleFileState& module, const std::string& role) {
  Record record{{"role", role},
                {"file", ToUtf8(module.file)},
                {"version", nullptr},
                {"bits", nullptr},
                {"there", module.is_there}};
  if (!module.version.empty()) record["version"] = module.version;
  if (module.bits != 0) record["bits"] = module.bits;
  return record;
}

std::string BitsText(HostBits bits) {
  return std::to_string(static_cast<int>(bits)) + "-bit";
}

// What a person should know of a copy that is registered.
std::string StateOf(const RegisteredCopy& copy, const ModuleFileState& module,
                    const ModuleFileState& own) {
  if (!module.is_there) return "stale: the file is not there";
  if (module.bits != static_cast<int>(copy.host_bits))
    return "no " + BitsText(copy.host_bits) + " program";
  if (IsSameFile(copy.file, own.file)) return "this copy";
  return module.version == own.version ? "another copy" : "another copy, of another version";
}

Record RecordOf(const RegisteredCopy& copy, const ModuleFileState& own) {
  const ModuleFileState module = ExamineModuleFile(copy.file);
  const std::string role = "registered";
  Record record = RecordOf(module, copy.host_bits == kOwnBits
                                       ? role
                                       : role + ", " + BitsText(copy.host_bits) + " hosts");
  record["own"] = IsSameFile(copy.file, own.file);
  record["classes"] = copy.class_names.size();
  record["names"] = copy.class_names;
  record["state"] = StateOf(copy, module, own);
  return record;
}

}  // namespace

ExitCode Run(const StatusCommand&, const CommandContext& context) {
  const ModuleFileState own = ExamineModuleFile(ModuleFile(context.module_file));
  std::vector<Record> records = {RecordOf(own, "of this host")};
  records.front()["state"] = own.is_there ? "there" : "not there";
  for (const RegisteredCopy& copy : RegisteredCopies())
    records.push_back(RecordOf(copy, own));
  context.report.Prose(std::string("notifyhost ").append(ProgramVersion()) + ", " +
                       BitsText(kOwnBits) + "\n\n");
  context.report.Table(kStatusColumns, records);
  if (records.size() > 1) return ExitCode::kDone;
  context.report.Prose("\nNothing is registered; notifyhost register does that.\n");
  return ExitCode::kNothingMatched;
}

}  // namespace brantel::host
