#include "tests/module/registry_tree.h"

#include <algorithm>
#include <cstring>
#include <exception>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "tests/module/utf8_text.h"

namespace brantel {
namespace {

// Names are at most 255 characters, those of values may be longer but never are here.
constexpr DWORD kNameCapacity = 1024;

void Require(LSTATUS status) {
  if (status != ERROR_SUCCESS) {
    throw std::runtime_error("the registry answers " + std::to_string(status));
  }
}

std::vector<StoredValue> ReadValues(HKEY key) {
  std::vector<StoredValue> values;
  for (DWORD index = 0;; ++index) {
    StoredValue value{.name = std::wstring(kNameCapacity, L'\0'), .data = std::vector<BYTE>(65536)};
    DWORD name_length = kNameCapacity;
    auto size = static_cast<DWORD>(value.data.size());
    const LSTATUS status = RegEnumValueW(key, index, value.name.data(), &name_length, nullptr,
                                         &value.type, value.data.data(), &size);
    if (status == ERROR_NO_MORE_ITEMS) break;
    Require(status);
    value.name.resize(name_length);
    value.data.resize(size);
    values.push_back(std::move(value));
  }
  std::ranges::sort(values, {}, &StoredValue::name);
  return values;
}

void WriteTree(HKEY parent, const std::wstring& path, const StoredKey& tree) {
  const OwnedKey key = CreateKey(parent, path);
  for (const StoredValue& value : tree.values) {
    Require(RegSetValueExW(key.get(), value.name.c_str(), 0, value.type, value.data.data(),
                           static_cast<DWORD>(value.data.size())));
  }
  for (const auto& [name, subtree] : tree.subkeys)
    WriteTree(key.get(), name, subtree);
}

// The text of a well-formed REG_SZ value.
bool ReadText(const StoredValue& value, std::wstring& text) {
  if (value.type != REG_SZ || value.data.empty() || value.data.size() % sizeof(wchar_t) != 0) {
    return false;
  }
  text.resize(value.data.size() / sizeof(wchar_t));
  std::memcpy(text.data(), value.data.data(), value.data.size());
  if (text.find(L'\0') != text.size() - 1) return false;
  text.pop_back();
  return true;
}

void ShowValue(std::ostream& out, const std::string& indent, const StoredValue& value) {
  out << indent << (value.name.empty() ? "@" : ToUtf8(value.name)) << " = ";
  std::wstring text;
  if (ReadText(value, text)) {
    out << "'" << ToUtf8(text) << "'\n";
    return;
  }
  out << "type " << value.type << ":" << std::hex;
  for (const BYTE byte : value.data)
    out << ' ' << static_cast<unsigned>(byte);
  out << std::dec << '\n';
}

void ShowTree(std::ostream& out, const std::string& indent, const StoredKey& tree) {
  for (const StoredValue& value : tree.values)
    ShowValue(out, indent, value);
  for (const auto& [name, subtree] : tree.subkeys) {
    out << indent << ToUtf8(name) << '\n';
    ShowTree(out, indent + "  ", subtree);
  }
}

}  // namespace

OwnedKey OpenKey(HKEY parent, const std::wstring& path) {
  HKEY key = nullptr;
  const LSTATUS status = RegOpenKeyExW(parent, path.c_str(), 0, KEY_READ, &key);
  return OwnedKey(status == ERROR_SUCCESS ? key : nullptr);
}

OwnedKey CreateKey(HKEY parent, const std::wstring& path, DWORD options) {
  HKEY key = nullptr;
  Require(RegCreateKeyExW(parent, path.c_str(), 0, nullptr, options, KEY_ALL_ACCESS, nullptr, &key,
                          nullptr));
  return OwnedKey(key);
}

void SetText(HKEY key, const wchar_t* name, const std::wstring& text) {
  Require(RegSetValueExW(key, name, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                         static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))));
}

void DeleteTree(HKEY parent, const std::wstring& path) {
  const LSTATUS status = RegDeleteTreeW(parent, path.c_str());
  if (status != ERROR_FILE_NOT_FOUND) Require(status);
}

bool KeyExists(HKEY parent, const std::wstring& path) {
  return OpenKey(parent, path) != nullptr;
}

std::vector<std::wstring> SubkeyNames(HKEY key) {
  std::vector<std::wstring> names;
  for (DWORD index = 0;; ++index) {
    std::wstring name(kNameCapacity, L'\0');
    DWORD length = kNameCapacity;
    const LSTATUS status =
        RegEnumKeyExW(key, index, name.data(), &length, nullptr, nullptr, nullptr, nullptr);
    if (status == ERROR_NO_MORE_ITEMS) break;
    Require(status);
    name.resize(length);
    names.push_back(std::move(name));
  }
  std::ranges::sort(names);
  return names;
}

StoredKey ReadTree(HKEY key) {
  StoredKey tree{.values = ReadValues(key), .subkeys = {}};
  for (std::wstring& name : SubkeyNames(key)) {
    StoredKey subtree = ReadTree(OpenKey(key, name).get());
    tree.subkeys.push_back({std::move(name), std::move(subtree)});
  }
  return tree;
}

std::string DumpTree(HKEY parent, const std::wstring& path) {
  const OwnedKey key = OpenKey(parent, path);
  if (!key) return "(no key)";
  std::ostringstream out;
  ShowTree(out, "", ReadTree(key.get()));
  return out.str();
}

PrivateClassesRoot::PrivateClassesRoot(DWORD options)
    : path_(L"Software\\Brantel Module Tests " + std::to_wstring(GetCurrentProcessId())) {
  const OwnedKey root = CreateKey(HKEY_CURRENT_USER, path_, options);
  CreateKey(root.get(), L"CLSID", options);
  CreateKey(root.get(), L"TypeLib", options);
  Require(RegOverridePredefKey(HKEY_CLASSES_ROOT, root.get()));
}

PrivateClassesRoot::~PrivateClassesRoot() {
  RegOverridePredefKey(HKEY_CLASSES_ROOT, nullptr);
  RegDeleteTreeW(HKEY_CURRENT_USER, path_.c_str());
}

ClassesRootKeeper::ClassesRootKeeper(std::vector<std::wstring> paths) {
  for (std::wstring& path : paths) {
    const OwnedKey key = OpenKey(HKEY_CLASSES_ROOT, path);
    StoredKey tree = key ? ReadTree(key.get()) : StoredKey();
    kept_.push_back({std::move(path), key != nullptr, std::move(tree)});
  }
}

ClassesRootKeeper::~ClassesRootKeeper() {
  for (const Kept& kept : kept_) {
    RegDeleteTreeW(HKEY_CLASSES_ROOT, kept.path.c_str());
    try {
      if (kept.existed) WriteTree(HKEY_CLASSES_ROOT, kept.path, kept.tree);
    } catch (const std::exception& failure) {
      std::cerr << ToUtf8(kept.path) << " is not what it was: " << failure.what() << '\n';
    }
  }
}

}  // namespace brantel
