#pragma once

#include <algorithm>
#include <array>
#include <cstring>
#include <deque>
#include <memory>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "telephone/line_constants.h"
#include "tests/torture/faults.h"
#include "tests/torture/strained_clock.h"
#include "tests/unit/allocation_counter.h"
#include "tests/unit/telephone/fake_voice_system.h"

namespace brantel {

// What happens on a telephone line while somebody waits.
struct LineEvent {
  enum class Kind { kTold, kSoundEnds } kind = Kind::kTold;
  std::uint32_t message = 0;
  std::uint32_t first = 0;
};

inline constexpr LineEvent kAnswered = {LineEvent::Kind::kTold, line_message::kCallState,
                                        call_state::kConnected};
inline constexpr LineEvent kKeyPressed = {LineEvent::Kind::kTold, line_message::kMonitorDigits,
                                          '1'};
inline constexpr LineEvent kSoundEnds = {LineEvent::Kind::kSoundEnds};

// Memory of the system's, of which there may be none.
class StrainedMemory final : public MemoryBlocks {
 public:
  int blocks = 0;

  std::byte* Allocate(std::size_t size) noexcept override {
    auto* const memory = static_cast<std::byte*>(::operator new(size + 1, std::nothrow));
    if (memory == nullptr) return nullptr;
    ++blocks;
    std::memset(memory, 0, size + 1);
    return memory;
  }

  void Free(std::byte* memory) noexcept override {
    --blocks;
    ::operator delete(memory);
  }
};

// A telephony whose functions may fail.
class StrainedTelephony final : public Telephony {
 public:
  explicit StrainedTelephony(Faults& faults) : faults_(faults) {}

  FakeTelephony line;
  bool is_initialised = false;
  bool is_open = false;
  bool is_called = false;

  LineCode Initialize(LineMessageReceiver& told, std::uint32_t& application,
                      std::uint32_t& device_count) override {
    return Call([&] { return line.Initialize(told, application, device_count); }, is_initialised);
  }
  LineCode NegotiateVersion(std::uint32_t application, std::uint32_t device,
                            const VersionRange& range, std::uint32_t& version) override {
    return Call([&] { return line.NegotiateVersion(application, device, range, version); });
  }
  LineCode GetCapabilities(std::uint32_t application, std::uint32_t device, std::uint32_t version,
                           std::span<std::byte> block) override {
    return Call([&] { return line.GetCapabilities(application, device, version, block); });
  }
  LineCode Open(std::uint32_t application, std::uint32_t device, std::uint32_t version,
                std::uint32_t media_mode, std::span<const std::byte> parameters,
                std::uint32_t& opened) override {
    return Call(
        [&] { return line.Open(application, device, version, media_mode, parameters, opened); },
        is_open);
  }
  LineCode MakeCall(std::uint32_t opened, const std::string& number,
                    std::span<const std::byte> parameters, std::uint32_t& call) override {
    return Call([&] { return line.MakeCall(opened, number, parameters, call); }, is_called,
                "make call");
  }
  LineCode GetId(std::uint32_t opened, std::uint32_t call, CallSelect select,
                 const char* device_class, std::span<std::byte> id) override {
    return Call([&] { return line.GetId(opened, call, select, device_class, id); });
  }
  LineCode MonitorDigits(std::uint32_t call, std::uint32_t digit_mode) override {
    return Call([&] { return line.MonitorDigits(call, digit_mode); });
  }
  LineCode Close(std::uint32_t opened) override {
    const LineCode code = Call([&] { return line.Close(opened); });
    if (code == 0) is_open = is_called = false;
    return code;
  }
  LineCode Shutdown(std::uint32_t application) override {
    const LineCode code = Call([&] { return line.Shutdown(application); });
    if (code == 0) is_initialised = is_open = is_called = false;
    return code;
  }

 private:
  template <typename Function>
  LineCode Call(Function function, std::string_view name = {}) {
    constexpr std::array<LineCode, 4> kErrors = {
        line_error::kOperationFailed, line_error::kNoMemory, line_error::kResourceUnavailable,
        line_error::kStructureTooSmall};
    const MemoryOfOthers others;
    return faults_.Strike(name) ? faults_.Choose(kErrors) : function();
  }

  template <typename Function>
  LineCode Call(Function function, bool& succeeded, std::string_view name = {}) {
    const LineCode code = Call(function, name);
    succeeded = code == 0;
    return code;
  }

  Faults& faults_;
};

// Wave files that may not be read whole.
class StrainedRiffFiles final : public RiffFiles {
 public:
  explicit StrainedRiffFiles(Faults& faults) : faults_(faults) {}

  FakeRiffFiles disk;
  int open_files = 0;

  std::unique_ptr<RiffFile> Open(const std::string& path) override {
    const std::u16string converted(path.begin(), path.end());
    if (faults_.Strike()) return nullptr;
    auto file = std::make_unique<File>(*this);
    if (!file->Open(path)) return nullptr;
    return file;
  }

