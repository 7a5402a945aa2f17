#include "sim/telephone_line.h"

#include <utility>

namespace brantel::sim {

void TelephoneLine::Call(const std::string& number) {
  HangUp();
  transcript_.Note("line", "calls " + number);
  in_call_ = true;
  const Subscriber& subscriber = FindSubscriber(number);
  const bool busy = calls_[number]++ < subscriber.busy_calls;
  planned_ = timeline_.After(subscriber.delay, [this, &subscriber, number, busy] {
    if (busy) {
      listener_.on_outcome(CallOutcome::kBusy);
    } else {
      Resolve(subscriber, number);
    }
  });
}

void TelephoneLine::Resolve(const Subscriber& subscriber, const std::string& number) {
  if (subscriber.make_far_end) Answer(subscriber, number);
  if (subscriber.outcome != CallOutcome::kVoice) listener_.on_outcome(subscriber.outcome);
  if (subscriber.outcome == CallOutcome::kModem && far_end_) far_end_->Connect();
}

void TelephoneLine::Answer(const Subscriber& subscriber, const std::string& number) {
  transcript_.Note("line", "is answered");
  far_end_ = subscriber.make_far_end({
      .number = number,
      .timeline = timeline_,
      .transcript = transcript_,
      .send = [this](std::string_view bytes) { listener_.on_bytes(bytes); },
      // Not at once: the far end is still at work when it says so.
      .hang_up = [this] { planned_ = timeline_.After(Time(0), [this] { FarEndHangsUp(); }); },
  });
}

void TelephoneLine::SendTone(char tone) {
  if (far_end_) far_end_->HearTone(tone);
}

void TelephoneLine::SendBytes(std::string_view bytes) {
  if (far_end_) far_end_->Receive(bytes);
}

void TelephoneLine::HangUp() {
  timeline_.Cancel(planned_);
  far_end_.reset();
  if (std::exchange(in_call_, false)) transcript_.Note("line", "is hung up");
}

void TelephoneLine::FarEndHangsUp() {
  HangUp();
  listener_.on_hang_up();
}

}  // namespace brantel::sim
