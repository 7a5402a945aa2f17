#include "host/course/alert_course.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>
#include <vector>

#include "beeper/beeper_description.h"
#include "host/course/course_row.h"
#include "host/course/log_reader.h"
#include "host/course/particulars.h"
#include "host/course/recipient_tally.h"
#include "host/instances/class_fields.h"
#include "host/outcome/result_text.h"
#include "host/text/letter_case.h"
#include "launch_program/launch_program_description.h"
#include "pager/pager_description.h"
#include "smtp_mail/smtp_mail_description.h"
#include "sound/sound_description.h"
#include "system/result.h"
#include "voice/voice_description.h"
#include "win_popup/win_popup_description.h"

namespace brantel::host {
namespace {

// A field of a class's instances that the words speak of.
struct NamedField {
  const char* name;
  std::size_t field;
};

struct ClassWay {
  const ClassDescription* notifier_class;
  Way way;  // Pager's: for a protocol that is none of the others
  NamedField named_field;
};

constexpr std::array kClassWays = {
    ClassWay{&kSMTPMail, Way::kSmtpMail, {"gateway", smtp_mail_field::kGateway}},
    ClassWay{&kSound, Way::kSound, {"file", sound_field::kWaveFilename}},
    ClassWay{&kWinPopup, Way::kWinPopup, {"destination", win_popup_field::kDestination}},
    ClassWay{
        &kLaunchProgram, Way::kLaunchProgram, {"program", launch_program_field::kProgramFilename}},
    ClassWay{&kBeeper, Way::kBeeper, {"number", beeper_field::kBeeperNumber}},
    ClassWay{&kPager, Way::kTap, {"number", pager_field::kPagerNumber}},
    ClassWay{&kVoice, Way::kVoice, {"number", voice_field::kPhoneNumber}},
};

struct ProtocolWay {
  std::string_view protocol;
  Way way;
};

constexpr std::array kProtocolWays = {
    ProtocolWay{"SMS-TAP", Way::kSmsTap},
    ProtocolWay{"UCP-SMS", Way::kUcp},
    ProtocolWay{"NTT", Way::kNtt},
};

// How an attempt without a result has ended.
struct EndWords {
  AttemptEnd end;
  std::string_view words;
};

constexpr std::array kEndWords = {
    EndWords{AttemptEnd::kTimedOut, "the time ran out"},
    EndWords{AttemptEnd::kInterrupted, "it was interrupted"},
    EndWords{AttemptEnd::kProcessDied, "the process that was to deliver it ended"},
};

const ClassWay& WayOfClass(std::string_view class_name) {
  const ClassDescription& notifier_class = FindDescription(class_name);
  return *std::ranges::find(kClassWays, &notifier_class, &ClassWay::notifier_class);
}

Way WayOf(const ClassWay& class_way, const std::optional<Instance>& instance) {
  if (class_way.notifier_class != &kPager || !instance) return class_way.way;
  const auto* const found = std::ranges::find(kProtocolWays, instance->text(pager_field::kProtocol),
                                              &ProtocolWay::protocol);
  return found == kProtocolWays.end() ? class_way.way : found->way;
}

bool HasModem(Way way) {
  constexpr Ways kModems = Ways(Way::kBeeper) | Way::kTap | Way::kSmsTap | Way::kUcp | Way::kNtt;
  return kModems.Has(way);
}

// What has left this computer in one of these may have arrived, whatever comes after.
bool GoesOut(Stage stage) {
  constexpr Stages kOut = Stages(Stage::kPage) | Stage::kTextEnd | Stage::kTalk;
  return kOut.Has(stage);
}

// A sign that has been given, in words.
struct Note {
  const CourseRow* row;
  std::string words;
};

// Whether it tells more of why an alert has failed than the other does, or is the same once more.
bool IsAsStrong(const Note& one, const Note& other) {
  return std::pair(one.row->bearing, one.row) <= std::pair(other.row->bearing, other.row);
}

bool IsReason(Bearing bearing) {
  return bearing == Bearing::kRefusal || bearing == Bearing::kTrouble || bearing == Bearing::kHint;
}

}  // namespace

class AlertCourse::Impl {
 public:
  Impl(const ClassWay& class_way, const std::optional<Instance>& instance)
      : way_(WayOf(class_way, instance)), reader_(HasModem(way_), OpenTexts(way_)) {
    if (instance) {
      particulars_[class_way.named_field.name] =
          Quotable(instance->text(class_way.named_field.field));
    } else if (way_ == Way::kSound) {
      stage_ = Stage::kEnding;
    }
  }

