#include "tests/torture/machine.h"

#include <array>

#include "notifier/alert_guard.h"

namespace brantel {

std::string InstancePath() {
  return std::string(kDirectory).append("\\").append(kInstanceName);
}

void Machine::BeginAlert() {
  faults.Plan(0, Lasting::kOnce, 0);
  far_end.Recover();
  clock.Restart();
  host_object.log.clear();
  player.sounds = 0;
  starter.programs = 0;
  network_system.messages = 0;
  wave_output.sounds = 0;
  pump.events = line_events;
}

Result Machine::Send() {
  return GuardAlert(host.get(), [this] {
    const std::string path = InstancePath();
    return notifier->Send({std::u16string(path.begin(), path.end()), path}, host.get());
  });
}

bool Machine::HasTaken() const {
  // The sound that is repeated, and both messages behind it.
  constexpr int kSoundsOfCall = 3;
  return far_end.has_taken || player.sounds != 0 || starter.programs != 0 ||
         network_system.messages != 0 || wave_output.sounds >= kSoundsOfCall;
}

bool Machine::HasToldSo() const {
  return far_end.has_taken ? far_end.has_told_so : HasTaken();
}

std::string Machine::Leftovers() const {
  struct Count {
    const char* name;
    std::size_t left;
  };
  const std::array counts = {
      Count{"ports", ports.open.size()},
      Count{"files", static_cast<std::size_t>(files.open_files)},
      Count{"settings", static_cast<std::size_t>(settings.open_keys)},
      Count{"users of the sockets library", static_cast<std::size_t>(sockets.users)},
      Count{"references to the host", static_cast<std::size_t>(host_object.references - 1)},
      Count{"sockets", static_cast<std::size_t>(mail_network.open_sockets)},
      Count{"network levels", static_cast<std::size_t>(neighbourhood.open_levels)},
      Count{"wave files", static_cast<std::size_t>(riff_files.open_files)},
      Count{"wave devices", static_cast<std::size_t>(wave_output.open_devices)},
      Count{"blocks", static_cast<std::size_t>(memory.blocks)},
      Count{"telephony", telephony.is_initialised ? 1U : 0U},
  };
  std::string left;
  for (const Count& count : counts) {
    if (count.left != 0) left += std::string(count.name) + " ";
  }
  return left;
}

}  // namespace brantel
