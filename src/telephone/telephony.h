#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "telephone/line_constants.h"

namespace brantel {

// What telephony tells of a line and its call: one of line_message's numbers and what belongs to
// it.
struct LineMessage {
  std::uint32_t kind = 0;
  std::uint32_t first = 0;
  std::uint32_t second = 0;
};

class LineMessageReceiver {
 public:
  virtual ~LineMessageReceiver() = default;

  virtual void Receive(const LineMessage& message) = 0;
};

struct VersionRange {
  std::uint32_t lowest = 0;
  std::uint32_t highest = 0;
};

// The functions of the Windows Telephony API that a call takes, one for one. Handles are numbers;
// blocks are structures of that API, which begin with their size. Where the machine has no
// telephony, everything answers line_error::kOperationUnavailable.
class Telephony {
 public:
  virtual ~Telephony() = default;

  // `receiver` is told what happens until Shutdown is called, on the calling thread, while that
  // handles its messages.
  virtual LineCode Initialize(LineMessageReceiver& receiver, std::uint32_t& application,
                              std::uint32_t& device_count) = 0;

  virtual LineCode NegotiateVersion(std::uint32_t application, std::uint32_t device,
                                    const VersionRange& range, std::uint32_t& version) = 0;

  virtual LineCode GetCapabilities(std::uint32_t application, std::uint32_t device,
                                   std::uint32_t version, std::span<std::byte> capabilities) = 0;

  // Opens the line for calls of this media mode, which the caller owns.
  virtual LineCode Open(std::uint32_t application, std::uint32_t device, std::uint32_t version,
                        std::uint32_t media_mode, std::span<const std::byte> call_parameters,
                        std::uint32_t& line) = 0;

  // `call` is written when the call has been placed, which may be long after the function has
  // returned: it must stay where it is until the line is closed.
  virtual LineCode MakeCall(std::uint32_t line, const std::string& number,
                            std::span<const std::byte> call_parameters, std::uint32_t& call) = 0;

  // Asks which device of a class, such as "wave/out", belongs to the line or its call.
  virtual LineCode GetId(std::uint32_t line, std::uint32_t call, CallSelect select,
                         const char* device_class, std::span<std::byte> id) = 0;

  virtual LineCode MonitorDigits(std::uint32_t call, std::uint32_t digit_mode) = 0;

  virtual LineCode Close(std::uint32_t line) = 0;
  virtual LineCode Shutdown(std::uint32_t application) = 0;
};

}  // namespace brantel
