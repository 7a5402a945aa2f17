#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>

#include "system/outcome.h"

namespace brantel {

enum class Parity { kNone, kEven };

// The bits of a byte on the line. One stop bit always follows them.
struct Framing {
  std::uint8_t data_bits = 8;
  Parity parity = Parity::kNone;
  // Whether the port checks parity, in binary mode; nothing leaves both as the driver has them.
  std::optional<bool> parity_check;
};

// When reads and writes end before they are complete, in milliseconds; multipliers count for each
// byte asked for. A read interval of 0 is none. Both numbers of a total 0: no limit.
struct SerialTimeouts {
  std::uint32_t read_interval = 0;
  std::uint32_t read_total_multiplier = 0;
  std::uint32_t read_total_constant = 0;
  std::uint32_t write_total_multiplier = 0;
  std::uint32_t write_total_constant = 0;

  friend bool operator==(const SerialTimeouts&, const SerialTimeouts&) = default;
};

// An open serial port; destroying it closes the port. All calls block. They fail for the system's
// reasons.
class SerialDevice {
 public:
  virtual ~SerialDevice() = default;

  // Reads the port's control settings, which SetControl then changes.
  virtual Outcome<> GetControl() = 0;

  // Sets rate and framing. All other control settings stay as GetControl has read them.
  virtual Outcome<> SetControl(std::uint32_t bits_per_second, const Framing& framing) = 0;

  virtual Outcome<SerialTimeouts> GetTimeouts() = 0;
  virtual Outcome<> SetTimeouts(const SerialTimeouts& timeouts) = 0;

  // Writes all of the bytes; a write that ends early has failed.
  virtual Outcome<> Write(std::string_view bytes) = 0;

  // Stores what arrives before the buffer is full or the time-outs end the read. How much that is:
  // nothing at all is a success too.
  virtual Outcome<std::size_t> Read(std::span<char> buffer) = 0;

  // Waits until everything written has gone out. What has come in stays.
  virtual void Flush() = 0;
};

// The machine's serial ports.
class SerialPorts {
 public:
  virtual ~SerialPorts() = default;

  // Opens an existing port for this caller alone.
  virtual Outcome<std::unique_ptr<SerialDevice>> Open(std::uint32_t port_number) = 0;
};

}  // namespace brantel
