#include "host/module/class_catalogue_win32.h"

#include <oleauto.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>

#include "brantel/notifier_contract.h"
#include "host/instances/class_choice.h"
#include "host/outcome/command_failure.h"
#include "host/system/file_path_win32.h"
#include "host/text/name_list.h"
#include "system/windows/bstr_win32.h"
#include "system/windows/com_pointer_win32.h"
#include "system/windows/registry_key_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

constexpr std::size_t kGuidTextCapacity = 39;

// Owns what a type description says of itself.
class TypeAttributes {
 public:
  explicit TypeAttributes(ITypeInfo& type) : type_(type) {
    if (FAILED(type.GetTypeAttr(&attributes_))) attributes_ = nullptr;
  }
  TypeAttributes(const TypeAttributes&) = delete;
  TypeAttributes& operator=(const TypeAttributes&) = delete;
  ~TypeAttributes() {
    if (attributes_ != nullptr) type_.ReleaseTypeAttr(attributes_);
  }

  [[nodiscard]] bool is_class() const {
    return attributes_ != nullptr && attributes_->typekind == TKIND_COCLASS;
  }
  [[nodiscard]] const GUID& guid() const { return attributes_->guid; }

 private:
  ITypeInfo& type_;
  TYPEATTR* attributes_ = nullptr;
};

bool IsOurs(ITypeLib& library) {
  TLIBATTR* attributes = nullptr;
  if (FAILED(library.GetLibAttr(&attributes))) return false;
  const bool is_ours = attributes->guid == LIBID_BRANTEL_NOTIFICATIONSLib;
  library.ReleaseTLibAttr(attributes);
  return is_ours;
}

ComPointer<ITypeLib> LoadTypeLibrary(const std::wstring& module_file) {
  if (!FileExists(module_file)) {
    throw CommandFailure(ExitCode::kFailed, "there is no module file " + ToUtf8(module_file));
  }
  ComPointer<ITypeLib> library;
  const HRESULT loaded = LoadTypeLibEx(module_file.c_str(), REGKIND_NONE, library.put());
  if (FAILED(loaded) || !IsOurs(*library.get())) {
    throw CommandFailure(ExitCode::kFailed,
                         ToUtf8(module_file) + " is not a Brantel_Notifications module");
  }
  return library;
}

std::optional<ModuleClass> ReadClass(ITypeLib& library, UINT index) {
  ComPointer<ITypeInfo> type;
  if (FAILED(library.GetTypeInfo(index, type.put()))) return std::nullopt;
  const TypeAttributes attributes(*type.get());
  if (!attributes.is_class()) return std::nullopt;
  Bstr name;
  Bstr description;
  if (FAILED(type->GetDocumentation(MEMBERID_NIL, name.in_out(), description.in_out(), nullptr,
                                    nullptr))) {
    return std::nullopt;
  }
  return ModuleClass{ToUtf8(name.view()), ToUtf8(description.view()), attributes.guid()};
}

}  // namespace

std::vector<ModuleClass> ReadClassCatalogue(const std::wstring& module_file) {
  const ComPointer<ITypeLib> library = LoadTypeLibrary(module_file);
  std::vector<ModuleClass> classes;
  for (UINT index = 0; index < library->GetTypeInfoCount(); ++index) {
    if (auto module_class = ReadClass(*library.get(), index)) {
      classes.push_back(std::move(*module_class));
    }
  }
  return classes;
}

std::string ListClassNames(const std::vector<ModuleClass>& classes) {
  return ListNames(classes, &ModuleClass::name);
}

const ModuleClass& FindClass(const std::vector<ModuleClass>& classes, const std::string& name) {
  return ChooseClass(classes, &ModuleClass::name, name);
}

std::string VersionIndependentProgId(const std::string& class_name) {
  return "Brantel_Notifications." + class_name;
}

std::string ProgId(const ModuleClass& module_class) {
  return VersionIndependentProgId(module_class.name) + ".1";
}

std::string GuidText(const GUID& guid) {
  std::array<wchar_t, kGuidTextCapacity> text{};
  const int length = StringFromGUID2(guid, text.data(), kGuidTextCapacity);
  return ToUtf8({text.data(), static_cast<std::size_t>(length - 1)});
}

CLSID ToClsid(const Guid& guid) {
  CLSID clsid{guid.data1, guid.data2, guid.data3, {}};
  std::ranges::copy(guid.data4, std::begin(clsid.Data4));
  return clsid;
}

std::optional<std::wstring> RegisteredModule(const CLSID& clsid, HostBits bits) {
  const REGSAM view = bits == HostBits::k32 ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;
  const std::wstring path = L"CLSID\\" + FromUtf8(GuidText(clsid)) + L"\\InprocServer32";
  RegistryHandle key;
  if (RegOpenKeyExW(HKEY_CLASSES_ROOT, path.c_str(), 0, KEY_READ | view, key.put()) !=
      ERROR_SUCCESS) {
    return std::nullopt;
  }
  std::wstring file(kPathCapacity, L'\0');
  auto size = static_cast<DWORD>(file.size() * sizeof(wchar_t));
  DWORD type = 0;
  const LSTATUS read = RegQueryValueExW(key.get(), nullptr, nullptr, &type,
                                        reinterpret_cast<BYTE*>(file.data()), &size);
  if (read != ERROR_SUCCESS || type != REG_SZ) return std::nullopt;
  file.resize(size / sizeof(wchar_t));
  // The value may be stored with its NUL or without.
  file.resize(file.find(L'\0') == std::wstring::npos ? file.size() : file.find(L'\0'));
  return file;
}

}  // namespace brantel::host
