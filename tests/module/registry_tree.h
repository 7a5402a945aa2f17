#pragma once

#include <windows.h>

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace brantel {

struct RegistryKeyCloser {
  void operator()(HKEY key) const noexcept { RegCloseKey(key); }
};

// Owns an open registry key.
using OwnedKey = std::unique_ptr<std::remove_pointer_t<HKEY>, RegistryKeyCloser>;

// Opens a key for reading; null when there is none.
OwnedKey OpenKey(HKEY parent, const std::wstring& path);

// Creates a key or opens the existing one, for all access. Throws std::runtime_error on failure.
OwnedKey CreateKey(HKEY parent, const std::wstring& path, DWORD options = REG_OPTION_NON_VOLATILE);

void SetText(HKEY key, const wchar_t* name, const std::wstring& text);
void DeleteTree(HKEY parent, const std::wstring& path);
bool KeyExists(HKEY parent, const std::wstring& path);

// Names of the keys directly below, ascending.
std::vector<std::wstring> SubkeyNames(HKEY key);

struct StoredValue {
  std::wstring name;  // empty for the default value
  DWORD type = REG_NONE;
  std::vector<BYTE> data;
};

struct NamedKey;

// A key with all below it.
struct StoredKey {
  std::vector<StoredValue> values;  // by name
  std::vector<NamedKey> subkeys;    // by name
};

struct NamedKey {
  std::wstring name;
  StoredKey key;
};

StoredKey ReadTree(HKEY key);

// What lies below the path, one line for each key and value, two blanks deeper for each level: keys
// as "Name", values as "Name = 'text'" with @ for the default value's name. A value that is not of
// type REG_SZ with exactly one NUL at its end shows its type and bytes instead. "(no key)" when
// there is none.
std::string DumpTree(HKEY parent, const std::wstring& path);

// Lets this process see another, empty key as HKEY_CLASSES_ROOT while it lives, so that nothing
// that is registered meanwhile reaches the machine. It holds keys CLSID and TypeLib, like every
// classes root.
class PrivateClassesRoot {
 public:
  // Nobody can create keys that outlast a restart below a volatile key.
  explicit PrivateClassesRoot(DWORD options = REG_OPTION_NON_VOLATILE);
  PrivateClassesRoot(const PrivateClassesRoot&) = delete;
  PrivateClassesRoot& operator=(const PrivateClassesRoot&) = delete;
  ~PrivateClassesRoot();

 private:
  std::wstring path_;
};

// Puts these keys of the real HKEY_CLASSES_ROOT back to what they were when this was made.
class ClassesRootKeeper {
 public:
  explicit ClassesRootKeeper(std::vector<std::wstring> paths);
  ClassesRootKeeper(const ClassesRootKeeper&) = delete;
  ClassesRootKeeper& operator=(const ClassesRootKeeper&) = delete;
  ~ClassesRootKeeper();

 private:
  struct Kept {
    std::wstring path;
    bool existed;
    StoredKey tree;
  };
  std::vector<Kept> kept_;
};

}  // namespace brantel
