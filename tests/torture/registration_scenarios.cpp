// A class that is registered, and unregistered.
#include <array>
#include <fstream>
#include <iterator>

#include "module/registry_script.h"
#include "system/exception_guard.h"
#include "tests/torture/scenario.h"

namespace brantel {
namespace {

// HKEY_CLASSES_ROOT, as values by their keys.
class StrainedShell final : public RegistryShell {
 public:
  explicit StrainedShell(Machine& machine) : machine_(machine) {}

  Result CreateKey(const std::string& path) override {
    return Change(path, [&] { machine_.registered.try_emplace(path); });
  }
  Result SetText(const std::string& path, const std::string& name,
                 const std::string& text) override {
    return Change(path, [&] { machine_.registered[path] += "[" + name + "=" + text + "]"; });
  }
  Result DeleteTree(const std::string& path) override {
    return Change(path, [&] {
      std::erase_if(machine_.registered, [&](const auto& key) { return IsIn(key.first, path); });
    });
  }
  Result DeleteIfWithoutSubkeys(const std::string& path) override {
    return Change(path, [&] {
      const auto count = std::ranges::count_if(
          machine_.registered, [&](const auto& key) { return IsIn(key.first, path); });
      if (count == 1) machine_.registered.erase(path);
    });
  }

 private:
  static bool IsIn(const std::string& key, const std::string& path) {
    return key == path || key.starts_with(path + "\\");
  }

  template <typename Changing>
  Result Change(const std::string& path, Changing change) {
    // Access denied, key deleted, no resources.
    constexpr std::array<Result, 3> kErrors = {static_cast<Result>(0x80070005),
                                               static_cast<Result>(0x800703FA),
                                               static_cast<Result>(0x800705AA)};
    const std::u16string converted(path.begin(), path.end());
    if (machine_.faults.Strike()) return machine_.faults.Choose(kErrors);
    const MemoryOfOthers others;
    change();
    return kOk;
  }

  Machine& machine_;
};

class Registration : public Scenario {
 public:
  Registration(const char* name, Result (*run)(const RegistryScript&, RegistryShell&))
      : Scenario(name), run_(run) {}

  Result Run(Machine& machine) const override {
    return GuardExceptions([&]() -> Result {
      const ScriptParse parse = ParseRegistryScript(Script(), "C:\\a module of ours.dll");
      if (!parse.script) return kFail;
      StrainedShell shell(machine);
      return run_(*parse.script, shell);
    });
  }

 private:
  static const std::string& Script() {
    static const std::string script = [] {
      std::ifstream file(REGISTRY_SCRIPT_DIR "/smtp_mail.rgs", std::ios::binary);
      return std::string(std::istreambuf_iterator<char>(file), {});
    }();
    return script;
  }

  Result (*run_)(const RegistryScript&, RegistryShell&);
};

class Registering final : public Registration {
 public:
  Registering() : Registration("register", RegisterScript) {}

  void Begin(Machine& machine) const override {
    machine.BeginAlert();
    machine.registered.clear();
  }

  [[nodiscard]] std::string Judge(const Machine& machine, Result result,
                                  const Machine& whole) const override {
    return Failed(result) || machine.registered == whole.registered
               ? ""
               : "success, though not all is registered";
  }
};

class Unregistering final : public Registration {
 public:
  Unregistering() : Registration("unregister", UnregisterScript) {}

  void Begin(Machine& machine) const override {
    machine.BeginAlert();
    machine.registered = RunWhole(Registering())->registered;
  }

  [[nodiscard]] std::string Judge(const Machine& machine, Result result,
                                  const Machine& whole) const override {
    return Failed(result) || machine.registered == whole.registered
               ? ""
               : "success, though something is still registered";
  }
};

}  // namespace

void AddRegistrations(std::vector<std::unique_ptr<Scenario>>& scenarios) {
  scenarios.push_back(std::make_unique<Registering>());
  scenarios.push_back(std::make_unique<Unregistering>());
}

}  // namespace brantel
