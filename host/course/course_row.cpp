#include "host/course/course_row.h"

#include <algorithm>
#include <array>

#include "host/course/log_texts.h"

namespace brantel::host {
namespace {

constexpr Ways kMail = Way::kSmtpMail;
constexpr Ways kSound = Way::kSound;
constexpr Ways kPopup = Way::kWinPopup;
constexpr Ways kProgram = Way::kLaunchProgram;
constexpr Ways kBeeper = Way::kBeeper;
constexpr Ways kPlainTap = Way::kTap;
constexpr Ways kSmsTap = Way::kSmsTap;
constexpr Ways kUcp = Way::kUcp;
constexpr Ways kNtt = Way::kNtt;
constexpr Ways kVoice = Way::kVoice;
constexpr Ways kTaps = kPlainTap | kSmsTap;
constexpr Ways kPagers = kTaps | kUcp | kNtt;
constexpr Ways kModems = kBeeper | kPagers;
constexpr Ways kAll = Ways::All();

constexpr Stages kEverywhere = Stages::All();
constexpr Stages kOutsideText = kEverywhere - Stage::kText;
constexpr Stages kBeforeEnding = kOutsideText - Stage::kEnding;
constexpr Stages kOpening = Stages(Stage::kBeginning) | Stage::kPort;
constexpr Stages kInModem = Stage::kModem;
constexpr Stages kInDialling = Stage::kDialling;
constexpr Stages kInPrompt = Stage::kPrompt;
constexpr Stages kInLogIn = Stage::kLogIn;
constexpr Stages kInPage = Stage::kPage;
constexpr Stages kInRelay = Stage::kRelay;
constexpr Stages kInHello = Stage::kHello;
constexpr Stages kInSender = Stage::kSender;
constexpr Stages kInRecipient = Stage::kRecipient;
constexpr Stages kInData = Stage::kData;
constexpr Stages kInText = Stage::kText;
constexpr Stages kInTextEnd = Stage::kTextEnd;
constexpr Stages kInTalk = Stage::kTalk;
constexpr Stages kInEnding = Stage::kEnding;

constexpr std::string_view kLineEnds = "\r\n";

// The first line of a text that has line ends before and behind it.
constexpr std::string_view FirstLine(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(kLineEnds), text.size()));
  return text.substr(0, text.find_first_of(kLineEnds));
}

// What of a text stands before the first thing that is formatted into it.
constexpr std::string_view Fixed(std::string_view text) {
  return FirstLine(text.substr(0, text.find('%')));
}

// Signs.

constexpr Sign Line(std::string_view text, Stages within = kOutsideText) {
  return {Speaker::kModule, Match::kAll, FirstLine(text), within};
}
constexpr Sign LineStart(std::string_view text, Stages within = kOutsideText) {
  return {Speaker::kModule, Match::kStart, Fixed(text), within};
}
constexpr Sign LineEnd(std::string_view text) {
  return {Speaker::kModule, Match::kEnd, FirstLine(text), kOutsideText};
}
constexpr Sign Open(std::string_view text) {
  return {Speaker::kModule, Match::kOpen, text, kOutsideText};
}
constexpr Sign AnyLine(Stages within) {
  return {Speaker::kModule, Match::kAnything, {}, within};
}

constexpr Sign Sends(std::string_view start, Stages within = kEverywhere) {
  return {Speaker::kSending, Match::kStart, start, within};
}
constexpr Sign SendsWithin(std::string_view text) {
  return {Speaker::kSending, Match::kWithin, text, kEverywhere};
}

constexpr Sign Answer(std::string_view words, Stages within) {
  return {Speaker::kModem, Match::kWithin, words, within};
}
constexpr Sign AnswerStart(std::string_view words, Stages within) {
  return {Speaker::kModem, Match::kStart, words, within};
}
constexpr Sign Silence(Stages within) {
  return {Speaker::kModem, Match::kAll, {}, within};
}
constexpr Sign AnyAnswer(Stages within) {
  return {Speaker::kModem, Match::kAnything, {}, within};
}

constexpr Sign Reply(std::string_view code, Stages within) {
  return {Speaker::kRelay, Match::kStart, code, within};
}
constexpr Sign AnyReply(Stages within) {
  return {Speaker::kRelay, Match::kAnything, {}, within};
}

constexpr Sign NoReply(Stages within) {
  return {Speaker::kNobody, Match::kAnything, {}, within};
}

constexpr Sign Success(std::string_view result, Stages within = kEverywhere) {
  return {Speaker::kSuccess, Match::kAll, result, within};
}
constexpr Sign AnySuccess() {
  return {Speaker::kSuccess, Match::kAnything, {}, kEverywhere};
}
constexpr Sign Failure(std::string_view result, Stages within = kEverywhere) {
  return {Speaker::kFailure, Match::kAll, result, within};
}
constexpr Sign AnyFailure() {
  return {Speaker::kFailure, Match::kAnything, {}, kEverywhere};
}

// Rows.

constexpr CourseRow Begins(Ways ways, const Sign& sign, Stage stage, std::string_view phase,
                           std::string_view words) {
  return {.ways = ways, .sign = sign, .words = words, .begins = stage, .phase = phase};
}
constexpr CourseRow Goes(Ways ways, const Sign& sign, std::string_view phase,
                         std::string_view words) {
  return {.ways = ways, .sign = sign, .words = words, .phase = phase};
}
constexpr CourseRow Tells(Ways ways, const Sign& sign, std::string_view words) {
  return {.ways = ways, .sign = sign, .words = words};
}

template <Bearing kBearing>
struct Bears {
  constexpr CourseRow operator()(Ways ways, const Sign& sign, std::string_view words,
                                 std::string_view advice = {}) const {
    return {.ways = ways, .sign = sign, .bearing = kBearing, .words = words, .advice = advice};
  }
};
constexpr Bears<Bearing::kRefusal> Refuses;
constexpr Bears<Bearing::kTrouble> Troubles;
constexpr Bears<Bearing::kHint> Hints;
constexpr Bears<Bearing::kCause> Causes;
constexpr Bears<Bearing::kTaken> Takes;
constexpr Bears<Bearing::kRemark> Remarks;
constexpr Bears<Bearing::kAccepted> Accepts;

// What to do where several signs ask for the same.
constexpr std::string_view kSeeModem =
    "see that the modem is switched on and connected to that port; notifyhost doctor --online asks "
    "it";
constexpr std::string_view kSeeNumber =
    "call the number by telephone and listen whether a modem answers";
constexpr std::string_view kSeePort =
    "notifyhost ports lists the ports; Settings_COMPort says which one is used";
constexpr std::string_view kSeeDialTone =
    "see that the modem is plugged into a telephone line; behind a switchboard the number needs "
    "its "
    "prefix, and X3 in the modem string has the modem dial without a tone";
constexpr std::string_view kTryLowerRate =
    "try again; where it goes on, try a lower Settings_Baud and look at Settings_8N1";
