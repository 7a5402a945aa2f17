#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "text/guid.h"

namespace brantel::host {

// What the module's type library says of a notifier class. Texts are UTF-8.
struct ModuleClass {
  std::string name;
  std::string description;
  CLSID clsid;
};

// The notifier classes that a module file describes, in their order; the module is not loaded for
// it. Throws CommandFailure when there is no such file or it has no type library.
std::vector<ModuleClass> ReadClassCatalogue(const std::wstring& module_file);

// The names of the classes, separated by commas.
std::string ListClassNames(const std::vector<ModuleClass>& classes);

// The class of that name, in any letter case, as ProgIDs have it. Throws CommandFailure with the
// names to choose from when there is none.
const ModuleClass& FindClass(const std::vector<ModuleClass>& classes, const std::string& name);

// "Brantel_Notifications.Beeper" for Beeper: the ProgID for whatever version is current.
std::string VersionIndependentProgId(const std::string& class_name);

// "Brantel_Notifications.Beeper.1": the ProgID of the one version there is.
std::string ProgId(const ModuleClass& module_class);

// A GUID as "{8-4-4-4-12}".
std::string GuidText(const GUID& guid);

// The system's form of the same identifier.
CLSID ToClsid(const Guid& guid);

// For which hosts a class is registered; 64-bit systems keep the two apart.
enum class HostBits { k32 = 32, k64 = 64 };

// Those of this program.
inline constexpr HostBits kOwnBits = sizeof(void*) == 8 ? HostBits::k64 : HostBits::k32;

// The module file that the class is registered for, if it is registered.
std::optional<std::wstring> RegisteredModule(const CLSID& clsid, HostBits bits = kOwnBits);

}  // namespace brantel::host
