#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include "sim/far_end.h"
#include "sim/telephone_book.h"
#include "sim/timeline.h"
#include "sim/transcript.h"

namespace brantel::sim {

// The telephone line of a modem: one call at a time. Digits that are keyed before the far end has
// answered are heard by nobody.
class TelephoneLine {
 public:
  // Who is told how the call goes.
  struct Listener {
    std::function<void(CallOutcome)> on_outcome;  // not for kVoice, of which a modem hears nothing
    std::function<void(std::string_view)> on_bytes;
    std::function<void()> on_hang_up;
  };

  // Both must outlive the object.
  TelephoneLine(Timeline& timeline, Transcript& transcript, Listener listener)
      : timeline_(timeline), transcript_(transcript), listener_(std::move(listener)) {}
  TelephoneLine(const TelephoneLine&) = delete;
  TelephoneLine& operator=(const TelephoneLine&) = delete;
  ~TelephoneLine() { HangUp(); }

  void Call(const std::string& number);
  void SendTone(char tone);
  void SendBytes(std::string_view bytes);
  void HangUp();

 private:
  void Resolve(const Subscriber& subscriber, const std::string& number);
  void Answer(const Subscriber& subscriber, const std::string& number);
  void FarEndHangsUp();

  Timeline& timeline_;
  Transcript& transcript_;
  Listener listener_;
  std::map<std::string, unsigned> calls_;  // by number
  Timeline::Ticket planned_;
  bool in_call_ = false;
  std::unique_ptr<FarEnd> far_end_;
};

}  // namespace brantel::sim