  std::optional<std::string> Take(std::string_view text) {
    const std::string phase_before = phase_;
    for (const LogPiece& piece : reader_.Take(text)) {
      TakePiece(piece);
    }
    if (phase_ == phase_before) return std::nullopt;
    return phase_;
  }

  [[nodiscard]] Verdict Finish(AttemptEnd end, std::optional<std::int32_t> result) const {
    if (end != AttemptEnd::kReturned) return WithoutResult(end);
    const std::int32_t returned = result.value_or(kFail);
    return Failed(returned) ? Failure(returned) : Success(returned);
  }

 private:
  void TakePiece(const LogPiece& piece) {
    const bool was_answered = std::exchange(was_answered_, piece.kind == LogPiece::Kind::kAnswer);
    switch (piece.kind) {
      case LogPiece::Kind::kSent:
        Hear(Speaker::kSending, piece.text);
        break;
      case LogPiece::Kind::kAnswer:
        Hear(Speaker::kModem, piece.text);
        break;
      case LogPiece::Kind::kLine:
        if (Hear(Speaker::kModule, piece.text)) break;
        // Far ends may say what looks like the end of their words.
        was_answered_ = was_answered && Hear(Speaker::kModem, piece.text);
        if (way_ == Way::kSmtpMail) HearReply(piece.text);
    }
  }

  // A reply of several lines is judged by the last.
  void HearReply(std::string_view line) {
    constexpr std::size_t kContinuationMark = 3;
    if (line.size() > kContinuationMark && line[kContinuationMark] == '-') return;
    Hear(Speaker::kRelay, line);
  }

  // Whether it means something.
  bool Hear(Speaker speaker, std::string_view said) {
    const CourseRow* const row = FindCourseRow({way_, stage_}, speaker, said);
    if (row == nullptr) return false;
    particulars_["rest"] = Quotable(BehindSign(row->sign, said));
    particulars_["answer"] = Quotable(said);
    if (row->begins) Begin(*row->begins);
    if (!row->phase.empty()) EnterPhase(row->phase);
    Bear(*row);
    return true;
  }

  // What went wrong before does not matter any more.
  void Begin(Stage stage) {
    stage_ = stage;
    if (stage == Stage::kEnding) return;
    work_ = stage;
    reason_.reset();
    cause_.reset();
    taken_ = nullptr;
    has_gone_out_ = has_gone_out_ || GoesOut(stage);
    const unsigned tries = ++tries_.at(static_cast<std::size_t>(stage));
    particulars_["try"] = tries == 1 ? "" : "try " + std::to_string(tries);
    if (stage == Stage::kRecipient) recipients_.Name(particulars_["rest"]);
  }

  void EnterPhase(std::string_view phase) {
    phase_ = FillIn(phase, particulars_);
    if (stage_ != Stage::kEnding) particulars_["phase"] = phase_;
  }

  void Bear(const CourseRow& row) {
    const Note note{&row, FillIn(row.words, particulars_)};
    if (IsReason(row.bearing) && (!reason_ || IsAsStrong(note, *reason_))) reason_ = note;
    if (row.bearing == Bearing::kCause) cause_ = note;
    if (row.bearing == Bearing::kTaken) taken_ = &row;
    if (row.bearing == Bearing::kRemark) Remark(note);
    if (row.sign.speaker == Speaker::kRelay && stage_ == Stage::kRecipient) Answered(row.bearing);
  }

  void Remark(const Note& note) {
    const bool is_known = std::ranges::find(remarks_, note.row, &Note::row) != remarks_.end();
    if (!is_known) remarks_.push_back(note);
  }

  void Answered(Bearing bearing) {
    if (bearing == Bearing::kAccepted) {
      recipients_.Accept();
    } else {
      recipients_.Refuse(particulars_["answer"]);
    }
  }

  [[nodiscard]] Note NoteOf(Speaker speaker, Stage stage, std::string_view said = {}) const {
    const CourseRow* const row = FindCourseRow({way_, stage}, speaker, said);
    if (row == nullptr) return {nullptr, {}};
    Particulars particulars = particulars_;
    particulars["answer"] = said;
    return {row, FillIn(row->words, particulars)};
  }

