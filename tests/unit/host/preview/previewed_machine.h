#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "host/preview/preview.h"
#include "instance/instance_codec.h"
#include "tests/unit/instance/fake_instance_files.h"
#include "tests/unit/smtp_mail/message/fake_mail_environment.h"
#include "tests/unit/system/fake_machine_name.h"
#include "tests/unit/system/fake_settings_store.h"
#include "tests/unit/telephone/fake_voice_system.h"
#include "tests/unit/text/few_code_pages.h"

namespace brantel::host {

inline std::string SameText(std::string_view text) {
  return std::string(text);
}

inline std::string NarrowText(std::u16string_view text) {
  return {text.begin(), text.end()};  // tests have ASCII this way
}

// Sockets that are always there.
class StartedSockets final : public SocketsLibrary {
 public:
  bool Start() override { return true; }
  void Stop() noexcept override {}
};

// A network that knows the form of a single address, 192.0.2.25, and makes no sockets.
class KnownAddress final : public MailNetwork {
 public:
  [[nodiscard]] std::optional<Ipv4Address> ParseAddress(const std::string& text) const override {
    if (text != "192.0.2.25") return std::nullopt;
    return Ipv4Address{0x190200C0};
  }
  std::unique_ptr<MailSocket> CreateSocket() override { return nullptr; }
};

// A computer on which alerts are looked at: all of it in memory, and told of what is done to it.
struct PreviewedMachine {
  // Stores an instance with these texts and numbers, each by its field.
  void Store(const ClassDescription& of_class,
             std::initializer_list<std::pair<std::size_t, std::string>> text_fields,
             std::initializer_list<std::pair<std::size_t, std::int32_t>> number_fields = {}) {
    notifier_class = &of_class;
    Instance instance(of_class.instances.fields.size());
    for (const auto& [field, text] : text_fields)
      instance.set_text(field, text);
    for (const auto& [field, number] : number_fields)
      instance.set_integer(field, number);
    files.files["alert"] = EncodeInstance(of_class.instances, instance);
  }

  Preview Look() {
    return PreviewAlert({.files = files,
                         .settings = settings,
                         .sockets = sockets,
                         .machine_name = machine_name,
                         .mail_environment = mail_environment,
                         .mail_network = addresses,
                         .waves = waves,
                         .code_page = kCodePage1252,
                         .texts = texts},
                        {.notifier_class = *notifier_class,
                         .instance = {u"alert", "alert"},
                         .event = event,
                         .expand = PlainExpander(variables)});
  }

  TextConversions texts{SameText, SameText, NarrowText};
  const ClassDescription* notifier_class = nullptr;
  AlertEvent event = kItemDown;
  MessageVariables variables;
  FakeInstanceFiles files;
  FakeSettingsStore settings;
  StartedSockets sockets;
  FakeMachineName machine_name;
  FakeMailEnvironment mail_environment;
  KnownAddress addresses;
  FakeRiffFiles waves;
};

}  // namespace brantel::host
