#include "voice/voice_call.h"

#include <array>

#include "telephone/line_session.h"
#include "telephone/wave_playback.h"
#include "text/string_table.h"

namespace brantel {
namespace {

struct Step {
  LineCode (*run)(LineSession& session);
  unsigned failure_text_id;  // 0: the step says enough of its failures
};

// Between the first, without which there is nothing to tear down, and the sounds.
constexpr std::array<Step, 5> kSteps = {{
    {[](LineSession& session) { return session.ChooseDevice(); }, 0},
    {[](LineSession& session) { return session.OpenLine(); }, text_id::kLineNotOpened},
    {[](LineSession& session) { return session.PlaceCall(); }, text_id::kCallNotPlaced},
    {[](LineSession& session) { return session.GetWaveDevice(CallSelect::kCall); },
     text_id::kWaveDeviceNotFound},
    {[](LineSession& session) { return session.MonitorDigits(); }, text_id::kDigitsNotMonitored},
}};

class RunningCall {
 public:
  RunningCall(const VoiceSystem& system, VoiceState& state, const VoiceCall& call)
      : state_(state),
        call_(call),
        playback_(system, state),
        session_(system, state, playback_, call.number, call.button) {}

  LineCode Run() {
    const LineCode code = session_.InitializeLine();
    if (code != 0) return code;
    const LineCode outcome = RunInitialised();
    session_.TearDown();
    return outcome;
  }

 private:
  LineCode RunInitialised() {
    for (const Step& step : kSteps) {
      const LineCode code = step.run(session_);
      if (code == 0) continue;
      if (step.failure_text_id != 0) state_.log().Line(step.failure_text_id);
      return code;
    }
    return Talk();
  }

  LineCode Talk() {
    state_.acknowledged = false;
    if (!RepeatUntilAcknowledged()) return kPlaybackFailed;
    if (!state_.acknowledged) {
      state_.log().Line(text_id::kNotAcknowledged);
      return kNotAcknowledged;
    }
    if (!PlayIfPresent(call_.first_message, text_id::kFirstMessageNotPlayed) ||
        !PlayIfPresent(call_.second_message, text_id::kSecondMessageNotPlayed)) {
      return kPlaybackFailed;
    }
    state_.log().Line(text_id::kGoodExit);
    return 0;
  }

  // False when the message could not be played.
  bool RepeatUntilAcknowledged() {
    // Deliberately from 0 to the count, with it: it counts the repetitions behind the first.
    for (std::int64_t i = 0; i <= call_.count && !state_.acknowledged; ++i) {
      if (!PlayToItsEnd(call_.repeat_message, text_id::kRepeatMessageNotPlayed)) return false;
    }
    return true;
  }

  bool PlayIfPresent(const std::string& file, unsigned failure_text_id) {
    return file.empty() || PlayToItsEnd(file, failure_text_id);
  }

  bool PlayToItsEnd(const std::string& file, unsigned failure_text_id) {
    if (playback_.Play(session_.wave_device(), file) != 0) {
      state_.log().Line(failure_text_id);
      return false;
    }
    session_.WaitForPlayback();
    return true;
  }

  VoiceState& state_;
  const VoiceCall& call_;
  WavePlayback playback_;
  LineSession session_;
};

}  // namespace

LineCode PlaceVoiceCall(const VoiceSystem& system, VoiceState& state, const VoiceCall& call) {
  return RunningCall(system, state, call).Run();
}

}  // namespace brantel
