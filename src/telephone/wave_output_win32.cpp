#include "telephone/wave_output_win32.h"

#include <windows.h>
#include <mmsystem.h>

#include <array>
#include <cstddef>

#include "system/windows/handle_win32.h"

namespace brantel {
namespace {

static_assert(kWaveDoneMessage == WOM_DONE);
static_assert(sizeof(WaveHeader) == sizeof(WAVEHDR));
static_assert(offsetof(WaveHeader, data) == offsetof(WAVEHDR, lpData));
static_assert(offsetof(WaveHeader, length) == offsetof(WAVEHDR, dwBufferLength));
static_assert(offsetof(WaveHeader, user) == offsetof(WAVEHDR, dwUser));
static_assert(offsetof(WaveHeader, flags) == offsetof(WAVEHDR, dwFlags));
static_assert(offsetof(WaveHeader, loops) == offsetof(WAVEHDR, dwLoops));

WAVEHDR* ToSystem(WaveHeader& header) {
  return reinterpret_cast<WAVEHDR*>(&header);
}

const WAVEFORMATEX* ToSystem(std::span<const std::byte> format) {
  return reinterpret_cast<const WAVEFORMATEX*>(format.data());
}

// Runs on the driver's thread, where of the system little else than this may be called. A header's
// user value is the event. As soon as that is set the header, the device and the event may be gone.
void CALLBACK ReportDone(HWAVEOUT, UINT message, DWORD_PTR, DWORD_PTR header, DWORD_PTR) noexcept {
  if (message != WOM_DONE) return;
  SetEvent(reinterpret_cast<HANDLE>(reinterpret_cast<const WAVEHDR*>(header)->dwUser));
}

class SystemWaveDevice final : public WaveDevice {
 public:
  SystemWaveDevice() = default;
  SystemWaveDevice(const SystemWaveDevice&) = delete;
  SystemWaveDevice& operator=(const SystemWaveDevice&) = delete;
  ~SystemWaveDevice() override {
    if (device_ != nullptr) waveOutClose(device_);
  }

  WaveCode Open(std::uint16_t device_id, std::span<const std::byte> format) {
    if (!done_) return MMSYSERR_NOMEM;
    HWAVEOUT opened = nullptr;
    const WaveCode code =
        waveOutOpen(&opened, device_id, ToSystem(format), reinterpret_cast<DWORD_PTR>(&ReportDone),
                    0, CALLBACK_FUNCTION);
    if (code == MMSYSERR_NOERROR) device_ = opened;
    return code;
  }

  WaveCode Prepare(WaveHeader& header) override {
    header.user = DoneEvent();
    return waveOutPrepareHeader(device_, ToSystem(header), sizeof(WAVEHDR));
  }

  WaveCode Write(WaveHeader& header) override {
    return waveOutWrite(device_, ToSystem(header), sizeof(WAVEHDR));
  }

  [[nodiscard]] bool IsDone() const override {
    return WaitForSingleObject(done_.get(), 0) == WAIT_OBJECT_0;
  }

  [[nodiscard]] EventHandle DoneEvent() const override {
    return reinterpret_cast<EventHandle>(done_.get());
  }

  void Unprepare(WaveHeader& header) override {
    waveOutUnprepareHeader(device_, ToSystem(header), sizeof(WAVEHDR));
  }

  void Reset() override { waveOutReset(device_); }

  void Send(std::uint32_t message, const WaveHeader& header) override {
    waveOutMessage(device_, message, reinterpret_cast<DWORD_PTR>(&header), 0);
  }

 private:
  Handle done_{CreateEventW(nullptr, TRUE, FALSE, nullptr)};  // stays set
  HWAVEOUT device_ = nullptr;
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
  // Made before, so that nothing is open when there is no memory for it.
  auto opened = std::make_unique<SystemWaveDevice>();
  const WaveCode code = opened->Open(device_id, format);
  if (code == MMSYSERR_NOERROR) device = std::move(opened);
  return code;
}

}  // namespace brantel