  [[nodiscard]] Verdict Success(std::int32_t result) const {
    if (taken_ != nullptr) return {true, TakenWords(), TakenAdvice()};
    const Note note = NoteOf(Speaker::kSuccess, stage_, ResultText(result));
    if (note.row->bearing == Bearing::kTaken) {
      return {true, note.words, std::string(note.row->advice)};
    }
    const std::string advice(note.row->advice);
    if (reason_ && reason_->row->bearing == Bearing::kRefusal) {
      return {true, "not delivered: " + reason_->words + ", although Send returned success",
              advice};
    }
    const std::string reason = reason_ ? "; " + reason_->words : "";
    return {true, "not confirmed: " + note.words + reason, advice};
  }

  [[nodiscard]] std::string TakenWords() const {
    std::vector<std::string> remarks = recipients_.Remarks();
    for (const Note& remark : remarks_) {
      remarks.push_back(remark.words);
    }
    Particulars particulars = particulars_;
    particulars["remarks"] = Join(remarks, "; ");
    return FillIn(taken_->words, particulars);
  }

  [[nodiscard]] std::string TakenAdvice() const {
    const bool has_advice = !taken_->advice.empty() || remarks_.empty();
    return std::string(has_advice ? taken_->advice : remarks_.front().row->advice);
  }

  [[nodiscard]] Verdict Failure(std::int32_t result) const {
    const Note note = WhyFailed(result);
    const bool is_certain = note.row->bearing == Bearing::kRefusal || !has_gone_out_;
    std::string words = is_certain ? "not delivered: " : "not confirmed: ";
    if (HasNoRecipient()) {
      words += "none of " + std::to_string(recipients_.size()) + " recipients was accepted; ";
    }
    words += note.words;
    if (cause_ && cause_->row != note.row) words += ": " + cause_->words;
    return {false, words, AdviceOn(note)};
  }

  [[nodiscard]] Note WhyFailed(std::int32_t result) const {
    Note told_by_result = NoteOf(Speaker::kFailure, stage_, ResultText(result));
    // What is not the module's own comes from the host that it asked.
    if (told_by_result.row->sign.match == Match::kAnything) return told_by_result;
    if (reason_) return *reason_;
    if (cause_) return *cause_;
    const Note unanswered = NoteOf(Speaker::kNobody, work_);
    return unanswered.row == nullptr ? told_by_result : unanswered;
  }

  [[nodiscard]] std::string AdviceOn(const Note& reason) const {
    const bool has_cause = cause_ && !cause_->row->advice.empty();
    return std::string(has_cause ? cause_->row->advice : reason.row->advice);
  }

  [[nodiscard]] bool HasNoRecipient() const {
    return recipients_.size() > 1 && work_ == Stage::kRecipient && !recipients_.HasAccepted();
  }

  [[nodiscard]] Verdict WithoutResult(AttemptEnd end) const {
    std::string words = "no result: ";
    words += std::ranges::find(kEndWords, end, &EndWords::end)->words;
    if (!phase_.empty()) words += " while " + phase_;
    if (taken_ != nullptr) return {false, words + "; " + TakenWords(), {}};
    if (!reason_ || reason_->row->bearing == Bearing::kHint) return {false, words, {}};
    return {false, words + "; " + reason_->words, AdviceOn(*reason_)};
  }

  Way way_;
  LogReader reader_;
  Particulars particulars_;
  Stage stage_ = Stage::kBeginning;
  Stage work_ = Stage::kBeginning;    // the last stage that was not the ending
  std::array<unsigned, 32> tries_{};  // of each stage
  std::string phase_;
  bool was_answered_ = false;  // by what the last piece was
  bool has_gone_out_ = false;
  std::optional<Note> reason_;
  std::optional<Note> cause_;
  const CourseRow* taken_ = nullptr;
  std::vector<Note> remarks_;
  RecipientTally recipients_;
};

AlertCourse::AlertCourse(std::string_view class_name, const std::optional<Instance>& instance)
    : impl_(std::make_unique<Impl>(WayOfClass(class_name), instance)) {}

AlertCourse::AlertCourse(AlertCourse&&) noexcept = default;
AlertCourse& AlertCourse::operator=(AlertCourse&&) noexcept = default;
AlertCourse::~AlertCourse() = default;

std::optional<std::string> AlertCourse::Take(std::string_view text) {
  return impl_->Take(text);
}

Verdict AlertCourse::Finish(AttemptEnd end, std::optional<std::int32_t> result) const {
  return impl_->Finish(end, result);
}

}  // namespace brantel::host
