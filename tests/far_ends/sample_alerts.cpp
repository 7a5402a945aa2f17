#include "tests/far_ends/sample_alerts.h"

#include <array>
#include <string_view>
#include <utility>

#include "tests/module/instance_bytes.h"

namespace brantel {
namespace {

constexpr std::size_t kBytesPerSecond = 8000;

std::string Pages(std::string_view number, std::string_view protocol) {
  return TextField(number) + TextField("7") + TextField("03-1234-5678") + TextField("%n is down") +
         TextField(protocol) + LengthBytes(0);
}

// Repeated at most five times more; acknowledged by the key 1.
std::string Call() {
  return TextField("5550100") + TextField("repeat.wav") + LengthBytes(5) + LengthBytes(1) +
         TextField("down.wav") + TextField("up.wav") + TextField("down.wav") + TextField("up.wav");
}

const std::array kSampleAlerts = {
    SampleAlert{"LaunchProgram", kLaunchProgram,
                TextField("page.exe") + TextField("C:\\") + TextField("%n is down"),
                "page.exe %n is down"},
    SampleAlert{"Sound", kSound, TextField("C:\\bell.wav") + LengthBytes(0), "C:\\bell.wav"},
    SampleAlert{"WinPopup", kWinPopup, TextField("pc9") + TextField("%n is down"),
                "pc9: %n is down"},
    SampleAlert{"SMTPMail", kSMTPMail,
                TextField("127.26.1.1") + TextField("ann@b.example,bob@b.example") +
                    TextField("Watch <ops@b.example>") + TextField("%n") + TextField("%n is down"),
                "%n is down"},
    SampleAlert{"Beeper", kBeeper,
                TextField("5550100") + TextField("") + TextField("1") + TextField("2") +
                    TextField("3") + TextField("2%C") + LengthBytes(0),
                "2%C", true},
    SampleAlert{"Tap", kPager, Pages("5550200", "TAP"), "\"%n is down\"", true},
    SampleAlert{"SmsTap", kPager, Pages("5550200", "SMS-TAP"), "\"%n is down\"", true},
    SampleAlert{"Ucp", kPager, Pages("5550400", "UCP-SMS"), "\"%n is down\"", true},
    SampleAlert{"Ntt", kPager, Pages("5550528", "NTT"), "\"%n is down\"", true},
    // The message that is repeated is heard once and cut the second time.
    SampleAlert{"Voice", kVoice, Call(), "call to 5550100 heard 17 34 51"},
};

std::string Bytes16(unsigned number) {
  return {static_cast<char>(number & 0xFF), static_cast<char>(number >> 8)};
}

// Of so many milliseconds, all of whose samples are the byte.
std::string Wave(unsigned milliseconds, char byte) {
  const std::string samples(kBytesPerSecond * milliseconds / 1000, byte);
  const std::string format = Bytes16(1) + Bytes16(1) + LengthBytes(kBytesPerSecond) +
                             LengthBytes(kBytesPerSecond) + Bytes16(1) + Bytes16(8);
  const std::string chunks = "WAVEfmt " + LengthBytes(static_cast<std::uint32_t>(format.size())) +
                             format + "data" +
                             LengthBytes(static_cast<std::uint32_t>(samples.size())) + samples;
  return "RIFF" + LengthBytes(static_cast<std::uint32_t>(chunks.size())) + chunks;
}

}  // namespace

std::string SampleAlert::EventOf(const std::string& name_of_item) const {
  if (&notifier_class == &kVoice) return "device.wav";
  // A beeper keys in no more in the time that it has.
  constexpr std::size_t kDigits = 4;
  return name_of_item.substr(name_of_item.size() - kDigits);
}

std::string SampleAlert::DeliveryOf(const std::string& name_of_item) const {
  const std::array<std::pair<std::string_view, std::string>, 2> variables = {
      {{"%n", name_of_item}, {"%C", EventOf(name_of_item)}}};
  std::string text = delivery;
  for (const auto& [variable, value] : variables) {
    const std::size_t found = text.find(variable);
    if (found != std::string::npos) text.replace(found, variable.size(), value);
  }
  return text;
}

std::span<const SampleAlert> SampleAlerts() {
  return kSampleAlerts;
}

SampleInstances::SampleInstances() : before_(std::filesystem::current_path()) {
  for (const SampleAlert& alert : SampleAlerts()) {
    static_cast<void>(scratch_.Write(alert.name, MagicBytes(alert.notifier_class) + alert.fields));
  }
  constexpr unsigned kLongMilliseconds = 2000;
  constexpr unsigned kShortMilliseconds = 400;
  static_cast<void>(scratch_.Write("repeat.wav", Wave(kLongMilliseconds, 17)));
  static_cast<void>(scratch_.Write("device.wav", Wave(kShortMilliseconds, 34)));
  static_cast<void>(scratch_.Write("down.wav", Wave(kShortMilliseconds, 51)));
  static_cast<void>(scratch_.Write("up.wav", Wave(kShortMilliseconds, 68)));
  std::filesystem::current_path(scratch_.path());
}

SampleInstances::~SampleInstances() {
  std::filesystem::current_path(before_);
}

std::wstring SampleInstances::PathOf(const SampleAlert& alert) const {
  return (scratch_.path() / alert.name).wstring();
}

}  // namespace brantel
