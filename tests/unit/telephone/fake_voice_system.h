#pragma once

#include <algorithm>
#include <cstring>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <set>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "telephone/memory_blocks.h"
#include "telephone/message_pump.h"
#include "telephone/telephony.h"
#include "telephone/voice_system.h"
#include "telephone/wave_system.h"
#include "tests/unit/system/virtual_clock.h"
#include "tests/unit/telephone/wave_bytes.h"
#include "tests/unit/text/few_code_pages.h"
#include "text/format_text.h"

namespace brantel {

// Memory that keeps an account, and runs out when the test says.
class CountingMemory final : public MemoryBlocks {
 public:
  // Which of the requests, counted from 1, are refused.
  std::set<int> refused;
  std::vector<std::size_t> requested;
  // Requests above this are refused too.
  std::size_t most = 1 << 20;

  [[nodiscard]] std::size_t in_use() const { return taken_.size(); }

  std::byte* Allocate(std::size_t size) noexcept override {
    requested.push_back(size);
    if (size > most || refused.contains(static_cast<int>(requested.size()))) return nullptr;
    auto memory = std::make_unique<std::byte[]>(size + 1);
    std::byte* const given = memory.get();
    taken_[given] = std::move(memory);
    return given;
  }

  void Free(std::byte* memory) noexcept override { taken_.erase(memory); }

 private:
  std::map<std::byte*, std::unique_ptr<std::byte[]>> taken_;
};

// A telephony that answers as the test says and keeps what it was asked, in order.
class FakeTelephony final : public Telephony {
 public:
  struct Device {
    LineCode negotiation = 0;
    std::uint32_t version = 0x00010004;
    LineCode capabilities = 0;
    std::uint32_t needed_size = 0;
    std::uint32_t media_modes = 8;
    // Needs this much more room than it is given, always.
    std::uint32_t never_enough_by = 0;
  };

  LineCode initialize = 0;
  std::vector<Device> devices = {{}};
  LineCode open = 0;
  LineCode make_call = 0;
  LineCode get_id = 0;
  std::uint32_t id_needed_size = 28;
  std::uint32_t id_never_enough_by = 0;
  std::uint32_t id_offset = 24;
  std::uint32_t wave_device = 3;
  LineCode monitor_digits = 0;
  // How often each fails before it succeeds.
  int failing_closes = 0;
  int failing_shutdowns = 0;

  std::vector<std::string> calls;
  std::vector<std::byte> call_parameters;
  LineMessageReceiver* receiver = nullptr;

  void Tell(std::uint32_t kind, std::uint32_t first = 0, std::uint32_t second = 0) const {
    if (receiver == nullptr) throw std::runtime_error("nobody listens");
    receiver->Receive({kind, first, second});
  }

  LineCode Initialize(LineMessageReceiver& told, std::uint32_t& application,
                      std::uint32_t& device_count) override {
    calls.emplace_back("initialize");
    if (initialize != 0) return initialize;
    receiver = &told;
    application = 11;
    device_count = static_cast<std::uint32_t>(devices.size());
    return 0;
  }

  LineCode NegotiateVersion(std::uint32_t application, std::uint32_t device,
                            const VersionRange& range, std::uint32_t& version) override {
    Record("negotiate", {application, device, range.lowest, range.highest});
    const Device& asked = devices.at(device);
    version = asked.version;
    return asked.negotiation;
  }

  LineCode GetCapabilities(std::uint32_t application, std::uint32_t device, std::uint32_t version,
                           std::span<std::byte> capabilities) override {
    Record("capabilities", {application, device, version, LoadWord(capabilities, 0)});
    const Device& asked = devices.at(device);
    StoreWord(capabilities, 4,
              asked.never_enough_by == 0 ? asked.needed_size
                                         : LoadWord(capabilities, 0) + asked.never_enough_by);
    StoreWord(capabilities, 60, asked.media_modes);
    return asked.capabilities;
  }

  LineCode Open(std::uint32_t application, std::uint32_t device, std::uint32_t version,
                std::uint32_t media_mode, std::span<const std::byte> parameters,
                std::uint32_t& line) override {
    Record("open", {application, device, version, media_mode});
    call_parameters.assign(parameters.begin(), parameters.end());
    if (open == 0) line = 22;
    return open;
  }

  LineCode MakeCall(std::uint32_t line, const std::string& number,
                    std::span<const std::byte> parameters, std::uint32_t& call) override {
    calls.push_back("make-call " + std::to_string(line) + " " + number);
    call_parameters.assign(parameters.begin(), parameters.end());
    call = 33;
    return make_call;
  }

