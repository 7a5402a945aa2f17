#include "host/preview/preview.h"

#include <algorithm>
#include <array>
#include <span>
#include <string>
#include <string_view>

#include "beeper/beeper.h"
#include "beeper/beeper_description.h"
#include "host/preview/page_words.h"
#include "host/preview/paper_line.h"
#include "host/preview/paper_messenger.h"
#include "host/preview/paper_player.h"
#include "host/preview/paper_relay.h"
#include "host/preview/paper_starter.h"
#include "host/preview/paper_telephone.h"
#include "host/preview/rehearsal.h"
#include "launch_program/launch_program.h"
#include "launch_program/launch_program_description.h"
#include "pager/pager.h"
#include "pager/pager_description.h"
#include "pager/pager_protocol.h"
#include "pager/tap/tap_session.h"
#include "smtp_mail/smtp_mail.h"
#include "smtp_mail/smtp_mail_description.h"
#include "sound/sound.h"
#include "sound/sound_description.h"
#include "telephone/line_session.h"
#include "telephone/memory_blocks.h"
#include "voice/voice.h"
#include "voice/voice_description.h"
#include "voice/voice_messages.h"
#include "win_popup/win_popup.h"
#include "win_popup/win_popup_description.h"

namespace brantel::host {
namespace {

constexpr std::string_view kOkAnswer = "\r\nOK\r\n";
constexpr std::string_view kConnectAnswer = "\r\nCONNECT\r\n";

constexpr PaperStep kInitialisation = {"modem initialisation", kOkAnswer};
constexpr PaperStep kDialling = {"dial command", kConnectAnswer};
constexpr PaperStep kEscape = {"escape", kOkAnswer};
constexpr PaperStep kHangUp = {"hang-up", kOkAnswer};
constexpr std::string_view kPage = "page";

// The modem says nothing of the call before the hang-up.
constexpr std::array kBeeperSteps = {kInitialisation, PaperStep{kDialling.what, ""}, kEscape,
                                     kHangUp};

constexpr std::array kTapSteps = {kInitialisation,
                                  kDialling,
                                  PaperStep{"wake-up", "ID="},
                                  PaperStep{"log-in", "\x06\r\x1B[p\r"},
                                  PaperStep{kPage, "\x06\r"},
                                  PaperStep{"end of transmission", "\x1B\x04\r"},
                                  kEscape,
                                  kHangUp};

constexpr std::array kNttSteps = {
    kInitialisation, kDialling, PaperStep{"wake-up", "READY\r\n"}, PaperStep{kPage, "28\r\n"},
    kEscape,         kHangUp};

constexpr std::array kUcpSteps = {PaperStep{"attention", kOkAnswer},
                                  kInitialisation,
                                  kDialling,
                                  PaperStep{kPage,
                                            "\x02"
                                            "00/00019/R/02/A//69\x03"},
                                  kEscape,
                                  kHangUp};

DeliveryTime PreviewBeeper(Rehearsal& rehearsal) {
  PaperLine line(kBeeperSteps, rehearsal.clock(), rehearsal.parts());
  Beeper beeper(rehearsal.sources().files, rehearsal.settings(), line, rehearsal.clock());
  rehearsal.Deliver(beeper);
  rehearsal.Explain(kDialling.what, DialWords);
  return TimeOfBeep(rehearsal.clock().passed());
}

// How a page goes out by one protocol.
struct PageCourse {
  std::span<const PaperStep> steps;
  std::string_view most_time;
  // What is to be said of the page.
  std::string (*words)(std::string_view page, const Rehearsal& rehearsal);
};

template <const TapVariant& kVariant>
std::string WordsOfTapPage(std::string_view page, const Rehearsal& rehearsal) {
  return TapWords(page, rehearsal.instance().text(pager_field::kPagerId), rehearsal.message(),
                  kVariant.block);
}

std::string WordsOfUcpPage(std::string_view page, const Rehearsal& rehearsal) {
  return UcpWords(page, rehearsal.message());
}

std::string WordsOfNttPage(std::string_view /*page*/, const Rehearsal& rehearsal) {
  return NttWords(rehearsal.message());
}

PageCourse CourseBy(PagerProtocol protocol) {
  switch (protocol) {
    case PagerProtocol::kNtt:
      return {kNttSteps, kMostOfNtt, WordsOfNttPage};
    case PagerProtocol::kUcpSms:
      return {kUcpSteps, kMostOfUcp, WordsOfUcpPage};
    case PagerProtocol::kSmsTap:
      return {kTapSteps, kMostOfSmsTap, WordsOfTapPage<kSmsTap>};
    default:
      return {kTapSteps, kMostOfTap, WordsOfTapPage<kTap>};
  }
}

DeliveryTime PreviewPager(Rehearsal& rehearsal) {
  const PageCourse course =
      CourseBy(ProtocolNamed(rehearsal.instance().text(pager_field::kProtocol)));
  PaperLine line(course.steps, rehearsal.clock(), rehearsal.parts());
  UcpTransactionCounter transactions = 0;
  Pager pager(rehearsal.sources().files, rehearsal.settings(), line, rehearsal.clock(),
              transactions);
  rehearsal.Deliver(pager);
  rehearsal.Explain(kPage, [&](std::string_view page) { return course.words(page, rehearsal); });
  return TimeOfPage(rehearsal.clock().passed(), course.most_time);
}

DeliveryTime PreviewSMTPMail(Rehearsal& rehearsal) {
  const PreviewSources& sources = rehearsal.sources();
  PaperRelay relay(sources.mail_network, rehearsal.clock(), rehearsal.parts());
  SmtpState state;
  SmtpMail mail(sources.files, rehearsal.settings(), sources.sockets,
                {.network = relay,
                 .environment = sources.mail_environment,
                 .machine_name = sources.machine_name,
                 .state = state});
  rehearsal.Deliver(mail);
  return TimeOfMail(rehearsal.clock().passed(), relay.replies(), relay.timeout());
}

// Of the buffer for a message of so many characters; what the text does not fill of it is zero.
std::string PopupWords(std::string_view buffer, std::size_t characters) {
  constexpr std::size_t kCharacterSize = 2;
  const std::size_t last = buffer.find_last_not_of('\0');
  const std::size_t sent = last == std::string_view::npos ? 0 : last / kCharacterSize + 1;
  if (sent >= characters) return {};
  return "cut at " + std::to_string(sent) + " characters: " + std::to_string(characters - sent) +
         " characters left out";
}

DeliveryTime PreviewWinPopup(Rehearsal& rehearsal) {
  const PreviewSources& sources = rehearsal.sources();
  PaperMessenger messenger(sources.texts, rehearsal.parts());
  WinPopup popup(sources.files, sources.sockets, messenger,
                 {.machine_name = sources.machine_name, .code_page = sources.code_page});
  rehearsal.Deliver(popup);
  rehearsal.Explain("pop-up", [&](std::string_view buffer) {
    return PopupWords(buffer, sources.code_page.ToUtf16(rehearsal.message()).size());
  });
  return TimeOfPopup(rehearsal.clock().passed());
}

DeliveryTime PreviewSound(Rehearsal& rehearsal) {
  PaperPlayer player(rehearsal.waves(), rehearsal.clock(), rehearsal.parts());
  Sound sound(rehearsal.sources().files, player);
  rehearsal.Deliver(sound);
  return TimeOfSound(rehearsal.clock().passed());
}

DeliveryTime PreviewLaunchProgram(Rehearsal& rehearsal) {
  PaperStarter starter(rehearsal.parts());
  LaunchProgram program(rehearsal.sources().files, starter);
  rehearsal.Deliver(program);
  return TimeOfProgram(rehearsal.clock().passed());
}

std::string KeyName(std::int32_t button) {
  switch (button) {
    case kAnyButton:
      return "a key";
    case kStarButton:
      return "the key *";
    case kHashButton:
      return "the key #";
    default:
      return "the key " + std::to_string(button);
  }
}

std::string RepeatWords(const Instance& instance) {
  const std::int64_t times = std::int64_t{instance.integer(voice_field::kCount)} + 1;
  return "until " + KeyName(instance.integer(voice_field::kButton)) + " is pressed, " +
         std::to_string(times) + (times == 1 ? " time" : " times") + " at most";
}

// Gives the sounds of a call, which come in a fixed order, the names of what they are for.
void TellMessagesApart(Rehearsal& rehearsal) {
  const std::uint32_t trigger_word = rehearsal.alert().event.trigger_word.value_or(0);
  const bool has_event_sound = !rehearsal.instance().text(EventField(trigger_word)).empty();
  const bool event_is_first = has_event_sound && EventComesFirst(trigger_word);
  const std::array<std::string_view, 3> names = {
      "repeat message", event_is_first ? "message for the event" : "message for the device",
      event_is_first ? "message for the device" : "message for the event"};
  std::size_t heard = 0;
  for (PreviewPart& part : rehearsal.parts()) {
    if (part.what != kMessage || heard == names.size()) continue;
    part.what = names.at(heard);
    if (heard == 0) AddWords(part, RepeatWords(rehearsal.instance()));
    ++heard;
  }
}

DeliveryTime PreviewVoice(Rehearsal& rehearsal) {
  const Instance& instance = rehearsal.instance();
  PreviewParts& parts = rehearsal.parts();
  PaperWaves waves(rehearsal.waves(), parts);
  PaperWaveOutput output(rehearsal.clock(), parts);
  PaperTelephone telephone(instance.integer(voice_field::kButton), output, parts);
  SystemMemoryBlocks memory;
  const VoiceSystem system = {.telephony = telephone,
                              .riff_files = waves,
                              .wave_output = output,
                              .message_pump = telephone,
                              .clock = rehearsal.clock(),
                              .memory = memory,
                              .code_page = rehearsal.sources().code_page};
  VoiceState state;
  Voice voice(rehearsal.sources().files, system, state);
  try {
    rehearsal.Deliver(voice);
  } catch (const CallWithoutEnd&) {
    rehearsal.GiveUp("No telephone has the key that acknowledges the call.\r\n");
  }
  TellMessagesApart(rehearsal);
  return TimeOfCall(rehearsal.clock().passed(), instance.integer(voice_field::kCount));
}

struct ClassPreview {
  const ClassDescription& notifier_class;
  DeliveryTime (*preview)(Rehearsal& rehearsal);
};

#define NOTIFIER_CLASS(name, folder) ClassPreview{k##name, Preview##name},
constexpr std::array kClassPreviews = {
#include "module/notifier_classes.def"
};
#undef NOTIFIER_CLASS

}  // namespace

Preview PreviewAlert(const PreviewSources& sources, const PreviewedAlert& alert) {
  const auto* const found =
      std::ranges::find_if(kClassPreviews, [&](const ClassPreview& candidate) {
        return &candidate.notifier_class == &alert.notifier_class;
      });
  Rehearsal rehearsal(sources, alert);
  return rehearsal.Finish(found->preview(rehearsal));
}

}  // namespace brantel::host
