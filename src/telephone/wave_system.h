#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>

#include "telephone/event_handle.h"

namespace brantel {

// A RIFF file that is open for reading; destroying it closes the file. There is always a place in
// it from which chunks are looked for.
class RiffFile {
 public:
  virtual ~RiffFile() = default;

  // Goes into the file's form of this type, such as "WAVE". False when it has none.
  virtual bool DescendIntoForm(const char (&type)[5]) = 0;

  // Goes into the form's next chunk with this name and tells its size, as the file has it. Nothing
  // when there is none.
  virtual std::optional<std::uint32_t> DescendIntoChunk(const char (&name)[5]) = 0;

  // Reads on in the chunk. How many bytes that gave; fewer than asked for where the file ends.
  virtual std::size_t Read(std::span<std::byte> bytes) = 0;

  // Goes to the end of the chunk.
  virtual void Ascend() = 0;
};

class RiffFiles {
 public:
  virtual ~RiffFiles() = default;

  // Null when the file cannot be opened.
  virtual std::unique_ptr<RiffFile> Open(const std::string& path) = 0;
};

// What a function of wave output answers: 0 when it succeeded, else an error of the system's.
using WaveCode = std::uint32_t;

// A buffer of samples on its way to a device, laid out as wave drivers have it.
struct WaveHeader {
  std::byte* data = nullptr;
  std::uint32_t length = 0;
  std::uint32_t recorded = 0;
  std::uintptr_t user = 0;  // the device's own
  std::uint32_t flags = 0;
  std::uint32_t loops = 0;
  WaveHeader* next = nullptr;
  std::uintptr_t reserved = 0;
};

// The driver's message that a buffer has been played.
inline constexpr std::uint32_t kWaveDoneMessage = 0x3BD;

// An open wave-out device; destroying it closes the device, which has to have no buffer then.
class WaveDevice {
 public:
  virtual ~WaveDevice() = default;

  virtual WaveCode Prepare(WaveHeader& header) = 0;

  // Queues the buffer and returns at once. Header and samples belong to the driver until it is
  // done.
  virtual WaveCode Write(WaveHeader& header) = 0;

  // Whether the driver has told, on a thread of its own, that it is done with the buffer. Stays so.
  [[nodiscard]] virtual bool IsDone() const = 0;

  // What is set from then on, as long as the device is open.
  [[nodiscard]] virtual EventHandle DoneEvent() const = 0;

  virtual void Unprepare(WaveHeader& header) = 0;

  // Ends what is playing. The driver is done with the buffer then.
  virtual void Reset() = 0;

  // Sends a message to the driver.
  virtual void Send(std::uint32_t message, const WaveHeader& header) = 0;
};

class WaveOutput {
 public:
  virtual ~WaveOutput() = default;

  // Whether a device could be opened for samples of a format, a wave file's "fmt " chunk.
  virtual WaveCode Query(std::uint16_t device_id, std::span<const std::byte> format) = 0;

  // The system's text for an error.
  virtual std::string ErrorText(WaveCode error) = 0;

  virtual WaveCode Open(std::uint16_t device_id, std::span<const std::byte> format,
                        std::unique_ptr<WaveDevice>& device) = 0;
};

}  // namespace brantel
