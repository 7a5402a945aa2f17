#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>
#include <string>

#include "port/serial_device.h"

namespace brantel {

// The machine's serial ports, by their names "COM1" and so on. From "COM10" on a name needs the
// prefix of the device namespace, or the system would look for a file.
class SystemSerialPorts final : public SerialPorts {
 public:
  Outcome<std::unique_ptr<SerialDevice>> Open(std::uint32_t port_number) override;
};

// The name of a port for CreateFile.
std::string SerialPortPath(std::uint32_t port_number);

// Changes rate and framing in a control block, and nothing else.
void SetControlBlock(DCB& control_block, std::uint32_t bits_per_second, const Framing& framing);

COMMTIMEOUTS ToCommTimeouts(const SerialTimeouts& timeouts);
SerialTimeouts FromCommTimeouts(const COMMTIMEOUTS& timeouts);

// Stateless, so that all use this one.
inline constinit SystemSerialPorts system_serial_ports;

}  // namespace brantel
