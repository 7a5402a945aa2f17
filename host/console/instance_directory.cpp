#include "host/console/instance_directory.h"

#include <algorithm>
#include <utility>

#include "host/console/console_pages.h"
#include "host/console/form_text.h"
#include "host/instances/instance_text.h"
#include "host/instances/journal_name.h"
#include "module/class_descriptions.h"

namespace brantel::host {

std::optional<InstanceFile> FindInstance(ConsoleContext& console, std::string_view name) {
  auto files = console.backend.ReadInstances();
  const auto found = std::ranges::find(files, name, &InstanceFile::name);
  if (found == files.end()) return std::nullopt;
  return std::move(*found);
}

const ClassDescription* ClassOf(const InstanceFile& file) {
  return file.layout == nullptr ? nullptr : FindClassDescription(file.layout->class_name);
}

std::string InstancePath(std::string_view name) {
  return "/instances/" + EncodePercents(name);
}

std::optional<std::string> FaultOfName(ConsoleContext& console, std::string_view name,
                                       const std::string* present_name) {
  if (name.empty()) return "The name is missing.";
  const auto stored = console.backend.system().ToCodePage(name);
  if (!stored) return "The name has characters that the system's code page lacks.";
  if (!console.backend.files().IsValidName(*stored) || IsJournalName(name))
    return "An instance cannot have this name.";
  const auto path = [&](const std::string& file) {
    return console.backend.directory() + "\\" + file;
  };
  const auto taken = console.backend.files().StoredName(path(*stored));
  if (!taken) return std::nullopt;
  // The file system may know the instance itself by that name, for example in other letters.
  if (present_name != nullptr && taken == console.backend.files().StoredName(path(*present_name)))
    return std::nullopt;
  return "There is a file of this name already.";
}

bool HoldsSecret(ConsoleContext& console, const ClassDescription& notifier_class,
                 const std::string& name) {
  const auto file = FindInstance(console, name);
  return file && ClassOf(*file) == &notifier_class && !SecretTexts(*file).empty();
}

void FillInstances(ConsoleContext& console, PageValues& values) {
  const auto& journal = console.backend.Journal();
  for (const InstanceFile& file : console.backend.ReadInstances())
    FillListedInstance(values.Add("instances"), file, LastAttemptOf(journal, file.name),
                       console.backend);
}

}  // namespace brantel::host