 private:
  class File final : public RiffFile {
   public:
    explicit File(StrainedRiffFiles& files) : files_(files) { ++files_.open_files; }
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    ~File() override {
      const MemoryOfOthers others;
      --files_.open_files;
      file_.reset();
    }

    bool Open(const std::string& path) {
      const MemoryOfOthers others;
      file_ = files_.disk.Open(path);
      return file_ != nullptr;
    }

    bool DescendIntoForm(const char (&type)[5]) override {
      return !Fails() && file_->DescendIntoForm(type);
    }
    std::optional<std::uint32_t> DescendIntoChunk(const char (&name)[5]) override {
      if (Fails()) return std::nullopt;
      return file_->DescendIntoChunk(name);
    }
    std::size_t Read(std::span<std::byte> bytes) override {
      return file_->Read(Fails() ? bytes.first(bytes.size() / 2) : bytes);
    }
    void Ascend() override { file_->Ascend(); }

   private:
    bool Fails() { return files_.faults_.Strike(); }

    StrainedRiffFiles& files_;
    std::unique_ptr<RiffFile> file_;
  };

  Faults& faults_;
};

// A wave device that may be refused, or refuse.
class StrainedWaveOutput final : public WaveOutput {
 public:
  explicit StrainedWaveOutput(Faults& faults) : faults_(faults) {}

  FakeWaveOutput sound_card;
  int open_devices = 0;
  // Sounds that the device has taken.
  int sounds = 0;

  WaveCode Query(std::uint16_t device_id, std::span<const std::byte> format) override {
    return Call([&] { return sound_card.Query(device_id, format); });
  }
  std::string ErrorText(WaveCode error) override {
    std::string text;
    {
      const MemoryOfOthers others;
      text = sound_card.ErrorText(error);
    }
    return {text};  // in memory of the caller's
  }
  WaveCode Open(std::uint16_t device_id, std::span<const std::byte> format,
                std::unique_ptr<WaveDevice>& device) override {
    auto opened = std::make_unique<Device>(*this);
    const WaveCode code = opened->Open(device_id, format);
    if (code == 0) device = std::move(opened);
    return code;
  }

 private:
  class Device final : public WaveDevice {
   public:
    explicit Device(StrainedWaveOutput& output) : output_(output) { ++output_.open_devices; }
    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;
    ~Device() override {
      const MemoryOfOthers others;
      --output_.open_devices;
      device_.reset();
    }

    WaveCode Open(std::uint16_t device_id, std::span<const std::byte> format) {
      return output_.Call([&] { return output_.sound_card.Open(device_id, format, device_); });
    }

    WaveCode Prepare(WaveHeader& header) override {
      return output_.Call([&] { return device_->Prepare(header); });
    }
    WaveCode Write(WaveHeader& header) override {
      const WaveCode code = output_.Call([&] { return device_->Write(header); });
      if (code == 0) ++output_.sounds;
      return code;
    }
    [[nodiscard]] bool IsDone() const override { return device_->IsDone(); }
    [[nodiscard]] EventHandle DoneEvent() const override { return device_->DoneEvent(); }
    void Unprepare(WaveHeader& header) override {
      const MemoryOfOthers others;
      device_->Unprepare(header);
    }
    void Reset() override {
      const MemoryOfOthers others;
      device_->Reset();
    }
    void Send(std::uint32_t message, const WaveHeader& header) override {
      const MemoryOfOthers others;
      device_->Send(message, header);
    }

   private:
    StrainedWaveOutput& output_;
    std::unique_ptr<WaveDevice> device_;
  };

  template <typename Function>
  WaveCode Call(Function function) {
    // Bad device, in use, no driver, no memory, bad format.
    constexpr std::array<WaveCode, 5> kErrors = {2, 4, 6, 7, 32};
    const MemoryOfOthers others;
    return faults_.Strike() ? faults_.Choose(kErrors) : function();
  }

  Faults& faults_;
};

// The thread's messages: what happens on the line, one event after the other, as long as there is a
// call. Nothing else would ever end a wait.
class StrainedPump final : public MessagePump {
 public:
  StrainedPump(StrainedClock& clock, StrainedTelephony& telephony, StrainedWaveOutput& output)
      : clock_(clock), telephony_(telephony), output_(output) {}

  std::span<const LineEvent> events;

  void PumpUntil(const std::function<bool()>& is_over, EventHandle) override {
    while (!is_over()) {
      if (events.empty() || !telephony_.is_called) clock_.WaitForEver();
      const LineEvent event = events.front();
      events = events.subspan(1);
      Happen(event);
    }
  }

 private:
  void Happen(const LineEvent& event) {
    if (event.kind == LineEvent::Kind::kTold) {
      telephony_.line.Tell(event.message, event.first);
    } else if (output_.open_devices != 0) {
      output_.sound_card.ReportDone();
    }
  }

  StrainedClock& clock_;
  StrainedTelephony& telephony_;
  StrainedWaveOutput& output_;
};

}  // namespace brantel
