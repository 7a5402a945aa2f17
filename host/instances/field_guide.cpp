#include "host/instances/field_guide.h"

#include <algorithm>
#include <array>

#include "beeper/beeper_description.h"
#include "launch_program/launch_program_description.h"
#include "pager/pager_description.h"
#include "smtp_mail/smtp_mail_description.h"
#include "sound/sound_description.h"
#include "voice/voice_description.h"
#include "win_popup/win_popup_description.h"

namespace brantel::host {
namespace {

using enum Need;
using enum Filling;

constexpr std::array<std::string_view, 4> kProtocolNames = {"TAP", "SMS-TAP", "NTT", "UCP-SMS"};

// clang-format off
constexpr std::array kGuides = {
    FieldGuide{&kSMTPMail, smtp_mail_field::kGateway, kNeeded, kAsItIs,
               "IPv4 address, such as 192.0.2.25", "none",
               "the relay that takes the mail, on port 25"},
    FieldGuide{&kSMTPMail, smtp_mail_field::kTo, kNeeded, kAsItIs,
               "addresses with commas between, at most 511 bytes", "none",
               "who gets the mail"},
    FieldGuide{&kSMTPMail, smtp_mail_field::kFrom, kNeeded, kFilledIn,
               "address", "none",
               "who it comes from; %s stands for this computer's name"},
    FieldGuide{&kSMTPMail, smtp_mail_field::kSubject, kOptional, kFilledIn,
               "one line", "the message's first line",
               "the subject"},
    FieldGuide{&kSMTPMail, smtp_mail_field::kMessage, kOptional, kFilledIn,
               "lines that end with CR LF, none of them a lone full stop", "an empty mail",
               "the text"},

    FieldGuide{&kSound, sound_field::kWaveFilename, kNeeded, kAsItIs,
               "full path of a wave file", "none",
               "what is played"},
    FieldGuide{&kSound, sound_field::kContinuousPlay, kOptional, kAsItIs,
               "0 once, 1 over and over", "0",
               "how often it is played"},

    FieldGuide{&kWinPopup, win_popup_field::kDestination, kNeeded, kAsItIs,
               "name of a computer, user or domain", "none",
               "where the message pops up"},
    FieldGuide{&kWinPopup, win_popup_field::kMessage, kNeeded, kFilledIn,
               "text, of which 1024 characters are sent", "none",
               "the message"},

    FieldGuide{&kLaunchProgram, launch_program_field::kProgramFilename, kNeeded, kAsItIs,
               "full path, in quotation marks where it has blanks", "none",
               "the program that is started"},
    FieldGuide{&kLaunchProgram, launch_program_field::kWorkingPath, kOptional, kAsItIs,
               "full path of a folder", "the host's current one",
               "the folder in which it is started"},
    FieldGuide{&kLaunchProgram, launch_program_field::kProgramArguments, kOptional, kFilledIn,
               "text", "none",
               "its arguments"},

    FieldGuide{&kBeeper, beeper_field::kBeeperNumber, kNeeded, kAsItIs,
               "digits, * # , W and what else the modem dials", "none",
               "the telephone number of the beeper"},
    FieldGuide{&kBeeper, beeper_field::kDialingOptions, kOptional, kAsItIs,
               "text", "none",
               "kept for the dialog, which asks for it; nothing dials it"},
    FieldGuide{&kBeeper, beeper_field::kUpCode, kNeeded, kAsItIs,
               "digits", "no code",
               "keyed in when something came up"},
    FieldGuide{&kBeeper, beeper_field::kDownCode, kNeeded, kAsItIs,
               "digits", "no code",
               "keyed in when something went down"},
    FieldGuide{&kBeeper, beeper_field::kTrapCode, kNeeded, kAsItIs,
               "digits", "no code",
               "keyed in when a trap arrived"},
    FieldGuide{&kBeeper, beeper_field::kReportMessage, kOptional, kFilledIn,
               "digits", "nothing",
               "keyed in where there is no event"},
    FieldGuide{&kBeeper, beeper_field::kSettingsProfile, kOptional, kAsItIs,
               "0 to 10", "0",
               "which profile of port and modem it uses"},

    FieldGuide{&kPager, pager_field::kPagerNumber, kNeeded, kAsItIs,
               "at least 3 characters of a telephone number", "none",
               "the telephone number of the paging centre"},
    FieldGuide{&kPager, pager_field::kTerminalPassword, kOptional, kAsItIs,
               "text; by NTT 4 characters", "no password",
               "by which TAP, SMS-TAP and NTT log in",
               Secrecy::kSecret},
    FieldGuide{&kPager, pager_field::kPagerId, kNeeded, kAsItIs,
               "at least 3 characters, of which the digits count", "none",
               "whom the page is for"},
    FieldGuide{&kPager, pager_field::kMessage, kNeeded, kFilledIn,
               "text", "none",
               "the page"},
    FieldGuide{&kPager, pager_field::kProtocol, kNeeded, kAsItIs,
               "TAP, SMS-TAP, NTT or UCP-SMS", "TAP",
               "what the paging centre speaks"},
    FieldGuide{&kPager, pager_field::kSettingsProfile, kOptional, kAsItIs,
               "0 to 10", "0",
               "which profile of port and modem it uses"},

    FieldGuide{&kVoice, voice_field::kPhoneNumber, kNeeded, kAsItIs,
               "telephone number of at most 63 characters", "none",
               "whom the line calls"},
    FieldGuide{&kVoice, voice_field::kRepeatMessage, kNeeded, kAsItIs,
               "full path of a wave file", "none",
               "what is played until a key is pressed"},
    FieldGuide{&kVoice, voice_field::kCount, kOptional, kAsItIs,
               "0 and above", "0",
               "how often that is played beside the first time"},
    FieldGuide{&kVoice, voice_field::kButton, kOptional, kAsItIs,
               "0 to 9, 10 for *, 11 for #, 99 for any", "0",
               "the key that acknowledges the alert"},
    FieldGuide{&kVoice, voice_field::kItemDown, kOptional, kAsItIs,
               "full path of a wave file", "nothing",
               "played when a device went down, or a trap arrived"},
    FieldGuide{&kVoice, voice_field::kItemUp, kOptional, kAsItIs,
               "full path of a wave file", "nothing",
               "played when a device came up"},
    FieldGuide{&kVoice, voice_field::kServiceDown, kOptional, kAsItIs,
               "full path of a wave file", "nothing",
               "played when a service went down"},
    FieldGuide{&kVoice, voice_field::kServiceUp, kOptional, kAsItIs,
               "full path of a wave file", "nothing",
               "played when a service came up"},
};
// clang-format on

}  // namespace

std::span<const FieldGuide> FieldGuides() {
  return kGuides;
}

const FieldGuide& GuideOf(const ClassDescription& notifier_class, std::size_t field) {
  return *std::ranges::find_if(kGuides, [&](const FieldGuide& guide) {
    return guide.notifier_class == &notifier_class && guide.field == field;
  });
}

std::span<const std::string_view> PagerProtocolNames() {
  return kProtocolNames;
}

}  // namespace brantel::host
