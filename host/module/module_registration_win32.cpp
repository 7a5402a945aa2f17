#include "host/module/module_registration_win32.h"

#include <windows.h>

#include <algorithm>

#include "host/module/program_bits.h"
#include "host/system/file_path_win32.h"
#include "module/class_descriptions.h"

namespace brantel::host {
namespace {

std::string VersionOf(const std::wstring& file) {
  DWORD ignored = 0;
  const DWORD size = GetFileVersionInfoSizeW(file.c_str(), &ignored);
  std::string resource(size, '\0');
  void* found = nullptr;
  UINT length = 0;
  if (size == 0 || GetFileVersionInfoW(file.c_str(), 0, size, resource.data()) == FALSE ||
      VerQueryValueW(resource.data(), L"\\", &found, &length) == FALSE ||
      length < sizeof(VS_FIXEDFILEINFO)) {
    return "";
  }
  const auto& version = *static_cast<const VS_FIXEDFILEINFO*>(found);
  return std::to_string(HIWORD(version.dwFileVersionMS)) + "." +
         std::to_string(LOWORD(version.dwFileVersionMS)) + "." +
         std::to_string(HIWORD(version.dwFileVersionLS)) + "." +
         std::to_string(LOWORD(version.dwFileVersionLS));
}

bool IsOn64BitSystem() {
  if constexpr (kOwnBits == HostBits::k64) return true;
  BOOL is_on_64_bit_system = FALSE;
  return IsWow64Process(GetCurrentProcess(), &is_on_64_bit_system) != FALSE &&
         is_on_64_bit_system != FALSE;
}

void Add(std::vector<RegisteredCopy>& copies, const ClassDescription& notifier_class,
         HostBits bits) {
  const auto file = RegisteredModule(ToClsid(notifier_class.clsid), bits);
  if (!file) return;
  const auto known = std::ranges::find_if(copies, [&](const RegisteredCopy& copy) {
    return copy.host_bits == bits && IsSameFile(copy.file, *file);
  });
  const std::string name(notifier_class.instances.class_name);
  if (known == copies.end()) {
    copies.push_back({*file, bits, {name}});
  } else {
    known->class_names.push_back(name);
  }
}

}  // namespace

ModuleFileState ExamineModuleFile(const std::wstring& file) {
  return {file, FileExists(file) && !IsDirectory(file), ProgramBits(FileStart(file, kProgramStart)),
          VersionOf(file)};
}

std::vector<RegisteredCopy> RegisteredCopies() {
  std::vector<RegisteredCopy> copies;
  for (const ClassDescription* notifier_class : ClassDescriptions())
    Add(copies, *notifier_class, kOwnBits);
  if (!IsOn64BitSystem()) return copies;
  constexpr HostBits kOtherBits = kOwnBits == HostBits::k64 ? HostBits::k32 : HostBits::k64;
  for (const ClassDescription* notifier_class : ClassDescriptions())
    Add(copies, *notifier_class, kOtherBits);
  return copies;
}

}  // namespace brantel::host