  LineCode GetId(std::uint32_t line, std::uint32_t call, CallSelect select,
                 const char* device_class, std::span<std::byte> id) override {
    Record("get-id", {line, call, static_cast<std::uint32_t>(select), LoadWord(id, 0)});
    calls.back() += std::string(" ") + device_class;
    if (get_id != 0) return get_id;
    StoreWord(id, 4,
              id_never_enough_by == 0 ? id_needed_size : LoadWord(id, 0) + id_never_enough_by);
    StoreWord(id, 20, id_offset);
    if (id.size() >= std::uint64_t{id_offset} + 4) StoreWord(id, id_offset, wave_device);
    return 0;
  }

  LineCode MonitorDigits(std::uint32_t call, std::uint32_t digit_mode) override {
    Record("monitor-digits", {call, digit_mode});
    return monitor_digits;
  }

  LineCode Close(std::uint32_t line) override {
    Record("close", {line});
    return failing_closes-- > 0 ? line_error::kOperationFailed : 0;
  }

  LineCode Shutdown(std::uint32_t application) override {
    Record("shutdown", {application});
    return failing_shutdowns-- > 0 ? line_error::kOperationFailed : 0;
  }

 private:
  void Record(const std::string& what, const std::vector<std::uint32_t>& numbers) {
    calls.push_back(what);
    for (const std::uint32_t number : numbers) {
      calls.back() += FormatText(number > 0xFFFF ? " %#x" : " %u", {number});
    }
  }
};

// Files in memory that are read as RIFF files, in the manner of the system's multimedia functions.
class FakeRiffFiles final : public RiffFiles {
 public:
  std::map<std::string, std::string> files;
  // "open PATH" and "close PATH".
  std::vector<std::string> calls;

  std::unique_ptr<RiffFile> Open(const std::string& path) override {
    calls.push_back("open " + path);
    const auto file = files.find(path);
    if (file == files.end()) return nullptr;
    return std::make_unique<File>(file->second, calls, "close " + path);
  }

 private:
  class File final : public RiffFile {
   public:
    File(std::string bytes, std::vector<std::string>& calls, std::string closing)
        : bytes_(std::move(bytes)), calls_(calls), closing_(std::move(closing)) {}
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    ~File() override { calls_.push_back(closing_); }

    bool DescendIntoForm(const char (&type)[5]) override {
      end_of_form_ = bytes_.size();
      while (Find("RIFF")) {
        const std::string_view content = Rest();
        if (content.starts_with(type)) {
          end_of_form_ = end_;
          place_ += 4;
          return true;
        }
        place_ = end_;
      }
      return false;
    }

    std::optional<std::uint32_t> DescendIntoChunk(const char (&name)[5]) override {
      if (!Find(name)) return std::nullopt;
      return size_;
    }

    std::size_t Read(std::span<std::byte> bytes) override {
      const std::string_view read = Rest().substr(0, bytes.size());
      std::ranges::copy(std::as_bytes(std::span(read)), bytes.begin());
      place_ += read.size();
      return read.size();
    }

    void Ascend() override { place_ = end_; }

   private:
    // Goes behind the header of the next chunk with this name that begins inside the form.
    bool Find(std::string_view name) {
      while (place_ < end_of_form_ && Rest().size() >= 8) {
        const std::string_view found = Rest();
        size_ = LoadWord(std::as_bytes(std::span(found)), 4);
        place_ += 8;
        end_ = place_ + size_ + size_ % 2;
        if (found.starts_with(name)) return true;
        place_ = end_;
      }
      return false;
    }

    // What the file holds from the place on.
    [[nodiscard]] std::string_view Rest() const {
      return std::string_view(bytes_).substr(
          static_cast<std::size_t>(std::min<std::uint64_t>(place_, bytes_.size())));
    }

    const std::string bytes_;
    std::vector<std::string>& calls_;
    const std::string closing_;
    std::uint64_t place_ = 0;
    std::uint64_t end_ = 0;  // of the chunk found last
    std::uint64_t end_of_form_ = 0;
    std::uint32_t size_ = 0;  // of the chunk found last
  };
};

// A wave-out device in memory.
class FakeWaveOutput final : public WaveOutput {
 public:
  WaveCode query = 0;
  WaveCode open = 0;
  WaveCode prepare = 0;
  WaveCode write = 0;
  std::string error_text = "The format is not supported.";
  // Whether a format without a sample rate is refused.
  bool wants_rate = false;
  // Whether the driver is done with each buffer before Write has returned.
  bool done_at_once = false;