constexpr std::string_view kAskService = "ask the service what it expects";
constexpr std::string_view kTryLater = "try again later";
constexpr std::string_view kSeeRelay =
    "see whether the relay runs and whether a firewall keeps this computer from port 25; "
    "notifyhost "
    "doctor --online asks it";
constexpr std::string_view kAskPostmaster = "ask who runs the relay";
constexpr std::string_view kAskBeforeAgain =
    "ask the recipients, or who runs the relay, before the mail is sent again";
constexpr std::string_view kSeeRecipient = "check the field 'to'";
constexpr std::string_view kSeeSender =
    "check the field 'from', and whether the relay takes mail from this computer";
constexpr std::string_view kSeePagerId = "check the pager ID";
constexpr std::string_view kSeeWave = "check the wave file; notifyhost doctor looks at it";
constexpr std::string_view kSeeTelephony =
    "see that a telephony driver with a voice line is installed and free; notifyhost doctor "
    "--online "
    "opens its line";
constexpr std::string_view kFreeMemory = "close programs, or restart the host";

// A row a sign: the ways on which it means this; who gives it, and where; what it means; what to
// do.
// clang-format off
constexpr auto kRows = std::to_array<CourseRow>({
    // Every way.
    Refuses(kAll, LineEnd(log_text::kLoadFailed),
            "the instance could not be loaded",
            "see with notifyhost show that the file is there and holds an instance of this class"),
    Takes(kBeeper, Line(log_text::kUnhandledTrigger),
          "nobody was called: the event is of no kind that is told of",
          "give an event such as item-down; see notifyhost help send"),
    Troubles(kAll - kVoice, Line(log_text::kNoMemoryForData),
             "there was not enough memory", kFreeMemory),

    // What an alert with a modem begins with.
    Begins(kPagers, LineStart(log_text::kSendingPage),
           Stage::kPort, "opening the port", "a page to a pager ID by way of a number, with the modem on a port"),
    Tells(kBeeper, Line(log_text::kSendBeeperMessage), "a beep begins"),
    Tells(kBeeper, LineStart(log_text::kBeepNumber), "the number that is called"),
    Tells(kBeeper, Line(log_text::kModemString), "what the modem is initialised with, in the next line"),
    Tells(kBeeper, Line(log_text::kDialString), "what the dial command is made of, in the next line"),
    Tells(kBeeper, Line(log_text::kCompleteMessage), "what is keyed in behind the number, in the next line"),
    Begins(kBeeper, Line(log_text::kSendingMessage), Stage::kPort, "opening the port", "the port is opened next"),

    // The port.
    {.ways = kModems, .sign = LineStart(log_text::kPortInUse), .bearing = Bearing::kHint,
     .words = "the same notifier object was busy with another alert",
     .advice = "have the host send its alerts one after the other",
     .phase = "waiting for another alert to free the port"},
    Troubles(kModems, Line("open error 2"),
             "there is no such serial port", kSeePort),
    Troubles(kModems, Line("open error 5"),
             "the serial port is in use by another program, or this user must not open it",
             "close what uses the port; notifyhost ports tells whether it is free"),
    Troubles(kModems, LineStart(log_text::kOpenError),
             "the serial port could not be opened (error {|rest})", kSeePort),
    Troubles(kModems, LineStart(log_text::kGetControlError),
             "the settings of the serial port could not be read (error {|rest})",
             "see whether it is a serial port with a modem, and not another kind of device"),
    Troubles(kModems, LineStart(log_text::kSetControlError),
             "the serial port does not take its settings (error {|rest})",
             "check Settings_Baud, and Settings_8N1 of Pager: not every port has every rate"),
    Remarks(kBeeper, LineStart(log_text::kWriteError, kInEnding),
            "the modem could not be told to hang up (error {|rest})", kSeeModem),
    Remarks(kBeeper, LineStart(log_text::kReadError, kInEnding),
            "the modem's answer could not be read (error {|rest})", kSeeModem),
    Troubles(kModems, LineStart(log_text::kWriteError),
             "the modem or its port took no more bytes (error {|rest})", kSeeModem),
    Troubles(kModems, LineStart(log_text::kReadError),
             "nothing could be read from the port (error {|rest})", kSeeModem),
    Tells(kModems, Line(log_text::kWaitingForCompletion),
          "what was sent has left the computer, and the answer is waited for"),

    // What a page cannot do without.
    Refuses(kPagers, Line(log_text::kNoPhoneNumber),
            "the pager number is missing or has fewer than three characters", "give the number of the centre's modem"),
    Refuses(kPagers, Line(log_text::kNoPagerId),
            "the pager ID is missing or has fewer than three characters", "give the pager ID"),
    Refuses(kPagers, Line(log_text::kNoMessage),
            "the message is empty", "give the instance a message, and values to its variables"),

    // The modem.
    Begins(kModems, Sends("ATH0"), Stage::kEnding, "hanging up", "the modem is told to hang up"),
    Begins(kModems, Sends("+++"), Stage::kEnding, "hanging up", "the modem is told to listen to commands again"),
    Begins(kPagers, Sends("ATDT", kInModem | kInDialling),
           Stage::kDialling, "dialling{ |number}{, |try}", "the number is dialled"),
    Begins(kModems, Sends("", kOpening | kInModem),
           Stage::kModem, "initialising the modem", "the modem gets its initialisation string, or AT"),
    Tells(kModems, Line(log_text::kLookingForOk), "the modem's OK is waited for"),
    Tells(kModems, Line(log_text::kTryingAgainForOk), "the modem is asked once more"),
    Troubles(kModems, Open(log_text::kNoOk),
             "the modem did not answer OK", kSeeModem),
    Troubles(kPagers, Open(log_text::kEchoNotOff),
             "the modem goes on echoing its commands",
             "put E0 into Settings_ModemString"),
    Troubles(kUcp, Open(log_text::kLineNotInitialized),
             "the modem did not take its initialisation string", "check Settings_ModemString"),
    Tells(kModems, Answer("OK", kInModem), "the modem is ready"),
    Hints(kModems, Answer("ERROR", kInModem),
          "the modem refused its initialisation string", "check Settings_ModemString"),
    Hints(kModems, Silence(kInModem), "the modem said nothing", kSeeModem),
    Tells(kModems, AnyAnswer(kInModem), "neither OK nor ERROR: most often an echo, or another rate"),

    // A beep. Its dial command is the only line that is known by none of these texts.
    Begins(kBeeper, AnyLine(kInModem),
           Stage::kDialling, "dialling{ |number}", "the dial command, which the modem has taken"),
    Goes(kBeeper, Line(log_text::kDelaying),
         "waiting for the call to have been made", "the time to dial has passed; Settings_Timeout is waited for"),
    Remarks(kBeeper, Answer("BUSY", kInEnding),
            "the modem answered BUSY", "see whether the number was in use only then"),
    Remarks(kBeeper, Answer("NO DIAL", kInEnding), "the modem heard no dial tone", kSeeDialTone),
    Remarks(kBeeper, Answer("NO ANSWER", kInEnding), "the modem answered NO ANSWER", kSeeNumber),
    Remarks(kBeeper, Answer("NO CARRIER", kInEnding),
            "the modem answered NO CARRIER, as it also does where a pager has answered"),
    Remarks(kBeeper, Answer("ERROR", kInEnding),
            "the modem answered ERROR",
            "check Settings_DialString and the number for characters that the modem refuses"),
    Remarks(kBeeper, Silence(kInEnding), "the modem did not answer when it was to hang up", kSeeModem),
    Remarks(kBeeper, Answer("CONNECT", kInEnding), "a modem answered, and no pager", kSeeNumber),
    Tells(kBeeper, Answer("OK", kInEnding), "the modem has hung up"),
    Remarks(kBeeper, AnyAnswer(kInEnding), "the modem answered {|answer}", kSeeModem),
    Takes(kBeeper, Line(log_text::kSuccess), "dialled{ |number}{; |remarks}; nobody confirms a beep"),

    // The call to a centre.
    Goes(kPagers, Line(log_text::kBusy),
         "waiting to dial{ |number} again", "the number is busy, and is dialled again after a while"),
    Refuses(kPagers, Answer("NO CARRIER", kInDialling),
            "no modem answered{ at |number} (NO CARRIER)", kSeeNumber),
    Troubles(kPagers, Answer("NO DIAL", kInDialling), "there was no dial tone", kSeeDialTone),
    Refuses(kPagers, Answer("NO ANSWER", kInDialling), "nobody answered{ at |number}", kSeeNumber),
    Goes(kPagers, Answer("CONNECT", kInDialling), "connected{ at |rest}", "the modems are connected"),
    Tells(kTaps | kNtt, Answer("CARRIER", kInDialling), "the modems are connected"),
    Refuses(kPagers, Answer("BUSY", kInDialling), "the number{ |number} is busy", kTryLater),
    Troubles(kPagers, Answer("ERROR", kInDialling),
             "the modem refused to dial{ |number}", "check the pager number for characters that the modem refuses"),
    Hints(kUcp, Line(log_text::kNoAnswer), "the modem told of no connection in time", kSeeNumber),
    Hints(kPagers, Silence(kInDialling), "the modem did not tell what became of the call", kSeeModem),
    Hints(kPagers, Answer("ATDT", kInDialling),
          "the modem only echoed the dial command", "put E0 into Settings_ModemString"),
    Hints(kPagers, AnyAnswer(kInDialling),
          "the modem answered something else than the outcome of the call: {|answer}", kSeeModem),
    Tells(kPagers, Line(log_text::kNoCarrier), "the modem answered NO CARRIER"),
    Tells(kUcp, Line(log_text::kNoDialtone), "the modem heard no dial tone"),
    Tells(kPagers, Open(log_text::kTransmissionFailed), "the page was not delivered; what stands before tells why"),

    // TAP.
    Begins(kTaps, Sends("\r", kInDialling | kInPrompt),
           Stage::kPrompt, "waiting for the centre's prompt", "the centre is asked to show its prompt"),
    Troubles(kTaps, Answer("NO CARRIER", kInPrompt),
             "the connection was lost before the centre showed its prompt (NO CARRIER)",
             "try again; where it goes on, ask the service whether this is the number for TAP"),
    Refuses(kTaps, Answer("Slow", kInPrompt), "the centre said Slow, at which a call is ended", kAskService),
    Tells(kTaps, Answer("ID=", kInPrompt), "the centre asks for the log-in"),
    Hints(kTaps, Silence(kInPrompt),
          "the centre never showed its prompt ID=",
          "ask the service whether this is the number for TAP; look at Settings_Baud and Settings_8N1"),
    Hints(kTaps, AnyAnswer(kInPrompt),
          "the centre never showed its prompt ID=; it said {|answer}",
          "ask the service whether this is the number for TAP; look at Settings_Baud and Settings_8N1"),
    Tells(kTaps, Open(log_text::kGotIdPrompt), "the centre has shown its prompt"),
    Begins(kTaps, Sends("\x1BPG1"), Stage::kLogIn, "logging in", "the log-in, with the terminal password behind PG1"),
    Tells(kTaps, Answer("[p", kInLogIn), "the centre goes ahead"),
    Refuses(kTaps, Answer("\x15", kInLogIn), "the centre refused the log-in", "check the terminal password"),
    Refuses(kTaps, Answer("\x1B\x04", kInLogIn),
            "the centre refused the log-in and ended the call", "check the terminal password"),
    Troubles(kTaps, Answer("NO CARRIER", kInLogIn),
             "the connection was lost at the log-in (NO CARRIER)",
             "try again; where it goes on, check the terminal password"),
    Refuses(kTaps, Answer("Slow", kInLogIn), "the centre said Slow, at which a call is ended", kAskService),
    Hints(kTaps, Answer("ID=", kInLogIn),
          "the centre asked for the log-in again and again", "check the terminal password"),
    Hints(kTaps, Answer("\x06", kInLogIn), "the centre took the log-in and then never said [p", kAskService),
    Hints(kTaps, Silence(kInLogIn), "the centre did not answer the log-in", kAskService),
    Hints(kTaps, AnyAnswer(kInLogIn), "the centre did not take the log-in", "check the terminal password"),
    Tells(kTaps, Line(log_text::kGotGoAhead), "the centre has said [p"),
    Begins(kTaps, Sends("\x02"), Stage::kPage, "sending the page{, |try}", "the page, as one block"),
    Takes(kTaps, Answer("\x06", kInPage), "the centre took the page"),
    Takes(kTaps, Answer("\x04", kInPage),
          "the centre ended the call behind the page, which counts as taken"),
    Takes(kSmsTap, Answer("\x1E", kInPage),
          "the centre answered RS, which counts as taken and is a refusal in TAP proper", kSeePagerId),
    Refuses(kPlainTap, Answer("\x1E", kInPage), "the centre rejected the page (RS)", kSeePagerId),
    Refuses(kTaps, Answer("\x15", kInPage), "the centre refused the page as garbled (NAK)", kTryLowerRate),
    Troubles(kTaps, Answer("NO CARRIER", kInPage),
             "the connection was lost before the centre answered the page (NO CARRIER)", kTryLater),
    Hints(kTaps, Silence(kInPage), "the centre did not answer the page", kAskService),
    Hints(kTaps, AnyAnswer(kInPage), "the centre's answer to the page means nothing in TAP: {|answer}", kAskService),
    Begins(kTaps, Sends("\x04"), Stage::kEnding, "taking leave of the centre", "the end of the transmission"),

    // UCP. The numbers are those of the published protocol (EMI-UCP). What the module writes behind
    // "EMI Error" agrees with them up to 09 alone.
    Begins(kUcp, SendsWithin("/O/02/"), Stage::kPage, "sending the message", "the message, as one UCP operation"),
    Refuses(kUcp, Answer("/N/01", kInPage), "the centre refused the message: error 01, checksum error", kTryLowerRate),
    Refuses(kUcp, Answer("/N/02", kInPage), "the centre refused the message: error 02, syntax error", kSeePagerId),
    Refuses(kUcp, Answer("/N/03", kInPage),
            "the centre refused the message: error 03, operation not supported by the system", kAskService),
    Refuses(kUcp, Answer("/N/04", kInPage),
            "the centre refused the message: error 04, operation not allowed", kAskService),
    Refuses(kUcp, Answer("/N/05", kInPage),
            "the centre refused the message: error 05, call barring active", kAskService),
    Refuses(kUcp, Answer("/N/06", kInPage), "the centre refused the message: error 06, address invalid", kSeePagerId),
    Refuses(kUcp, Answer("/N/07", kInPage),
            "the centre refused the message: error 07, authentication failure", kAskService),
    Refuses(kUcp, Answer("/N/08", kInPage),
            "the centre refused the message: error 08, legitimisation code for all calls, failure", kAskService),
    Refuses(kUcp, Answer("/N/09", kInPage),
            "the centre refused the message: error 09, group address not valid", kSeePagerId),
    Refuses(kUcp, Answer("/N/10", kInPage),
            "the centre refused the message: error 10, repetition not allowed", kAskService),
    Refuses(kUcp, Answer("/N/11", kInPage),
            "the centre refused the message: error 11, legitimisation code for repetition, failure", kAskService),
    Refuses(kUcp, Answer("/N/12", kInPage),
            "the centre refused the message: error 12, priority call not allowed", kAskService),
    Refuses(kUcp, Answer("/N/13", kInPage),
            "the centre refused the message: error 13, legitimisation code for priority call, failure", kAskService),
    Refuses(kUcp, Answer("/N/14", kInPage),
            "the centre refused the message: error 14, urgent message not allowed", kAskService),
    Refuses(kUcp, Answer("/N/15", kInPage),
            "the centre refused the message: error 15, legitimisation code for urgent message, failure", kAskService),
    Refuses(kUcp, Answer("/N/16", kInPage),
            "the centre refused the message: error 16, reverse charging not allowed", kAskService),
    Refuses(kUcp, Answer("/N/17", kInPage),
            "the centre refused the message: error 17, legitimisation code for reverse charging, failure", kAskService),
    Refuses(kUcp, Answer("/N/18", kInPage),
            "the centre refused the message: error 18, deferred delivery not allowed", kAskService),
    Refuses(kUcp, Answer("/N/19", kInPage),
            "the centre refused the message: error 19, new authentication code not valid", kAskService),
    Refuses(kUcp, Answer("/N/20", kInPage),
            "the centre refused the message: error 20, new legitimisation code not valid", kAskService),
    Refuses(kUcp, Answer("/N/21", kInPage),
            "the centre refused the message: error 21, standard text not valid", kAskService),
    Refuses(kUcp, Answer("/N/22", kInPage),
            "the centre refused the message: error 22, time period not valid", kAskService),
    Refuses(kUcp, Answer("/N/23", kInPage),
            "the centre refused the message: error 23, message type not supported by the system", kAskService),
    Refuses(kUcp, Answer("/N/24", kInPage),
            "the centre refused the message: error 24, message too long", "make the message shorter"),
    Refuses(kUcp, Answer("/N/25", kInPage),
            "the centre refused the message: error 25, requested standard text not valid", kAskService),
    Refuses(kUcp, Answer("/N/26", kInPage),
            "the centre refused the message: error 26, message type not valid for the pager", kSeePagerId),
    Refuses(kUcp, Answer("/N/27", kInPage), "the centre refused the message: error 27, message not found", kAskService),
    Refuses(kUcp, Answer("/N/28", kInPage),
            "the centre refused the message: error 28, invalid character set", kAskService),
    Refuses(kUcp, Answer("/N/30", kInPage),
            "the centre refused the message: error 30, the subscriber hung up", kTryLater),
    Refuses(kUcp, Answer("/N/31", kInPage),
            "the centre refused the message: error 31, fax group not supported", kSeePagerId),
    Refuses(kUcp, Answer("/N/32", kInPage),
            "the centre refused the message: error 32, fax message type not supported", kSeePagerId),
    Refuses(kUcp, Answer("/N/33", kInPage),
            "the centre refused the message: error 33, address already in the list", kAskService),
    Refuses(kUcp, Answer("/N/34", kInPage),
            "the centre refused the message: error 34, address not in the list", kAskService),
    Refuses(kUcp, Answer("/N/35", kInPage), "the centre refused the message: error 35, the list is full", kAskService),
    Refuses(kUcp, Answer("/N/36", kInPage),
            "the centre refused the message: error 36, identifier already in use", kAskService),
    Refuses(kUcp, Answer("/N/37", kInPage),
            "the centre refused the message: error 37, delivery in progress", kTryLater),
    Refuses(kUcp, Answer("/N/38", kInPage), "the centre refused the message: error 38, message forwarded", kAskService),
    Refuses(kUcp, Answer("/N/50", kInPage), "the centre refused the message: error 50, low network status", kTryLater),
    Refuses(kUcp, Answer("/N/51", kInPage),
            "the centre refused the message: error 51, legitimisation code for standard text, failure", kAskService),
    Refuses(kUcp, Answer("/N/53", kInPage),
            "the centre refused the message: error 53, operation partially successful", kAskService),
    Refuses(kUcp, Answer("/N/54", kInPage),
            "the centre refused the message: error 54, operation not successful", kTryLater),
    Refuses(kUcp, Answer("/N/55", kInPage), "the centre refused the message: error 55, system error", kTryLater),
    Refuses(kUcp, Answer("/N/66", kInPage),
            "the centre refused the message: error 66, operation restricted to mobile subscribers", kSeePagerId),
    Refuses(kUcp, Answer("/N/68", kInPage),
            "the centre refused the message: error 68, invalid address type", kSeePagerId),
    Refuses(kUcp, Answer("/N/", kInPage), "the centre refused the message: {|answer}", kAskService),
    Takes(kUcp, Answer("/A/", kInPage), "the centre took the message"),
    Troubles(kUcp, Answer("NO CARRIER", kInPage),
             "the connection was lost before the centre answered the message (NO CARRIER)", kTryLater),
    Troubles(kUcp, Answer("/O/02/", kInPage),
             "what answered there sends back what it is sent", "ask the service whether this is the number for UCP"),
    Hints(kUcp, Silence(kInPage), "the centre did not answer the message", kAskService),
    Hints(kUcp, AnyAnswer(kInPage),
          "the centre's answer holds neither an acceptance nor a refusal: {|answer}", kAskService),
    Tells(kUcp, LineStart(log_text::kUcpError),
          "the module's words for the error behind /N/; from error 10 on they are those of another error"),
    Tells(kUcp, Open(log_text::kTransmissionSucceeded), "the centre has taken the message"),

    // NTT.
    Begins(kNtt, Sends("\r", kInDialling | kInPrompt),
           Stage::kPrompt, "waiting for the service to be ready", "the service is asked whether it is ready"),
    Tells(kNtt, AnswerStart("10", kInPrompt), "the service is ready"),
    Refuses(kNtt, AnswerStart("17", kInPrompt), "the service refused the call (17)", kAskService),
    Troubles(kNtt, Answer("NO CARRIER", kInPrompt),
             "the connection was lost before the service was ready (NO CARRIER)", kTryLater),
    Refuses(kNtt, Answer("Slow", kInPrompt), "the service said Slow, at which a call is ended", kAskService),
    Tells(kNtt, Answer("READY", kInPrompt), "the service is ready"),
    Hints(kNtt, Silence(kInPrompt),
          "the service never said that it was ready",
          "ask the service whether this is its number; look at Settings_Baud and Settings_8N1"),
    Hints(kNtt, AnyAnswer(kInPrompt), "the service never said that it was ready; it said {|answer}", kAskService),
    Begins(kNtt, Sends("8000C"), Stage::kPage, "sending the page", "the page, as one line"),
    Takes(kNtt, AnswerStart("28", kInPage), "the service took the page (28)"),
    Refuses(kNtt, AnswerStart("17", kInPage),
            "the service refused the page (17)", "check the pager ID and the terminal password"),
    Troubles(kNtt, Answer("NO CARRIER", kInPage),
             "the connection was lost before the service answered the page (NO CARRIER)", kTryLater),
    Hints(kNtt, Silence(kInPage), "the service did not answer the page", kAskService),
    Troubles(kNtt, Answer("28", kInPage),
             "the service's answer does not begin with the 28 that takes a page: {|answer}", kAskService),
    Troubles(kNtt, AnyAnswer(kInPage),
             "the service answered {|answer}, and nothing but 28 is known to take a page", kAskService),
    Tells(kNtt, Line(log_text::kNttSuccess), "the service has taken the page"),

    // What is left to say of a call where no answer tells more.
    Hints(kPagers, Line(log_text::kUnknownResponse), "an answer was not understood", kAskService),
    Hints(kTaps | kNtt, Line(log_text::kGaveUp), "the centre did not say what was waited for", kAskService),

    // Mail: what the relay is told.
    Begins(kMail, LineStart(log_text::kSendingMail),
           Stage::kRelay, "connecting to the relay{ |gateway}", "a mail by way of a relay to its recipients"),
    Refuses(kMail, Line(log_text::kGatewayIsNoAddress),
            "the gateway is no IPv4 address", "write the relay's address as four numbers, such as 192.0.2.25"),
    Troubles(kMail, Line(log_text::kSocketFailed),
             "the system gave no socket", "see whether the network works on this computer"),
    Troubles(kMail, Line(log_text::kConnectFailed), "the relay{ |gateway} could not be reached", kSeeRelay),
    Begins(kMail, LineStart("HELO ", kInRelay),
           Stage::kHello, "greeting the relay", "this computer tells the relay its name"),
    Begins(kMail, LineStart("MAIL From:", kInHello), Stage::kSender, "naming the sender", "the sender"),
    Begins(kMail, LineStart("RCPT To:", kInSender | kInRecipient),
           Stage::kRecipient, "naming the recipient {|rest}", "a recipient; the last of the list comes first"),
    Remarks(kMail, LineStart(log_text::kRecipientsLeftOut),
            "the recipient list is too long, and nothing was sent to {|rest}",
            "make a second instance, or a list at the relay"),
    Begins(kMail, Line("DATA", kInRecipient), Stage::kData, "announcing the message", "the message is announced"),
    Begins(kMail, Line(".", kInText | kInTextEnd | kInEnding),
           Stage::kTextEnd,
           "waiting for the relay to take the message",
           "the full stop that ends the message; the reply behind it decides"),
    Begins(kMail, Line("QUIT", kInSender | kInRecipient | kInData | kInTextEnd),
           Stage::kEnding, "taking leave of the relay", "the end of the conversation"),
    Troubles(kMail, LineStart("recv error 10004", kInRelay),
             "the relay{ |gateway} did not greet in time",
             "see whether the relay is overloaded, and Settings_Timeout of SMTPMail"),
    Troubles(kMail, LineStart(log_text::kReceiveError, kInTextEnd),
             "the relay did not answer the end of the message (error {|rest}), and may have taken it", kAskBeforeAgain),
    Troubles(kMail, LineStart("recv error 10004"),
             "the relay did not answer in time",
             "see whether the relay is overloaded, and Settings_Timeout of SMTPMail"),
    Troubles(kMail, LineStart("recv error 10054"), "the relay broke the connection off", kSeeRelay),
    Troubles(kMail, LineStart(log_text::kReceiveError),
             "nothing could be received from the relay (error {|rest})", kSeeRelay),

    // Mail: the replies (RFC 5321).
    Tells(kMail, Reply("2", kInRelay), "the relay greets"),
    Refuses(kMail, Reply("4", kInRelay), "the relay takes no mail for now: {|answer}", kTryLater),
    Refuses(kMail, Reply("5", kInRelay), "the relay takes no mail from this computer: {|answer}", kAskPostmaster),
    Troubles(kMail, AnyReply(kInRelay),
             "what answers at the relay's address does not greet like a relay: {|answer}",
             "see that the gateway is a mail relay"),
    Tells(kMail, Reply("2", kInHello), "the relay takes the greeting"),
    Refuses(kMail, AnyReply(kInHello),
            "the relay refused the greeting: {|answer}", "see that this computer has a host name that the relay takes"),
    Tells(kMail, Reply("2", kInSender), "the relay takes the sender"),
    Refuses(kMail, Reply("4", kInSender), "the relay does not take the sender for now: {|answer}", kTryLater),
    Refuses(kMail, Reply("530", kInSender),
            "the relay wants a log-in, which this class does not have: {|answer}",
            "have the relay take mail from this computer without one"),
    Refuses(kMail, AnyReply(kInSender), "the relay refused the sender: {|answer}", kSeeSender),
    Accepts(kMail, Reply("2", kInRecipient), "the relay takes the recipient"),
    Refuses(kMail, Reply("4", kInRecipient), "the relay does not take the recipient for now: {|answer}", kTryLater),
    Refuses(kMail, Reply("550", kInRecipient),
            "the relay refused the recipient: {|answer}",
            "check the field 'to', and whether the relay passes mail on for this computer"),
    Refuses(kMail, Reply("5", kInRecipient), "the relay refused the recipient: {|answer}", kSeeRecipient),
    Troubles(kMail, AnyReply(kInRecipient),
             "the reply to the recipient is none that accepts: {|answer}", kAskPostmaster),
    Begins(kMail, Reply("3", kInData), Stage::kText, "sending the message", "the relay waits for the message"),
    Refuses(kMail, Reply("4", kInData), "the relay does not take the message for now: {|answer}", kTryLater),
    Refuses(kMail, AnyReply(kInData), "the relay refused to take the message: {|answer}", kAskPostmaster),
    Takes(kMail, Reply("2", kInTextEnd), "the relay accepted the message{; |remarks}"),
    Refuses(kMail, Reply("4", kInTextEnd), "the relay could not take the message for now: {|answer}", kTryLater),
    Refuses(kMail, Reply("552", kInTextEnd),
            "the message is too large for the relay: {|answer}", "shorten the message"),
    Refuses(kMail, AnyReply(kInTextEnd), "the relay refused the message: {|answer}", kAskPostmaster),
    Tells(kMail, AnyReply(kInEnding), "the relay takes leave"),

    // Mail: no reply.
    Troubles(kMail, NoReply(kInRelay), "the relay{ |gateway} closed the connection instead of greeting", kSeeRelay),
    Troubles(kMail, NoReply(kInText), "the connection ended while the message was sent", kSeeRelay),
    Troubles(kMail, NoReply(kInTextEnd),
             "the connection ended before the relay answered the end of the message, which it may have taken",
             kAskBeforeAgain),
    Troubles(kMail, NoReply(kInHello | kInSender | kInRecipient | kInData),
             "the connection ended while{ |phase}", kSeeRelay),
    Troubles(kMail, AnySuccess(),
             "no reply that accepts the message is in the log, although Send returned success",
             "take the mail for one that was not delivered"),
    Refuses(kMail, Failure("0x80140001 (SMTPMAIL_E_RECIPIENT_REFUSED)"),
            "the relay refused a recipient, and did not accept the message", kSeeRecipient),

    // Voice: the sounds.
    Causes(kVoice, Line(log_text::kWaveFileNotOpened), "a wave file could not be opened", kSeeWave),
    Causes(kVoice, Line(log_text::kNoWaveForm), "a file is no wave file", kSeeWave),
    Causes(kVoice, Line(log_text::kNoFormatChunk), "a wave file has no format", kSeeWave),
    Causes(kVoice, Line(log_text::kNoMemoryForFormat),
           "there was no memory for the format of a wave file", kFreeMemory),
    Causes(kVoice, Line(log_text::kFormatNotRead), "the format of a wave file could not be read", kSeeWave),
    Causes(kVoice, Line(log_text::kNoDataChunk), "a wave file has no sound in it", kSeeWave),
    Causes(kVoice, Line(log_text::kDataChunkEmpty), "the sound in a wave file is empty", kSeeWave),
    Causes(kVoice, Line(log_text::kNoMemoryForData), "there was no memory for a sound", kFreeMemory),
    Causes(kVoice, Line(log_text::kDataNotRead), "a wave file ends before its sound does", kSeeWave),
    Causes(kVoice, Line(log_text::kNoMemoryForHeader), "there was no memory for a sound", kFreeMemory),
    Causes(kVoice, Line(log_text::kWaveDeviceNotOpened),
           "the wave device of the call could not be opened", kSeeTelephony),
    Causes(kVoice, Line(log_text::kHeaderNotPrepared),
           "the wave device of the call did not take the sound", kSeeTelephony),
    Causes(kVoice, Line(log_text::kWaveNotWritten),
           "the wave device of the call did not take the sound", kSeeTelephony),

    // Voice: the call.
    {.ways = kVoice, .sign = Line(log_text::kNotAcknowledged), .bearing = Bearing::kTrouble,
     .words = "nobody pressed the key",
     .advice = "call again; check the field 'button', and 'count' for how often the message is repeated",
     .begins = Stage::kEnding, .phase = "hanging up"},
    Tells(kVoice, Open("\""), "belongs to the line before"),
    {.ways = kVoice, .sign = Line(log_text::kGoodExit), .bearing = Bearing::kTaken,
     .words = "somebody pressed the key, and the messages were played",
     .begins = Stage::kEnding, .phase = "hanging up"},
    Troubles(kVoice, Line(log_text::kRepeatMessageNotPlayed), "the repeated message could not be played", kSeeWave),
    Troubles(kVoice, Line(log_text::kFirstMessageNotPlayed),
             "the key was pressed, but the first message could not be played", kSeeWave),
    Troubles(kVoice, Line(log_text::kSecondMessageNotPlayed),
             "the key was pressed, but the second message could not be played", kSeeWave),
    Troubles(kVoice, Line(log_text::kNoSuitableDevice), "no telephone line takes automated voice", kSeeTelephony),
    Troubles(kVoice, Line(log_text::kLineNotOpened), "the telephone line could not be opened", kSeeTelephony),
    Troubles(kVoice, Line(log_text::kCallNotPlaced), "the call could not be placed", kSeeTelephony),
    Troubles(kVoice, Line(log_text::kWaveDeviceNotFound), "the call has no wave device", kSeeTelephony),
    Troubles(kVoice, Line(log_text::kDigitsNotMonitored), "the line does not tell of keys", kSeeTelephony),

    // Voice: telephony cannot be used at all.
    Troubles(kVoice, Line("Unable to initialize Line LINEERR_NOMEM"),
             "there is not enough memory for telephony", kFreeMemory),
    Troubles(kVoice, Line("Unable to initialize Line LINEERR_OPERATIONFAILED"),
             "telephony could not be started", kSeeTelephony),
    Troubles(kVoice, Line("Unable to initialize Line LINEERR_RESOURCEUNAVAIL"),
             "telephony has no resources left", kSeeTelephony),
    Troubles(kVoice, Line("Unable to initialize Line LINEERR_REINIT"),
             "telephony has to be restarted first", kSeeTelephony),
    Troubles(kVoice, Line("Unable to initialize Line LINEERR_NOMULTIPLEINSTANCE"),
             "another program has telephony to itself", kSeeTelephony),
    Troubles(kVoice, Line("Unable to initialize Line LINEERR_NODRIVER"),
             "a telephony driver is missing", kSeeTelephony),
    Troubles(kVoice, Line("Unable to initialize Line LINEERR_INIFILECORRUPT"),
             "the settings of telephony are damaged", kSeeTelephony),
    Troubles(kVoice, Line("Unable to initialize Line LINEERR_INVALAPPNAME"),
             "telephony does not take the module's name", kSeeTelephony),
    Troubles(kVoice, Line("Unable to initialize Line LINEERR_INVALPARAM"),
             "telephony does not take the module's version", kSeeTelephony),
    Troubles(kVoice, Line("Unable to initialize Line LINEERR_INVALPOINTER"),
             "telephony could not be started", kSeeTelephony),
    Troubles(kVoice, Line("Unable to initialize Line LINEERR_NODEVICE"), "there is no telephony device", kSeeTelephony),
    Troubles(kVoice, Line(log_text::kLineNotInitialized), "telephony could not be started", kSeeTelephony),

    // Voice: the choice of a line.
    Begins(kVoice, LineStart(log_text::kDeviceVersion),
           Stage::kLine, "choosing a telephone line", "a line is looked at; its number"),
    Tells(kVoice, LineStart("ApiVer="), "the version of telephony that the line has"),
    Begins(kVoice, LineStart(log_text::kCapabilitiesRead),
           Stage::kLine, "calling{ |number}", "what the line can do has been read"),
    Causes(kVoice, LineStart(log_text::kCapabilitiesNotRead), "a line did not tell what it can do", kSeeTelephony),
    Causes(kVoice, LineStart(log_text::kDeviceBadDeviceId), "a line that telephony counts is not there", kSeeTelephony),
    Causes(kVoice, LineStart(log_text::kDeviceNoDriver), "the driver of a line is missing", kSeeTelephony),
    Causes(kVoice, LineStart(log_text::kDeviceIncompatibleApiVersion),
           "a line's driver has another version of telephony", kSeeTelephony),
    Causes(kVoice, LineStart(log_text::kDeviceOther),
           "a line cannot be used, for a reason that has no text", kSeeTelephony),
    Causes(kVoice, LineStart(log_text::kDeviceOperationUnavailable),
           "a line cannot do what is asked of it", kSeeTelephony),
    Causes(kVoice, LineStart(log_text::kDeviceNoDevice), "a line is not there any more", kSeeTelephony),
    Causes(kVoice, LineStart(log_text::kDeviceNoMemory), "there was not enough memory for a line", kFreeMemory),
    Causes(kVoice, LineStart(log_text::kDeviceUninitialized), "telephony was ended meanwhile", kSeeTelephony),
    Causes(kVoice, LineStart(log_text::kDeviceInvalidPointer), "a line's driver failed", kSeeTelephony),
    Causes(kVoice, LineStart(log_text::kDeviceResourceUnavailable), "a line has no resources left", kSeeTelephony),
    Causes(kVoice, LineStart(log_text::kDeviceInvalidApplicationHandle),
           "telephony was ended meanwhile", kSeeTelephony),
    Causes(kVoice, LineStart(log_text::kDeviceOperationFailed), "a line's driver failed", kSeeTelephony),
    Causes(kVoice, LineStart(log_text::kDeviceAllocated),
           "another program has the line to itself", "end the program that has the line"),
    Causes(kVoice, LineStart(log_text::kDeviceLineMapperFailed), "telephony found no line of that kind", kSeeTelephony),
    Causes(kVoice, LineStart(log_text::kDeviceIncompatibleExtensionVersion),
           "a line's driver has another version of its extensions", kSeeTelephony),
    Causes(kVoice, LineStart(log_text::kDeviceInvalidMediaMode),
           "the line does not take automated voice", kSeeTelephony),
    Causes(kVoice, LineStart(log_text::kDeviceStructureTooSmall),
           "a line's driver needs more room than it is given", kSeeTelephony),
    Causes(kVoice, LineStart(log_text::kDeviceInvalidPrivilegeSelect),
           "the line does not let calls be made", kSeeTelephony),
    Causes(kVoice, LineStart(log_text::kDeviceReinitialize), "telephony has to be restarted first", kSeeTelephony),

    // Voice: why the line does not tell of keys.
    Causes(kVoice, Line(log_text::kMonitorDigitsInvalidCallHandle), "the call is over", kSeeTelephony),
    Causes(kVoice, Line(log_text::kMonitorDigitsInvalidCallState), "the call is not connected", kSeeTelephony),
    Causes(kVoice, Line(log_text::kMonitorDigitsInvalidDigitMode),
           "it does not know the tones of telephones", kSeeTelephony),
    Causes(kVoice, Line(log_text::kMonitorDigitsNoMemory), "there was not enough memory", kSeeTelephony),
    Causes(kVoice, Line(log_text::kMonitorDigitsOperationFailed), "its driver failed", kSeeTelephony),
    Causes(kVoice, Line(log_text::kMonitorDigitsOperationUnavailable),
           "its driver has no such function", kSeeTelephony),
    Causes(kVoice, Line(log_text::kMonitorDigitsResourceUnavailable), "it has no resources left", kSeeTelephony),
    Causes(kVoice, Line(log_text::kMonitorDigitsUninitialized), "telephony was ended meanwhile", kSeeTelephony),

    // Voice: what becomes of the call.
    Begins(kVoice, Line(log_text::kCallStateDialTone, kBeforeEnding),
           Stage::kCall, "hearing the dial tone", "the line has a dial tone"),
    Begins(kVoice, Line(log_text::kCallStateDialing, kBeforeEnding),
           Stage::kCall, "dialling{ |number}", "the number is dialled"),
    Begins(kVoice, Line(log_text::kCallStateProceeding, kBeforeEnding),
           Stage::kCall, "waiting for the call{ to |number} to go through", "the number has been dialled"),
    Begins(kVoice, Line(log_text::kCallStateRingback, kBeforeEnding),
           Stage::kCall, "letting it ring{ at |number}", "it rings there"),
    Begins(kVoice, Line(log_text::kCallStateBusy, kBeforeEnding),
           Stage::kCall,
           "hearing the busy tone{ of |number}",
           "the number is busy; the call goes on waiting, without an end"),
    Begins(kVoice, Line(log_text::kCallStateSpecialInfo, kBeforeEnding),
           Stage::kCall,
           "hearing an announcement of the network",
           "the network says something; mostly that the number is not in service"),
    Begins(kVoice, Line(log_text::kCallStateConnected, kBeforeEnding),
           Stage::kTalk, "repeating the message until a key is pressed", "somebody, or something, has answered"),
    Causes(kVoice, Line(log_text::kCallStateDisconnected, kInTalk), "the other end left the call"),
    Goes(kVoice, Line(log_text::kCallStateDisconnected, kBeforeEnding),
         "waiting on, though the other end has left the call",
         "the other end has left the call before it was connected"),
    Tells(kVoice, Line(log_text::kCallStateIdle), "there is no call on the line any more"),
    Tells(kVoice, Line(log_text::kCallStateOther), "a state of the call that telephony does not name"),
    Tells(kVoice, Line(log_text::kCallStateUnknown), "the state of the call is not known"),
    Tells(kVoice, Line(log_text::kCallStateOnHold), "the call is on hold"),
    Tells(kVoice, Line(log_text::kCallStateOnHoldPendingConference), "the call is put into a conference"),
    Tells(kVoice, Line(log_text::kCallStateConferenced), "the call is in a conference"),
    Tells(kVoice, Line(log_text::kCallStateAccepted), "somebody else's call has been accepted"),
    Tells(kVoice, Line(log_text::kCallStateOffering), "somebody else calls"),

    // Voice: what becomes of the line.
    Tells(kVoice, Line(log_text::kLineMessageAddressState), "something about the line's number has changed"),
    Tells(kVoice, Line(log_text::kLineMessageCallInfo), "something about the call has changed"),
    Causes(kVoice, Line(log_text::kLineMessageClose), "the line was closed", kSeeTelephony),
    Tells(kVoice, Line(log_text::kLineMessageCreate), "there is a new line"),
    Tells(kVoice, Line(log_text::kLineMessageDeviceSpecific), "a message of the driver's own"),
    Tells(kVoice, Line(log_text::kLineMessageDeviceSpecificFeature), "a message of the driver's own"),
    Tells(kVoice, Line(log_text::kLineMessageGatherDigits),
          "keys have been gathered, which the module has not asked for"),
    Tells(kVoice, Line(log_text::kLineMessageGenerate), "tones have been sent, which the module has not asked for"),
    Tells(kVoice, Line(log_text::kLineMessageRequest), "another program asks for a call"),
    Tells(kVoice, Line(log_text::kGotDeviceState), "something about the line has changed, which the next line tells"),
    Tells(kVoice, Line(log_text::kDeviceStateOther), "something else about the line has changed"),
    Tells(kVoice, Line(log_text::kDeviceStateRinging), "the line rings"),
    Tells(kVoice, Line(log_text::kDeviceStateConnected), "the line has been connected"),
    Tells(kVoice, Line(log_text::kDeviceStateDisconnected), "the line has been disconnected: see its plug"),
    Tells(kVoice, Line(log_text::kDeviceStateMessageWaitOn), "a message waits for the line"),
    Tells(kVoice, Line(log_text::kDeviceStateMessageWaitOff), "no message waits for the line any more"),
    Tells(kVoice, Line(log_text::kDeviceStateInService), "the line is in service"),
    Tells(kVoice, Line(log_text::kDeviceStateOutOfService), "the line is out of service"),
    Tells(kVoice, Line(log_text::kDeviceStateMaintenance), "the line is being maintained"),
    Tells(kVoice, Line(log_text::kDeviceStateOpen), "another program has opened the line"),
    Tells(kVoice, Line(log_text::kDeviceStateClose), "another program has closed the line"),
    Tells(kVoice, Line(log_text::kDeviceStateCalls), "the number of calls on the line has changed"),
    Tells(kVoice, Line(log_text::kDeviceStateCompletions), "the number of calls that wait for completion has changed"),
    Tells(kVoice, Line(log_text::kDeviceStateTerminals), "the line's handset or loudspeaker has changed"),
    Tells(kVoice, Line(log_text::kDeviceStateRoamMode), "the line's roaming has changed"),
    Tells(kVoice, Line(log_text::kDeviceStateBattery), "the telephone's battery has changed"),
    Tells(kVoice, Line(log_text::kDeviceStateSignal), "the telephone's signal has changed"),
    Tells(kVoice, Line(log_text::kDeviceStateDeviceSpecific), "something that only the driver knows has changed"),
    Tells(kVoice, Line(log_text::kDeviceStateReinitialize), "telephony has to be restarted"),
    Tells(kVoice, Line(log_text::kDeviceStateLock), "the line has been locked, or unlocked"),
    Tells(kVoice, Line(log_text::kDeviceStateRemoved), "the line has been removed"),
    Tells(kVoice, Line(log_text::kDeviceStateUnrecognized),
          "something about the line has changed that telephony does not name"),

    // Voice: what the system says of a sound that the call's device does not take.
    Causes(kVoice, AnyLine(kInTalk),
           "the system says: {|answer}",
           "save the wave file in a format that telephones have, such as 8 kHz, 8 bit, mono"),

    // Classes that log nothing of their own.
    Takes(kSound, Success("0x00000000 (S_OK)", kInEnding), "the sound that was repeated has been ended"),
    Takes(kSound, Success("0x00000000 (S_OK)"),
          "the system has played the sound, or its default sound where the file is missing"),
    Takes(kSound, AnySuccess(), "the system plays the sound over and over; a missing file shows nowhere"),
    Refuses(kSound, Failure("0x80004005 (E_FAIL)", kInEnding), "the sound that is repeated could not be ended"),
    Refuses(kSound, Failure("0x80004005 (E_FAIL)"),
            "the system could not play the sound{ |file}",
            "see that the file is a wave file that the system plays, and that there is a sound device"),
    Takes(kProgram, AnySuccess(), "the program was started; nobody waits for what it does"),
    Refuses(kProgram, Failure("0x80004005 (E_FAIL)"),
            "the program{ |program} could not be started",
            "start it by hand in the working path; notifyhost doctor looks for it"),
    Takes(kPopup, AnySuccess(), "the messenger service took the message{ for |destination}, or this system has none"),
    Refuses(kPopup, Failure("0x80004005 (E_FAIL)"),
            "the messenger service refused the message{ for |destination}",
            "see that the messenger service runs here and there, and that the name is known: notifyhost doctor"),

    // Results that nothing in the log explains.
    Takes(kBeeper, AnySuccess(), "the modem took the dial command, as the result says; nobody confirms a beep"),
    Takes(kPagers, AnySuccess(), "the centre took the page, as the result says; its answer is not in the log"),
    Takes(kVoice, AnySuccess(), "somebody pressed the key, as the result says"),
    Hints(kAll, Failure("0x80004005 (E_FAIL)"), "the log does not tell why"),
    Hints(kAll, AnyFailure(), "the host could not fill in a text of the alert ({|answer})"),
});
// clang-format on

