#include "telephone/wave_playback.h"

#include <new>
#include <utility>

#include "text/string_table.h"

namespace brantel {

LineCode WavePlayback::Play(std::uint32_t device_id, const std::string& file) {
  Stop();
  auto wave = ReadWaveFile(system_.riff_files, system_.memory, file);
  const bool queued =
      // Of the number that telephony gives, wave devices have the lower half.
      wave ? Queue(static_cast<std::uint16_t>(device_id), *wave) : Fail(wave.reason());
  return queued ? 0 : kPlaybackFailed;
}

bool WavePlayback::Queue(std::uint16_t device_id, Wave& wave) {
  MemoryBlock header_memory(system_.memory, sizeof(WaveHeader));
  if (!header_memory) return Fail(text_id::kNoMemoryForHeader);
  auto* const header = new (header_memory.bytes().data())
      WaveHeader{.data = wave.samples.bytes().data(),
                 .length = static_cast<std::uint32_t>(wave.samples.bytes().size())};

  WaveOutput& output = system_.wave_output;
  const WaveCode refusal = output.Query(device_id, wave.format.bytes());
  if (refusal != 0) {
    state_.log().Made([&] { return output.ErrorText(refusal) + "\r\n"; });
    return false;
  }
  std::unique_ptr<WaveDevice> device;
  if (output.Open(device_id, wave.format.bytes(), device) != 0) {
    return Fail(text_id::kWaveDeviceNotOpened);
  }
  wave.format = {};
  if (device->Prepare(*header) != 0) return Fail(text_id::kHeaderNotPrepared);
  if (device->Write(*header) != 0) {
    device->Unprepare(*header);
    return Fail(text_id::kWaveNotWritten);
  }
  samples_ = std::move(wave.samples);
  header_memory_ = std::move(header_memory);
  header_ = header;
  device_ = std::move(device);
  return true;
}

bool WavePlayback::Fail(unsigned text_id) {
  state_.log().Line(text_id);
  return false;
}

void WavePlayback::CutShort() {
  if (!IsQueued()) return;
  device_->Reset();
  device_->Send(kWaveDoneMessage, *header_);
}

void WavePlayback::CompleteWhenDone() {
  if (!IsQueued() || !device_->IsDone()) return;
  Release();
  state_.playback_done = true;
}

void WavePlayback::Stop() {
  if (!IsQueued()) return;
  device_->Reset();
  Release();
}

void WavePlayback::Release() {
  device_->Unprepare(*header_);
  device_.reset();
  header_ = nullptr;
  header_memory_ = {};
  samples_ = {};
}

}  // namespace brantel