  // "query ID", "text CODE", "open ID", "prepare", "write SAMPLES", "unprepare", "reset", "message
  // NUMBER", "close", in order.
  std::vector<std::string> calls;
  std::vector<std::byte> format;

  // The driver of the open device reports that it is done.
  void ReportDone() {
    if (!is_open_) throw std::runtime_error("no device is open");
    done_ = true;
  }

  [[nodiscard]] bool is_open() const { return is_open_; }
  // Whether an open device's driver has reported that. Sets the device's event alone.
  [[nodiscard]] bool is_done() const { return is_open_ && done_; }
  // The event of the device that was opened last: each has another one.
  [[nodiscard]] EventHandle done_event() const { return done_event_; }

  WaveCode Query(std::uint16_t device_id, std::span<const std::byte> asked) override {
    calls.push_back("query " + std::to_string(device_id));
    format.assign(asked.begin(), asked.end());
    constexpr WaveCode kBadFormat = 32;
    if (wants_rate && LoadWord(asked, 4) == 0) return kBadFormat;
    return query;
  }

  std::string ErrorText(WaveCode error) override {
    calls.push_back("text " + std::to_string(error));
    return error_text;
  }

  WaveCode Open(std::uint16_t device_id, std::span<const std::byte>,
                std::unique_ptr<WaveDevice>& device) override {
    calls.push_back("open " + std::to_string(device_id));
    if (open == 0) device = std::make_unique<Device>(*this);
    return open;
  }

 private:
  class Device final : public WaveDevice {
   public:
    explicit Device(FakeWaveOutput& output) : output_(output), event_(++output.done_event_) {
      output_.is_open_ = true;
      output_.done_ = false;
    }
    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;
    ~Device() override {
      output_.calls.emplace_back("close");
      output_.is_open_ = false;
    }

    WaveCode Prepare(WaveHeader&) override {
      output_.calls.emplace_back("prepare");
      return output_.prepare;
    }

    WaveCode Write(WaveHeader& header) override {
      const auto* const samples = reinterpret_cast<const char*>(header.data);
      output_.calls.push_back("write " + std::string(samples, header.length));
      if (output_.done_at_once) output_.done_ = true;
      return output_.write;
    }

    [[nodiscard]] bool IsDone() const override { return output_.done_; }
    [[nodiscard]] EventHandle DoneEvent() const override { return event_; }

    void Unprepare(WaveHeader&) override { output_.calls.emplace_back("unprepare"); }

    void Reset() override {
      output_.calls.emplace_back("reset");
      output_.done_ = true;
    }

    void Send(std::uint32_t message, const WaveHeader&) override {
      output_.calls.push_back("message " + std::to_string(message));
    }

   private:
    FakeWaveOutput& output_;
    const EventHandle event_;
  };

  bool is_open_ = false;
  bool done_ = false;
  EventHandle done_event_ = 1000;
};

// Instead of a wait that nothing ends.
struct EndlessWait : std::runtime_error {
  EndlessWait() : std::runtime_error("the wait never ends") {}
};

// What happens while somebody waits, one after the other: messages, and reports of the driver,
// which wake only whoever waits for the device's event. A wait that none of them ends throws
// EndlessWait.
class FakeMessagePump final : public MessagePump {
 public:
  // The output must outlive the object.
  explicit FakeMessagePump(const FakeWaveOutput& output) : output_(output) {}

  std::deque<std::function<void()>> events;
  int waits = 0;

  void PumpUntil(const std::function<bool()>& is_over, EventHandle awaited) override {
    ++waits;
    while (!is_over()) {
      if (output_.is_done() && awaited != output_.done_event()) {
        throw std::runtime_error("nobody is woken by the driver");
      }
      if (events.empty()) throw EndlessWait();
      const auto event = std::move(events.front());
      events.pop_front();
      event();
    }
  }

 private:
  const FakeWaveOutput& output_;
};

// The whole system as a call meets it.
struct FakeVoiceSystem {
  FakeTelephony telephony;
  FakeRiffFiles riff_files;
  FakeWaveOutput wave_output;
  FakeMessagePump pump{wave_output};
  VirtualClock clock;
  CountingMemory memory;
  VoiceSystem system{telephony, riff_files, wave_output, pump, clock, memory, kCodePage1252};
};

}  // namespace brantel
