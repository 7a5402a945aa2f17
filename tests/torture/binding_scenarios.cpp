// Hosts that bind themselves to notifiers, and let them go.
#include <array>

#include "beeper/beeper.h"
#include "smtp_mail/smtp_mail.h"
#include "system/exception_guard.h"
#include "tests/torture/scenario.h"
#include "voice/voice.h"
#include "win_popup/win_popup.h"

namespace brantel {
namespace {

struct BoundClass {
  const char* name;
  std::unique_ptr<Notifier> (*make)(Machine& machine);
};

const std::array kBoundClasses = {
    BoundClass{"Beeper",
               [](Machine& machine) -> std::unique_ptr<Notifier> {
                 return std::make_unique<Beeper>(machine.files, machine.settings, machine.ports,
                                                 machine.clock);
               }},
    BoundClass{"SMTPMail",
               [](Machine& machine) -> std::unique_ptr<Notifier> {
                 return std::make_unique<SmtpMail>(machine.files, machine.settings, machine.sockets,
                                                   machine.smtp_system);
               }},
    BoundClass{"WinPopup",
               [](Machine& machine) -> std::unique_ptr<Notifier> {
                 return std::make_unique<WinPopup>(machine.files, machine.sockets,
                                                   machine.network_system, machine.popup_system);
               }},
    BoundClass{"Voice",
               [](Machine& machine) -> std::unique_ptr<Notifier> {
                 return std::make_unique<Voice>(machine.files, machine.voice_system,
                                                machine.voice_state);
               }},
};

class Binding final : public Scenario {
 public:
  explicit Binding(const BoundClass& bound_class)
      : Scenario("bind_" + std::string(bound_class.name)), class_(bound_class) {}

  void SetUp(Machine& machine) const override { machine.notifier = class_.make(machine); }

  void Begin(Machine& machine) const override {
    machine.BeginAlert();
    machine.voice_state.probe_done = false;
    machine.users_while_bound = 0;
  }

  Result Run(Machine& machine) const override {
    return GuardExceptions([&]() -> Result {
      auto bound = machine.notifier->Initialize([&]() -> std::shared_ptr<NotifierHost> {
        if (machine.faults.Strike()) return nullptr;
        return std::make_shared<StrainedHost>(machine.host_object);
      });
      if (!bound) return kFail;
      machine.users_while_bound = machine.sockets.users;
      bound.reset();
      machine.notifier->Shutdown();
      return kOk;
    });
  }

  [[nodiscard]] std::string Judge(const Machine& machine, Result result,
                                  const Machine& whole) const override {
    return Failed(result) || machine.users_while_bound == whole.users_while_bound
               ? ""
               : "bound without what the class needs";
  }

 private:
  const BoundClass& class_;
};

}  // namespace

void AddBindings(std::vector<std::unique_ptr<Scenario>>& scenarios) {
  for (const BoundClass& bound_class : kBoundClasses) {
    scenarios.push_back(std::make_unique<Binding>(bound_class));
  }
}

}  // namespace brantel
