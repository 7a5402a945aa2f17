#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

#include "beeper/beeper_description.h"
#include "host/checks/rule.h"
#include "host/checks/system_checks.h"
#include "host/checks/text_checks.h"
#include "launch_program/launch_program_description.h"
#include "pager/pager_description.h"
#include "smtp_mail/smtp_mail_description.h"
#include "sound/sound_description.h"
#include "voice/voice_description.h"
#include "win_popup/win_popup_description.h"

namespace brantel::host {
namespace {

using enum About;
using enum Severity;

constexpr const ClassDescription* kAll = nullptr;
// Breaks its rule by being empty.
constexpr bool (*kMissing)(const CheckedValue&) = nullptr;

constexpr std::size_t kMailTimeout = 0;

// A row a rule: name; class; about which field or setting; severity; how it is broken; what is
// wrong; what to do.
// clang-format off

// Of the codes that a Beeper's instance has for each kind of event.
constexpr auto CodeRules(std::size_t code, std::string_view nobody_can_tell) {
  return std::array{
    Rule{"beeper-code", &kBeeper, kField, code, kWarning, kMissing,
         nobody_can_tell, "give digits"},
    Rule{"beeper-code-command", &kBeeper, kField, code, kFailure, HasSemicolon,
         "has a semicolon, behind which the modem executes the rest", "take it out"},
    Rule{"beeper-code-characters", &kBeeper, kField, code, kWarning, HasUndialableCharacter,
         "has characters that modems do not dial", "write digits"},
  };
}

// Where the settings of a class have what its modem needs.
struct ModemSettings {
  const ClassDescription* notifier_class;
  std::size_t port;
  std::size_t rate;
  std::size_t modem_string;
};

// Of the classes that dial.
constexpr auto ModemRules(const ModemSettings& of, std::string_view unusual_rate) {
  return std::array{
    Rule{"port", of.notifier_class, kSetting, of.port, kFailure, NamesNoPort,
         "names no port", "write COM and its number, in capital letters"},
    Rule{"port-there", of.notifier_class, kSetting, of.port, kFailure, HasMissingPort,
         "is a port that this computer does not have",
         "notifyhost ports lists those that it has; notifyhost settings set changes it"},
    Rule{"port-open", of.notifier_class, kSetting, of.port, kFailure, HasPortThatDoesNotOpen,
         "is a port that cannot be opened and set up",
         "see which program holds it, and whether the rate is one of the port's", Reach::kOnline},
    Rule{"modem", of.notifier_class, kSetting, of.port, kFailure, HasModemThatDoesNotAnswer,
         "has no modem that answers AT with OK",
         "see whether the modem is on, and the port and rate are its own", Reach::kOnline},
    Rule{"rate", of.notifier_class, kSetting, of.rate, kWarning, IsNoRate,
         "does not begin with a number, and counts as 300", "write bits per second, such as 9600"},
    Rule{"rate-usual", of.notifier_class, kSetting, of.rate, kWarning, IsUnusualRate,
         unusual_rate, "write bits per second, such as 9600"},
    Rule{"modem-command", of.notifier_class, kSetting, of.modem_string, kFailure, IsNoCommand,
         "does not begin with AT, so that the modem ignores it",
         "take out what was stored: notifyhost settings reset"},
    Rule{"modem-results", of.notifier_class, kSetting, of.modem_string, kFailure, SilencesResults,
         "turns the modem's answers off or into numbers, and OK is waited for",
         "write Q0V1 in place of Q1 and V0"},
  };
}

constexpr std::array kOtherRules = {
    // Every class.
    Rule{"registered", kAll, kClass, 0, kFailure, IsNotRegistered,
         "is not registered",
         "run notifyhost register, or name the module by --module"},
    Rule{"registered-file", kAll, kClass, 0, kFailure, IsRegisteredForMissingFile,
         "is registered for a file that is not there",
         "run notifyhost register from where the module is now"},
    Rule{"registered-bitness", kAll, kClass, 0, kFailure, IsRegisteredForWrongBitness,
         "is registered for a file that is no program of as many bits as this host",
         "run notifyhost register, which registers a module that this host can load"},
    Rule{"registered-copy", kAll, kClass, 0, kWarning, IsRegisteredForAnotherCopy,
         "is registered for another copy of the module",
         "run notifyhost register if this copy is to be used; notifyhost status tells which it is"},
    Rule{"code-page", kAll, kField, kEveryPlace, kFailure, IsOutsideTheCodePage,
         "has characters that the system's code page lacks",
         "write it in characters of that code page"},
    Rule{"unknown-variable", kAll, kField, kEveryPlace, kWarning, HasUnknownVariable,
         "has a variable that neither send nor watch fills in by itself, but only send --set",
         "take %n for the device and %C for the event, %% for a percent sign"},
    Rule{"variable-stays", kAll, kField, kEveryPlace, kWarning, HasVariableThatStays,
         "has a variable, and variables are not filled in there",
         "write what it is to be"},
    Rule{"setting-code-page", kAll, kSetting, kEveryPlace, kFailure, IsOutsideTheCodePage,
         "has characters that the system's code page lacks",
         "write it in characters of that code page"},
    Rule{"setting-number", kAll, kSetting, kEveryPlace, kWarning, IsStoredAsNumber,
         "is stored as a number, of which only the lowest byte counts",
         "store it as a text: notifyhost settings set"},

    // SMTPMail.
    Rule{"mail-gateway", &kSMTPMail, kField, smtp_mail_field::kGateway, kFailure, kMissing,
         "is missing", "give the IPv4 address of a mail relay"},
    Rule{"mail-gateway-address", &kSMTPMail, kField, smtp_mail_field::kGateway, kFailure, IsNoAddress,
         "is no IPv4 address, and names are never looked up",
         "write the relay's address as four numbers, such as 192.0.2.25"},
    Rule{"mail-gateway-form", &kSMTPMail, kField, smtp_mail_field::kGateway, kWarning, IsOddAddress,
         "is read as another address than it looks like: zeros in front make numbers octal, and missing numbers count as 0",
         "write four decimal numbers without zeros in front"},
    Rule{"mail-gateway-greeting", &kSMTPMail, kField, smtp_mail_field::kGateway, kFailure,
         HasRelayThatDoesNotGreet,
         "is no relay that greets on port 25",
         "see whether the relay runs, and whether a firewall keeps this computer from port 25",
         Reach::kOnline},
    Rule{"mail-to", &kSMTPMail, kField, smtp_mail_field::kTo, kFailure, kMissing,
         "is missing", "give an address, or several with commas between"},
    Rule{"mail-to-length", &kSMTPMail, kField, smtp_mail_field::kTo, kFailure, IsLongerThan<511>,
         "is longer than 511 bytes, and addresses beyond get nothing",
         "make a second instance for them, or a list at the relay"},
    Rule{"mail-to-separator", &kSMTPMail, kField, smtp_mail_field::kTo, kWarning, HasSemicolon,
         "has a semicolon, and only commas separate addresses", "write commas"},
    Rule{"mail-to-empty", &kSMTPMail, kField, smtp_mail_field::kTo, kWarning, HasEmptyRecipient,
         "has commas without an address between", "take the needless commas out"},
    Rule{"mail-to-at", &kSMTPMail, kField, smtp_mail_field::kTo, kWarning, HasRecipientWithoutAtSign,
         "has an address without @, which relays may refuse", "write addresses as name@domain"},
    Rule{"mail-to-line", &kSMTPMail, kField, smtp_mail_field::kTo, kFailure, HasLineEnd,
         "has a line end, at which it ends", "write all addresses in one line"},
    Rule{"mail-from", &kSMTPMail, kField, smtp_mail_field::kFrom, kFailure, kMissing,
         "is missing", "give an address that the relay accepts as a sender"},
    Rule{"mail-from-at", &kSMTPMail, kField, smtp_mail_field::kFrom, kWarning, HasNoAtSign,
         "has no @, and relays may refuse it", "write it as name@domain"},
    Rule{"mail-from-line", &kSMTPMail, kField, smtp_mail_field::kFrom, kWarning, HasLineEnd,
         "has a line end, at which it ends", "write it in one line"},
    Rule{"mail-subject-line", &kSMTPMail, kField, smtp_mail_field::kSubject, kWarning, HasLineEnd,
         "has a line end, at which it ends", "write it in one line"},
    Rule{"mail-subject-length", &kSMTPMail, kField, smtp_mail_field::kSubject, kWarning,
         IsLongerThan<479>,
         "is longer than 479 bytes, so that what follows it can become headers", "shorten it"},
    Rule{"mail-message", &kSMTPMail, kField, smtp_mail_field::kMessage, kWarning, kMissing,
         "is missing, and the mail is empty", "write %C to have what happened in it"},
    Rule{"mail-message-full-stop", &kSMTPMail, kField, smtp_mail_field::kMessage, kFailure,
         HasLoneFullStop,
         "has a line of a lone full stop, which ends the mail: the relay takes the rest for commands",
         "put something else into that line"},
    Rule{"mail-message-line-end", &kSMTPMail, kField, smtp_mail_field::kMessage, kWarning,
         HasBareLineEnd,
         "has a line end that is not CR LF, which relays may refuse", "end each line with CR LF"},
    Rule{"mail-message-line-length", &kSMTPMail, kField, smtp_mail_field::kMessage, kWarning,
         HasLongLine,
         "has a line of more than 998 characters, which relays may refuse", "break the line"},
    Rule{"mail-timeout", &kSMTPMail, kSetting, kMailTimeout, kWarning, IsBelowATenthOfASecond,
         "is no number from 100 on, and 100 milliseconds are waited",
         "notifyhost settings reset SMTPMail Settings_Timeout"},
    Rule{"mail-timeout-long", &kSMTPMail, kSetting, kMailTimeout, kWarning, IsAboveAMinute,
         "has the host wait for more than a minute for each answer",
         "notifyhost settings reset SMTPMail Settings_Timeout"},

    // Sound.
    Rule{"sound-wave", &kSound, kField, sound_field::kWaveFilename, kFailure, kMissing,
         "is missing, and the system's default sound is played",
         "give the full path of a wave file"},
    Rule{"sound-wave-file", &kSound, kField, sound_field::kWaveFilename, kFailure, IsNoFile,
         "is not there, and the system's default sound is played in its place",
         "give the full path of a wave file"},
    Rule{"sound-wave-form", &kSound, kField, sound_field::kWaveFilename, kFailure, IsNoWave,
         "is no wave file", "convert it into one (RIFF, PCM)"},
    Rule{"sound-wave-relative", &kSound, kField, sound_field::kWaveFilename, kWarning, IsRelative,
         "is looked for where the host happens to be", "give the full path"},
    Rule{"sound-wave-remote", &kSound, kField, sound_field::kWaveFilename, kWarning,
         IsOnAnotherComputer,
         "is on another computer, which may be what is down, and is offered this account's credentials",
         "keep it on this computer"},
    Rule{"sound-device", &kSound, kClass, 0, kFailure, LacksSoundDevice,
         "finds no sound device", "connect one, or install its driver"},

    // WinPopup.
    Rule{"popup-destination", &kWinPopup, kField, win_popup_field::kDestination, kFailure, kMissing,
         "is missing", "give the name of a computer or user"},
    Rule{"popup-destination-length", &kWinPopup, kField, win_popup_field::kDestination, kWarning,
         IsLongerThan<15>,
         "is longer than the 15 characters of a message name", "give its NetBIOS name"},
    Rule{"popup-message", &kWinPopup, kField, win_popup_field::kMessage, kFailure, kMissing,
         "is missing", "write %C to have what happened in it"},
    Rule{"popup-message-length", &kWinPopup, kField, win_popup_field::kMessage, kWarning,
         IsLongerThan<1024>,
         "is longer than 1024 bytes, of which the rest is not sent", "shorten it"},
    Rule{"popup-library", &kWinPopup, kClass, 0, kFailure, LacksMessengerLibrary,
         "finds no function that sends messages in the network library, and alerts count as delivered",
         "alert in another way on this system"},
    Rule{"popup-service", &kWinPopup, kClass, 0, kFailure, LacksMessengerService,
         "finds no messenger service on this system",
         "alert in another way: systems since Windows Vista have none"},
    Rule{"popup-service-runs", &kWinPopup, kClass, 0, kFailure, HasStoppedMessenger,
         "finds the messenger service stopped", "net start messenger"},

    // LaunchProgram.
    Rule{"program", &kLaunchProgram, kField, launch_program_field::kProgramFilename, kFailure,
         kMissing, "is missing", "give the full path of a program"},
    Rule{"program-file", &kLaunchProgram, kField, launch_program_field::kProgramFilename, kFailure,
         StartsNothing, "names no program that is there", "give the full path of a program"},
    Rule{"program-other", &kLaunchProgram, kField, launch_program_field::kProgramFilename, kFailure,
         StartsAnotherProgram,
         "starts another program, whose name ends at one of the blanks",
         "put the path in quotation marks"},
    Rule{"program-blanks", &kLaunchProgram, kField, launch_program_field::kProgramFilename, kWarning,
         HasBlanksWithoutQuotes,
         "has blanks and no quotation marks: whoever puts a program where one of the blanks is has it started",
         "put the path in quotation marks, and arguments into program arguments"},
    Rule{"program-folder", &kLaunchProgram, kField, launch_program_field::kProgramFilename, kWarning,
         HasNoFolder,
         "has no folder, and is looked for along the path", "give the full path"},
    Rule{"program-working-path", &kLaunchProgram, kField, launch_program_field::kWorkingPath,
         kFailure, IsNoFolder, "is no folder that is there", "give the full path of a folder"},
    Rule{"program-working-path-missing", &kLaunchProgram, kField, launch_program_field::kWorkingPath,
         kWarning, kMissing, "is missing, and the program starts where the host happens to be",
         "give the full path of a folder"},
    Rule{"program-working-path-relative", &kLaunchProgram, kField,
         launch_program_field::kWorkingPath, kWarning, IsRelative,
         "is looked for where the host happens to be", "give the full path"},
    Rule{"program-batch", &kLaunchProgram, kField, launch_program_field::kProgramArguments, kWarning,
         FillsArgumentsOfBatchFile,
         "has a variable, and a batch file executes what stands in its arguments",
         "start a program in place of the batch file, or hand over no variable"},

    // Beeper.
    Rule{"beeper-number", &kBeeper, kField, beeper_field::kBeeperNumber, kFailure, kMissing,
         "is missing", "give the telephone number of the beeper"},
    Rule{"beeper-number-digits", &kBeeper, kField, beeper_field::kBeeperNumber, kFailure, HasNoDigit,
         "has no digit", "give the telephone number of the beeper"},
    Rule{"beeper-number-command", &kBeeper, kField, beeper_field::kBeeperNumber, kFailure,
         HasSemicolon,
         "has a semicolon, behind which the modem executes the rest", "take it out"},
    Rule{"beeper-number-characters", &kBeeper, kField, beeper_field::kBeeperNumber, kWarning,
         HasUndialableCharacter,
         "has characters that modems do not dial", "write digits, * # , and W alone"},
    Rule{"beeper-dialing-options", &kBeeper, kField, beeper_field::kDialingOptions, kWarning,
         kMissing, "is missing, and the dialog does not save the instance without it",
         "write ATDT%s,,,,%s#; nothing dials it"},
    Rule{"beeper-dial-command", &kBeeper, kSetting, beeper_setting::kDialString, kFailure,
         IsNoCommand, "does not begin with AT, so that the modem ignores it",
         "notifyhost settings reset Beeper Settings_DialString"},
    Rule{"beeper-dial-number", &kBeeper, kSetting, beeper_setting::kDialString, kFailure,
         DialsNoNumber, "has no %s, so that no number is dialled",
         "notifyhost settings reset Beeper Settings_DialString"},
    Rule{"beeper-dial-message", &kBeeper, kSetting, beeper_setting::kDialString, kWarning,
         DialsNoMessage, "has no second %s, so that no message is keyed in",
         "notifyhost settings reset Beeper Settings_DialString"},
    Rule{"beeper-dial-directive", &kBeeper, kSetting, beeper_setting::kDialString, kWarning,
         HasOtherDirective, "has a percent sign that begins no %s", "write %% for a percent sign"},
    Rule{"beeper-timeout", &kBeeper, kSetting, beeper_setting::kTimeout, kWarning, IsNoNumber,
         "is no number of milliseconds, and counts as 0",
         "notifyhost settings reset Beeper Settings_Timeout"},
    Rule{"beeper-timeout-long", &kBeeper, kSetting, beeper_setting::kTimeout, kWarning,
         IsAboveAMinute, "holds the line for more than a minute",
         "write milliseconds, such as 5000"},

    // Pager.
    Rule{"pager-number", &kPager, kField, pager_field::kPagerNumber, kFailure, kMissing,
         "is missing", "give the telephone number of the paging centre"},
    Rule{"pager-number-length", &kPager, kField, pager_field::kPagerNumber, kFailure,
         IsShorterThan<3>, "is shorter than 3 characters, which is refused",
         "give the telephone number of the paging centre"},
    Rule{"pager-number-command", &kPager, kField, pager_field::kPagerNumber, kFailure, HasSemicolon,
         "has a semicolon, behind which the modem executes the rest", "take it out"},
    Rule{"pager-number-characters", &kPager, kField, pager_field::kPagerNumber, kWarning,
         HasUndialableCharacter,
         "has characters that modems do not dial", "write digits, * # , and W alone"},
    Rule{"pager-id", &kPager, kField, pager_field::kPagerId, kFailure, kMissing,
         "is missing", "give the number of the pager or telephone"},
    Rule{"pager-id-length", &kPager, kField, pager_field::kPagerId, kFailure, IsShorterThan<3>,
         "is shorter than 3 characters, which is refused",
         "put zeros in front, as far as the centre takes them"},
    Rule{"pager-id-digits", &kPager, kField, pager_field::kPagerId, kFailure, HasNoDigit,
         "has no digit, and nothing else of it is sent", "give the number of the pager or telephone"},
    Rule{"pager-message", &kPager, kField, pager_field::kMessage, kFailure, kMissing,
         "is missing, which is refused", "write %C to have what happened in it"},
    Rule{"pager-message-length", &kPager, kField, pager_field::kMessage, kWarning, IsTooLongAPage,
         "is longer than the protocol sends of it: TAP 250 characters with the pager ID, SMS-TAP 160, UCP-SMS 80, NTT 100",
         "shorten it"},
    Rule{"pager-message-characters", &kPager, kField, pager_field::kMessage, kWarning,
         LosesCharactersOfPage,
         "has characters other than printable ASCII, which TAP and SMS-TAP leave out",
         "write it without them"},
    Rule{"pager-protocol-missing", &kPager, kField, pager_field::kProtocol, kFailure, kMissing,
         "is missing, and the page goes out by TAP", "write TAP, SMS-TAP, NTT or UCP-SMS"},
    Rule{"pager-protocol", &kPager, kField, pager_field::kProtocol, kFailure, IsNoProtocol,
         "is no protocol, and the page goes out by TAP, which other centres do not answer",
         "write TAP, SMS-TAP, NTT or UCP-SMS, in capital letters"},
    Rule{"pager-password-length", &kPager, kField, pager_field::kTerminalPassword, kWarning,
         IsTooLongAPassword, "is longer than the 4 characters that NTT sends of it", "shorten it"},
    Rule{"pager-password-unused", &kPager, kField, pager_field::kTerminalPassword, kWarning,
         IsUnusedPassword, "is never sent by UCP-SMS", "leave it empty"},
    Rule{"pager-modem-echo", &kPager, kSetting, pager_setting::kModemString, kWarning, LeavesEchoOn,
         "does not turn the echo off, and a modem that echoes is refused", "put E0 into it"},
    Rule{"pager-framing", &kPager, kSetting, pager_setting::k8N1, kWarning, IsNoYesOrNo,
         "is neither 0 nor 1, and counts as 0", "write 1 for 8 data bits, 0 for 7"},
    Rule{"pager-framing-japanese", &kPager, kSetting, pager_setting::k8N1, kWarning,
         IsSevenBitsForJapanese,
         "leaves 7 data bits, which break NTT's Japanese characters", "write 1"},

    // Voice.
    Rule{"voice-number", &kVoice, kField, voice_field::kPhoneNumber, kFailure, kMissing,
         "is missing", "give the telephone number of a person"},
    Rule{"voice-number-digits", &kVoice, kField, voice_field::kPhoneNumber, kFailure, HasNoDigit,
         "has no digit", "give the telephone number of a person"},
    Rule{"voice-number-length", &kVoice, kField, voice_field::kPhoneNumber, kFailure,
         IsLongerThan<63>, "is longer than the 63 characters that are dialled", "shorten it"},
    Rule{"voice-button", &kVoice, kField, voice_field::kButton, kFailure, IsNoKey,
         "is no key, so that nobody can acknowledge the call",
         "write 0 to 9, 10 for *, 11 for #, or 99 for any key"},
    Rule{"voice-count", &kVoice, kField, voice_field::kCount, kFailure, IsNegative,
         "is negative, so that nothing is played and nobody can acknowledge the call", "write 0 or more"},
    Rule{"voice-repeat-missing", &kVoice, kField, voice_field::kRepeatMessage, kFailure, kMissing,
         "is missing, so that the call fails",
         "give the full path of a wave file that asks for the key"},
    Rule{"voice-repeat-file", &kVoice, kField, voice_field::kRepeatMessage, kFailure, IsNoFile,
         "is not there, so that the call fails", "give the full path of a wave file"},
    Rule{"voice-repeat-form", &kVoice, kField, voice_field::kRepeatMessage, kFailure, IsNoWave,
         "is no wave file", "convert it into one (RIFF, PCM)"},
    Rule{"voice-repeat-relative", &kVoice, kField, voice_field::kRepeatMessage, kWarning, IsRelative,
         "is looked for where the host happens to be", "give the full path"},
    Rule{"voice-item-down-file", &kVoice, kField, voice_field::kItemDown, kFailure, IsNoFile,
         "is not there, so that the call fails", "give the full path of a wave file"},
    Rule{"voice-item-down-form", &kVoice, kField, voice_field::kItemDown, kFailure, IsNoWave,
         "is no wave file", "convert it into one (RIFF, PCM)"},
    Rule{"voice-item-up-file", &kVoice, kField, voice_field::kItemUp, kFailure, IsNoFile,
         "is not there, so that the call fails", "give the full path of a wave file"},
    Rule{"voice-item-up-form", &kVoice, kField, voice_field::kItemUp, kFailure, IsNoWave,
         "is no wave file", "convert it into one (RIFF, PCM)"},
    Rule{"voice-service-down-file", &kVoice, kField, voice_field::kServiceDown, kFailure, IsNoFile,
         "is not there, so that the call fails", "give the full path of a wave file"},
    Rule{"voice-service-down-form", &kVoice, kField, voice_field::kServiceDown, kFailure, IsNoWave,
         "is no wave file", "convert it into one (RIFF, PCM)"},
    Rule{"voice-service-up-file", &kVoice, kField, voice_field::kServiceUp, kFailure, IsNoFile,
         "is not there, so that the call fails", "give the full path of a wave file"},
    Rule{"voice-service-up-form", &kVoice, kField, voice_field::kServiceUp, kFailure, IsNoWave,
         "is no wave file", "convert it into one (RIFF, PCM)"},
    Rule{"voice-telephony", &kVoice, kClass, 0, kFailure, LacksTelephony,
         "finds no telephony on this system", "install the telephony service and a driver"},
    Rule{"voice-line", &kVoice, kClass, 0, kFailure, LacksVoiceLine,
         "finds no line for automated voice", "connect a voice modem, and install its driver"},
    Rule{"voice-line-opens", &kVoice, kClass, 0, kFailure, HasVoiceLineThatDoesNotOpen,
         "cannot open its line", "see which program holds the line", Reach::kOnline},
};
// clang-format on

template <std::size_t... counts>
constexpr auto Joined(const std::array<Rule, counts>&... lists) {
  std::array<Rule, (counts + ...)> joined{};
  auto end = joined.begin();
  ((end = std::ranges::copy(lists, end).out), ...);
  return joined;
}

constexpr auto kRules = Joined(
    kOtherRules, CodeRules(beeper_field::kUpCode, "is missing, and nobody can tell what came up"),
    CodeRules(beeper_field::kDownCode, "is missing, and nobody can tell what went down"),
    CodeRules(beeper_field::kTrapCode, "is missing, and nobody can tell that a trap arrived"),
    ModemRules(
        {&kBeeper, beeper_setting::kComPort, beeper_setting::kBaud, beeper_setting::kModemString},
        "is no usual rate; below 300 it counts as 1200"),
    ModemRules(
        {&kPager, pager_setting::kComPort, pager_setting::kBaud, pager_setting::kModemString},
        "is no usual rate; below 300 it counts as 300"));

}  // namespace

std::span<const Rule> Rules() {
  return kRules;
}

}  // namespace brantel::host
