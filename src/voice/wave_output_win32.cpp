#include "voice/wave_output_win32.h"

#include <windows.h>
#include <mmsystem.h>

#include <array>
#include <atomic>
#include <cstddef>

namespace brantel {
namespace {

static_assert(kWaveDoneMessage == WOM_DONE);
static_assert(sizeof(WaveHeader) == sizeof(WAVEHDR));
static_assert(offsetof(WaveHeader, data) == offsetof(WAVEHDR, lpData));
static_assert(offsetof(WaveHeader, length) == offsetof(WAVEHDR, dwBufferLength));
static_assert(offsetof(WaveHeader, user) == offsetof(WAVEHDR, dwUser));
static_assert(offsetof(WaveHeader, flags) == offsetof(WAVEHDR, dwFlags));
static_assert(offsetof(WaveHeader, loops) == offsetof(WAVEHDR, dwLoops));

using DoneFlag = std::atomic<bool>;
static_assert(DoneFlag::is_always_lock_free);

WAVEHDR* ToSystem(WaveHeader& header) {
  return reinterpret_cast<WAVEHDR*>(&header);
}

const WAVEFORMATEX* ToSystem(std::span<const std::byte> format) {
  return reinterpret_cast<const WAVEFORMATEX*>(format.data());
}

// Runs on the driver's thread, where nothing of the system may be called. What a header's user
// value points to lives as long as its device.
void CALLBACK ReportDone(HWAVEOUT, UINT message, DWORD_PTR, DWORD_PTR header, DWORD_PTR) noexcept {
  if (message != WOM_DONE) return;
  auto* const done = reinterpret_cast<DoneFlag*>(reinterpret_cast<const WAVEHDR*>(header)->dwUser);
  done->store(true, std::memory_order_release);
}

class SystemWaveDevice final : public WaveDevice {
 public:
  explicit SystemWaveDevice(HWAVEOUT device) : device_(device) {}
  SystemWaveDevice(const SystemWaveDevice&) = delete;
  SystemWaveDevice& operator=(const SystemWaveDevice&) = delete;
  ~SystemWaveDevice() override { waveOutClose(device_); }

  WaveCode Prepare(WaveHeader& header) override {
    header.user = reinterpret_cast<std::uintptr_t>(&done_);
    return waveOutPrepareHeader(device_, ToSystem(header), sizeof(WAVEHDR));
  }

  WaveCode Write(WaveHeader& header) override {
    return waveOutWrite(device_, ToSystem(header), sizeof(WAVEHDR));
  }

  [[nodiscard]] bool IsDone() const override { return done_.load(std::memory_order_acquire); }

  void Unprepare(WaveHeader& header) override {
    waveOutUnprepareHeader(device_, ToSystem(header), sizeof(WAVEHDR));
  }

  void Reset() override { waveOutReset(device_); }

  void Send(std::uint32_t message, const WaveHeader& header) override {
    waveOutMessage(device_, message, reinterpret_cast<DWORD_PTR>(&header), 0);
  }

 private:
  HWAVEOUT device_;
  DoneFlag done_ = false;
};

}  // namespace

WaveCode SystemWaveOutput::Query(std::uint16_t device_id, std::span<const std::byte> format) {
  return waveOutOpen(nullptr, device_id, ToSystem(format), 0, 0, WAVE_FORMAT_QUERY);
}

std::string SystemWaveOutput::ErrorText(WaveCode error) {
  std::array<char, MAXERRORLENGTH + 1> text{};
  waveOutGetErrorTextA(error, text.data(), MAXERRORLENGTH);
  return text.data();
}

WaveCode SystemWaveOutput::Open(std::uint16_t device_id, std::span<const std::byte> format,
                                std::unique_ptr<WaveDevice>& device) {
  HWAVEOUT opened = nullptr;
  const WaveCode code = waveOutOpen(&opened, device_id, ToSystem(format),
                                    reinterpret_cast<DWORD_PTR>(&ReportDone), 0, CALLBACK_FUNCTION);
  if (code == MMSYSERR_NOERROR) device = std::make_unique<SystemWaveDevice>(opened);
  return code;
}

}  // namespace brantel
