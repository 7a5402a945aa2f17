#pragma once

#include <string>

namespace brantel {

// Numbers of the texts in resources/strings.def, where code names them.
namespace text_id {
inline constexpr unsigned kReceiveError = 106;
inline constexpr unsigned kSendingMail = 107;
inline constexpr unsigned kGatewayIsNoAddress = 108;
inline constexpr unsigned kSocketFailed = 109;
inline constexpr unsigned kConnectFailed = 110;
inline constexpr unsigned kAddSmtpMail = 111;
inline constexpr unsigned kEditSmtpMail = 112;
inline constexpr unsigned kAddSound = 113;
inline constexpr unsigned kEditSound = 114;
inline constexpr unsigned kAddWinPopup = 115;
inline constexpr unsigned kEditWinPopup = 116;
inline constexpr unsigned kAddLaunchProgram = 117;
inline constexpr unsigned kEditLaunchProgram = 118;
inline constexpr unsigned kLoadFailed = 300;
inline constexpr unsigned kUnhandledTrigger = 301;
inline constexpr unsigned kErrorLoading = 302;
inline constexpr unsigned kErrorSaving = 303;
inline constexpr unsigned kNameTaken = 304;
inline constexpr unsigned kNameTakenCaption = 305;
inline constexpr unsigned kNameMissing = 306;
inline constexpr unsigned kAddBeeper = 310;
inline constexpr unsigned kEditBeeper = 311;
inline constexpr unsigned kAddPager = 312;
inline constexpr unsigned kEditPager = 313;
inline constexpr unsigned kSmtpMailPage = 314;
inline constexpr unsigned kDefaultSmtpMail = 320;
inline constexpr unsigned kDefaultSound = 321;
inline constexpr unsigned kDefaultWinPopup = 322;
inline constexpr unsigned kDefaultLaunchProgram = 323;
inline constexpr unsigned kDefaultBeeper = 324;
inline constexpr unsigned kDefaultVoice = 325;
inline constexpr unsigned kFilenameMissing = 330;
inline constexpr unsigned kWorkingPathMissing = 331;
inline constexpr unsigned kBeeperNumberMissing = 332;
inline constexpr unsigned kDialingOptionsMissing = 333;
inline constexpr unsigned kUpCodeMissing = 334;
inline constexpr unsigned kDownCodeMissing = 335;
inline constexpr unsigned kTrapCodeMissing = 336;
inline constexpr unsigned kDisplayNameMissing = 337;
inline constexpr unsigned kPagerNumberMissing = 338;
inline constexpr unsigned kDestinationMissing = 339;
inline constexpr unsigned kMessageMissing = 340;
inline constexpr unsigned kPhoneMissing = 341;
inline constexpr unsigned kRecorderFailed = 350;
inline constexpr unsigned kDirectoryInvalid = 351;
inline constexpr unsigned kSelectDirectory = 352;
inline constexpr unsigned kWaveFiles = 353;
inline constexpr unsigned kProgramFiles = 354;
inline constexpr unsigned kAllFiles = 355;
inline constexpr unsigned kBeeperSettingsKey = 400;
inline constexpr unsigned kPortInUse = 410;
inline constexpr unsigned kOpenError = 411;
inline constexpr unsigned kGetControlError = 412;
inline constexpr unsigned kSetControlError = 413;
inline constexpr unsigned kSending = 414;
inline constexpr unsigned kWaitingForCompletion = 415;
inline constexpr unsigned kReturned = 416;
inline constexpr unsigned kWriteError = 417;
inline constexpr unsigned kReadError = 418;
inline constexpr unsigned kLookingForOk = 420;
inline constexpr unsigned kTryingAgainForOk = 421;
inline constexpr unsigned kNoOk = 422;
inline constexpr unsigned kEchoNotOff = 423;
inline constexpr unsigned kBusy = 424;
inline constexpr unsigned kNoCarrier = 425;
inline constexpr unsigned kUnknownResponse = 426;
inline constexpr unsigned kSendBeeperMessage = 440;
inline constexpr unsigned kBeepNumber = 441;
inline constexpr unsigned kModemString = 442;
inline constexpr unsigned kDialString = 443;
inline constexpr unsigned kCompleteMessage = 444;
inline constexpr unsigned kSendingMessage = 445;
inline constexpr unsigned kDelaying = 446;
inline constexpr unsigned kSuccess = 447;
inline constexpr unsigned kPrimaryProfile = 450;
inline constexpr unsigned kAlternateProfile = 451;
inline constexpr unsigned kBeeperPortSettings = 452;
inline constexpr unsigned kErrorSavingPortSettings = 453;
inline constexpr unsigned kPagerSettingsKey = 480;
inline constexpr unsigned kPagerPortSettings = 481;
inline constexpr unsigned kRecipientsLeftOut = 500;
inline constexpr unsigned kGatewayInvalid = 510;
inline constexpr unsigned kSenderInvalid = 511;
inline constexpr unsigned kRecipientsInvalid = 512;
inline constexpr unsigned kSendingPage = 600;
inline constexpr unsigned kNoPhoneNumber = 601;
inline constexpr unsigned kNoPagerId = 602;
inline constexpr unsigned kNoMessage = 603;
inline constexpr unsigned kTransmissionFailed = 604;
inline constexpr unsigned kGaveUp = 605;
inline constexpr unsigned kGotIdPrompt = 610;
inline constexpr unsigned kGotGoAhead = 611;
inline constexpr unsigned kNoDialtone = 622;
inline constexpr unsigned kNoAnswer = 623;
inline constexpr unsigned kUcpError = 624;
inline constexpr unsigned kTransmissionSucceeded = 625;
inline constexpr unsigned kNttSuccess = 630;
inline constexpr unsigned kDeviceVersion = 735;
inline constexpr unsigned kCapabilitiesFormat = 736;
inline constexpr unsigned kCapabilitiesRead = 737;
inline constexpr unsigned kGotDeviceState = 759;
inline constexpr unsigned kLineNotInitialized = 10001;
inline constexpr unsigned kCapabilitiesNotRead = 10014;
inline constexpr unsigned kNoSuitableDevice = 10022;
inline constexpr unsigned kNotAcknowledged = 10024;
inline constexpr unsigned kGoodExit = 10025;
inline constexpr unsigned kSecondMessageNotPlayed = 10026;
inline constexpr unsigned kFirstMessageNotPlayed = 10027;
inline constexpr unsigned kRepeatMessageNotPlayed = 10028;
inline constexpr unsigned kDigitsNotMonitored = 10029;
inline constexpr unsigned kWaveDeviceNotFound = 10030;
inline constexpr unsigned kCallNotPlaced = 10031;
inline constexpr unsigned kLineNotOpened = 10032;
inline constexpr unsigned kWaveFileNotOpened = 10081;
inline constexpr unsigned kNoWaveForm = 10082;
inline constexpr unsigned kNoFormatChunk = 10083;
inline constexpr unsigned kNoMemoryForFormat = 10084;
inline constexpr unsigned kFormatNotRead = 10085;
inline constexpr unsigned kNoDataChunk = 10086;
inline constexpr unsigned kDataChunkEmpty = 10087;
inline constexpr unsigned kNoMemoryForData = 10088;
inline constexpr unsigned kDataNotRead = 10089;
inline constexpr unsigned kNoMemoryForHeader = 10090;
inline constexpr unsigned kWaveDeviceNotOpened = 10091;
inline constexpr unsigned kHeaderNotPrepared = 10092;
inline constexpr unsigned kWaveNotWritten = 10093;
inline constexpr unsigned kAddVoice = 10109;
inline constexpr unsigned kEditVoice = 10110;
inline constexpr unsigned kFirstProtocol = 10111;
// The meanings of a centre's refusals stand behind this number, by rows from 1 on.
inline constexpr unsigned kUcpErrors = 10115;
inline constexpr unsigned kTimeoutSetting = 10149;
inline constexpr unsigned kSmtpMailKey = 10150;
}  // namespace text_id

// The text with this number. The module takes it from its string table resource, other programs
// from a compiled-in table; both are made from resources/strings.def. A number without a text gives
// "%u DEBUG - Unable to load string" with the number filled in, so that a log line is never lost.
std::string LoadText(unsigned id);

// What LoadText gives for a number without a text.
std::string LookupFailureText(unsigned id);

}  // namespace brantel
