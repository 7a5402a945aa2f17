#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "system/result.h"

namespace brantel {

// Registry scripts say which keys a class has under HKEY_CLASSES_ROOT:
//
//   script = { "HKCR" block }
//   block  = "{" { entry } "}"
//   entry  = "val" name "=" "s" text                           a named value of the key around it
//          | [ "NoRemove" | "ForceRemove" ] name [ "=" "s" text ] [ block ]    a key, its default
//          value
//   name   = a word without blanks, braces and equals signs, or a text
//   text   = "'" characters "'", in which '' stands for one quote
//
// Words are told apart by letter case. %MODULE% in a name or text stands for the module's full path
// and %% for a percent sign. Scripts are UTF-8.
//
//   ForceRemove  the key is removed with all below it before it is written, and when unregistering
//   NoRemove     the key itself is never removed
//   neither      unregistering removes the key once what the script put below it is gone, unless
//                somebody else's keys are still below it

enum class KeyRemoval { kNormal, kForceRemove, kNoRemove };

struct RegistryValue {
  std::string name;
  std::string text;
};

struct RegistryKey {
  std::string name;
  KeyRemoval removal = KeyRemoval::kNormal;
  std::optional<std::string> default_value;
  std::vector<RegistryValue> values;
  std::vector<RegistryKey> subkeys;
};

using RegistryScript = std::vector<RegistryKey>;

// Why a script was refused: the line, counted from 1, and a sentence that names what stands there.
struct ScriptError {
  int line = 0;
  std::string message;
};

// Either the script or the error.
struct ScriptParse {
  std::optional<RegistryScript> script;
  ScriptError error;
};

ScriptParse ParseRegistryScript(std::string_view text, std::string_view module_path);

// HKEY_CLASSES_ROOT, as far as scripts need it. Paths are key names joined by backslashes, in
// UTF-8.
class RegistryShell {
 public:
  virtual ~RegistryShell() = default;

  // Creates the key, with those above it, unless it is there.
  virtual Result CreateKey(const std::string& path) = 0;
  // Writes a text value into an existing key; the default value has an empty name.
  virtual Result SetText(const std::string& path, const std::string& name,
                         const std::string& text) = 0;
  // Deletes the key with all below it. A key that is not there is a success.
  virtual Result DeleteTree(const std::string& path) = 0;
  // Deletes the key unless it has subkeys. A key that is not there, or stays, is a success.
  virtual Result DeleteIfWithoutSubkeys(const std::string& path) = 0;
};

// Writes the keys of the script and stops at the first failure; what is written by then stays.
Result RegisterScript(const RegistryScript& script, RegistryShell& shell);

// Removes the keys of the script, as many as it can, and returns the first failure.
Result UnregisterScript(const RegistryScript& script, RegistryShell& shell);

}  // namespace brantel
