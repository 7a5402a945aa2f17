#include "host/preview/paper_telephone.h"

#include <cstring>
#include <vector>

#include "host/preview/wave_length.h"
#include "telephone/line_constants.h"
#include "telephone/line_session.h"

namespace brantel::host {
namespace {

constexpr int kDigits = 10;

std::optional<char> KeyFor(std::int32_t button) {
  if (button >= 0 && button < kDigits) return static_cast<char>('0' + button);
  if (button == kStarButton) return '*';
  if (button == kHashButton) return '#';
  if (button == kAnyButton) return '1';
  return std::nullopt;
}

void SetWord(std::span<std::byte> block, std::size_t offset, std::uint32_t word) {
  if (offset + sizeof word > block.size()) return;
  std::memcpy(block.subspan(offset).data(), &word, sizeof word);
}

}  // namespace

std::unique_ptr<RiffFile> PaperWaves::Open(const std::string& path) {
  auto file = files_.Open(path);
  parts_.push_back({.what = std::string(kMessage), .bytes = path});
  if (!file) parts_.back().words = "cannot be opened";
  return file;
}

class PaperWaveOutput::Device final : public WaveDevice {
 public:
  Device(PaperWaveOutput& output, std::span<const std::byte> format)
      : output_(output), format_(format.begin(), format.end()) {}

  WaveCode Prepare(WaveHeader& /*header*/) override { return 0; }

  WaveCode Write(WaveHeader& header) override {
    output_.length_ = WaveMilliseconds(format_, header.length);
    output_.is_playing_ = true;
    PreviewPart& sound = output_.parts_.back();
    AddWords(sound, WaveWords(sound.bytes, output_.length_));
    return 0;
  }

  [[nodiscard]] bool IsDone() const override { return !output_.is_playing_; }
  [[nodiscard]] EventHandle DoneEvent() const override { return kNoEvent; }
  void Unprepare(WaveHeader& /*header*/) override {}
  void Reset() override { output_.is_playing_ = false; }
  void Send(std::uint32_t /*message*/, const WaveHeader& /*header*/) override {}

 private:
  PaperWaveOutput& output_;
  std::vector<std::byte> format_;
};

WaveCode PaperWaveOutput::Open(std::uint16_t /*device_id*/, std::span<const std::byte> format,
                               std::unique_ptr<WaveDevice>& device) {
  device = std::make_unique<Device>(*this, format);
  return 0;
}

void PaperWaveOutput::PlayToEnd() {
  clock_.Count(length_);
  is_playing_ = false;
}

PaperTelephone::PaperTelephone(std::int32_t button, PaperWaveOutput& output, PreviewParts& parts)
    : key_(KeyFor(button)), output_(output), parts_(parts) {}

LineCode PaperTelephone::Initialize(LineMessageReceiver& receiver, std::uint32_t& application,
                                    std::uint32_t& device_count) {
  receiver_ = &receiver;
  application = 1;
  device_count = 1;
  return 0;
}

LineCode PaperTelephone::NegotiateVersion(std::uint32_t /*application*/, std::uint32_t /*device*/,
                                          const VersionRange& range, std::uint32_t& version) {
  version = range.lowest;
  return 0;
}

LineCode PaperTelephone::GetCapabilities(std::uint32_t /*application*/, std::uint32_t /*device*/,
                                         std::uint32_t /*version*/,
                                         std::span<std::byte> capabilities) {
  SetWord(capabilities, line_structure::kCapabilitiesMediaModes, kMediaModeAutomatedVoice);
  return 0;
}

LineCode PaperTelephone::Open(std::uint32_t /*application*/, std::uint32_t /*device*/,
                              std::uint32_t /*version*/, std::uint32_t /*media_mode*/,
                              std::span<const std::byte> /*call_parameters*/, std::uint32_t& line) {
  line = 1;
  return 0;
}

LineCode PaperTelephone::MakeCall(std::uint32_t /*line*/, const std::string& number,
                                  std::span<const std::byte> /*call_parameters*/,
                                  std::uint32_t& call) {
  parts_.push_back({.what = "number", .bytes = number});
  call = 1;
  is_ringing_ = true;
  return 0;
}

LineCode PaperTelephone::GetId(std::uint32_t /*line*/, std::uint32_t /*call*/,
                               CallSelect /*select*/, const char* /*device_class*/,
                               std::span<std::byte> id) {
  // The number of the wave device stands behind the structure, and is 0.
  const std::uint32_t size = line_structure::kVariableTextSize + sizeof(std::uint32_t);
  SetWord(id, line_structure::kNeededSize, size);
  SetWord(id, line_structure::kVariableTextOffset, line_structure::kVariableTextSize);
  return 0;
}

LineCode PaperTelephone::MonitorDigits(std::uint32_t /*call*/, std::uint32_t digit_mode) {
  is_listening_ = digit_mode != kDigitModeNone;
  return 0;
}

LineCode PaperTelephone::Close(std::uint32_t /*line*/) {
  return 0;
}

LineCode PaperTelephone::Shutdown(std::uint32_t /*application*/) {
  receiver_ = nullptr;
  return 0;
}

void PaperTelephone::PumpUntil(const std::function<bool()>& is_over, EventHandle /*event*/) {
  while (!is_over())
    LetSomethingHappen();
}

void PaperTelephone::LetSomethingHappen() {
  if (is_ringing_) {
    is_ringing_ = false;
    receiver_->Receive({line_message::kCallState, call_state::kConnected});
  } else if (is_listening_ && key_) {
    receiver_->Receive({line_message::kMonitorDigits, static_cast<std::uint32_t>(*key_)});
  } else if (output_.is_playing()) {
    output_.PlayToEnd();
    if (is_listening_) throw CallWithoutEnd();
  } else {
    throw CallWithoutEnd();
  }
}

}  // namespace brantel::host