bool Fits(const Sign& sign, std::string_view said) {
  switch (sign.match) {
    case Match::kAll:
      return said == sign.text;
    case Match::kStart:
    case Match::kOpen:
      return said.starts_with(sign.text);
    case Match::kEnd:
      return said.ends_with(sign.text);
    case Match::kWithin:
      return said.find(sign.text) != std::string_view::npos;
    case Match::kAnything:
      return true;
  }
  return false;
}

}  // namespace

std::span<const CourseRow> CourseRows() {
  return kRows;
}

const CourseRow* FindCourseRow(const Situation& situation, Speaker speaker, std::string_view said) {
  const auto* const found = std::ranges::find_if(kRows, [&](const CourseRow& row) {
    return row.sign.speaker == speaker && row.ways.Has(situation.way) &&
           row.sign.within.Has(situation.stage) && Fits(row.sign, said);
  });
  return found == kRows.end() ? nullptr : found;
}

std::string_view BehindSign(const Sign& sign, std::string_view said) {
  const std::size_t place = said.find(sign.text);
  if (place == std::string_view::npos) return {};
  const std::string_view behind = said.substr(place + sign.text.size());
  return behind.substr(0, behind.find_first_of(kLineEnds));
}

std::vector<std::string_view> OpenTexts(Way way) {
  std::vector<std::string_view> texts;
  for (const CourseRow& row : kRows) {
    if (row.sign.match == Match::kOpen && row.ways.Has(way)) texts.push_back(row.sign.text);
  }
  return texts;
}

}  // namespace brantel::host
