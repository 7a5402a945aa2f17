#include "telephone/line_session.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <utility>

#include "tests/unit/notifier/fake_notifier_host.h"
#include "tests/unit/telephone/fake_voice_system.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

struct CodeText {
  std::uint32_t code;
  const char* text;
};

class LineSessionTest : public ::testing::Test {
 protected:
  LineSessionTest() { state_.host = host_; }

  LineSession& Session(std::int32_t button = 5, const std::string& number = "5550100") {
    return session_.emplace(system_.system, state_, playback_, number, button);
  }

  // A session whose line is open.
  LineSession& OpenSession(std::int32_t button = 5) {
    LineSession& session = Session(button);
    EXPECT_EQ(session.InitializeLine(), 0U);
    EXPECT_EQ(session.ChooseDevice(), 0U);
    EXPECT_EQ(session.OpenLine(), 0U);
    Forget();
    return session;
  }

  void Forget() {
    system_.telephony.calls.clear();
    host_->log.clear();
  }

  // Queues a sound.
  void Play() {
    system_.riff_files.files["a.wav"] = WaveBytes("abcd");
    EXPECT_EQ(playback_.Play(0, "a.wav"), 0U);
    system_.wave_output.calls.clear();
  }

  FakeVoiceSystem system_;
  FakeTelephony& telephony_ = system_.telephony;
  std::shared_ptr<FakeNotifierHost> host_ = std::make_shared<FakeNotifierHost>();
  VoiceState state_;
  WavePlayback playback_{system_.system, state_};
  std::optional<LineSession> session_;
};

// InitializeLine

constexpr CodeText kInitializeFailures[] = {
    {0x80000044, "Unable to initialize Line LINEERR_NOMEM\r\n"},
    {0x80000048, "Unable to initialize Line LINEERR_OPERATIONFAILED\r\n"},
    {0x8000004B, "Unable to initialize Line LINEERR_RESOURCEUNAVAIL\r\n"},
    {0x80000052, "Unable to initialize Line LINEERR_REINIT\r\n"},
    {0x80000056, "Unable to initialize Line LINEERR_NOMULTIPLEINSTANCE\r\n"},
    {0x80000043, "Unable to initialize Line LINEERR_NODRIVER\r\n"},
    {0x8000000E, "Unable to initialize Line LINEERR_INIFILECORRUPT\r\n"},
    {0x80000015, "Unable to initialize Line LINEERR_INVALAPPNAME\r\n"},
    {0x80000032, "Unable to initialize Line LINEERR_INVALPARAM\r\n"},
    {0x80000035, "Unable to initialize Line LINEERR_INVALPOINTER\r\n"},
    {0x80000042, "Unable to initialize Line LINEERR_NODEVICE\r\n"},
    {0x80000049, "Unable to initialize Line\r\n"},
    {0x80000002, "Unable to initialize Line\r\n"},
    {1, "Unable to initialize Line\r\n"},
};

TEST_F(LineSessionTest, LogsWhyTheLineCannotBeInitialized) {
  for (const auto& [code, text] : kInitializeFailures) {
    Forget();
    telephony_.initialize = code;
    EXPECT_EQ(Session().InitializeLine(), code);
    EXPECT_THAT(host_->log, ElementsAre(text));
    session_.reset();
    EXPECT_THAT(telephony_.calls, ElementsAre("initialize"));
  }
}

TEST_F(LineSessionTest, InitializesTheLineWithoutAWord) {
  EXPECT_EQ(Session().InitializeLine(), 0U);
  EXPECT_THAT(host_->log, IsEmpty());
}

// ChooseDevice

constexpr CodeText kDeviceFailures[] = {
    {0x80000002, "BAD DEVICE"},       {0x8000000C, "INCOMPAT API VER"},
    {0x80000014, "INVAL APP HANDLE"}, {0x80000035, "INVAL POINTER"},
    {0x80000042, "NO DEV"},           {0x80000043, "NO DRIVER"},
    {0x80000044, "NO MEM"},           {0x80000048, "OPER FAILED"},
    {0x80000049, "OPER UNAVAIL"},     {0x8000004B, "RESOURCE UNAVAIL"},
    {0x80000050, "UNINIT"},
};

TEST_F(LineSessionTest, LogsWhyADeviceCannotBeNegotiatedWith) {
  telephony_.devices = {{.negotiation = 1, .version = 0x00020003}, {}};
  std::vector<CodeText> failures(std::begin(kDeviceFailures), std::end(kDeviceFailures));
  failures.insert(failures.end(), {{0x80000001, "LINE ERROR"},
                                   {0x80000040, "LINE ERROR"},
                                   {0x80000052, "LINE ERROR"},
                                   {7, "LINE ERROR"}});
  for (const auto& [code, text] : failures) {
    telephony_.devices[0].negotiation = code;
    LineSession& session = Session();
    session.InitializeLine();
    Forget();
    EXPECT_EQ(session.ChooseDevice(), 0U);
    EXPECT_THAT(host_->log,
                ElementsAre(std::string(text) + " on devNum 0 APIVerlw=3 APIVerhw=2\r\n",
                            "DevNum=1\r\nApiVer=1.4\r\n", "GetDevCaps:  DevNum=1 ApiVer=1.4\r\n"));
    EXPECT_EQ(session.OpenLine(), 0U);
    EXPECT_EQ(telephony_.calls.back(), "open 11 1 0x10004 8");
  }
}

TEST_F(LineSessionTest, ChoosesTheFirstDeviceThatTakesAutomatedVoice) {
  telephony_.devices = {{.media_modes = 0x4},
                        {.version = 0x00020001, .capabilities = 0x80000048},
                        {.version = 0x00030000, .media_modes = 0x18},
                        {}};
  LineSession& session = Session();
  session.InitializeLine();
  EXPECT_EQ(session.ChooseDevice(), 0U);
  EXPECT_THAT(
      host_->log,
      ElementsAre("DevNum=0\r\nApiVer=1.4\r\n", "GetDevCaps:  DevNum=0 ApiVer=1.4\r\n",
                  "DevNum=1\r\nApiVer=2.1\r\n", "GetDevCaps FAILED:  DevNum=1 ApiVer=2.1\r\n",
                  "DevNum=2\r\nApiVer=3.0\r\n", "GetDevCaps:  DevNum=2 ApiVer=3.0\r\n"));
  EXPECT_THAT(
      telephony_.calls,
      ElementsAre("initialize", "negotiate 11 0 0x10000 0x50000", "capabilities 11 0 0x10004 252",
                  "negotiate 11 1 0x10000 0x50000", "capabilities 11 1 0x20001 252",
                  "negotiate 11 2 0x10000 0x50000", "capabilities 11 2 0x30000 252"));
}

TEST_F(LineSessionTest, ReadsCapabilitiesThatNeedMoreRoom) {
  telephony_.devices = {{.needed_size = 700}};
  LineSession& session = Session();
  session.InitializeLine();
  EXPECT_EQ(session.ChooseDevice(), 0U);
  EXPECT_THAT(telephony_.calls,
              ElementsAre("initialize", "negotiate 11 0 0x10000 0x50000",
                          "capabilities 11 0 0x10004 252", "capabilities 11 0 0x10004 700"));
  EXPECT_THAT(system_.memory.requested, ElementsAre(252U, 700U));
  EXPECT_EQ(system_.memory.in_use(), 1U);
  EXPECT_THAT(host_->log,
              ElementsAre("DevNum=0\r\nApiVer=1.4\r\n", "GetDevCaps:  DevNum=0 ApiVer=1.4\r\n"));
}

TEST_F(LineSessionTest, GivesUpADeviceWhoseCapabilitiesAlwaysNeedMoreRoom) {
  telephony_.devices = {{.never_enough_by = 1}, {}};
  LineSession& session = Session();
  session.InitializeLine();
  EXPECT_EQ(session.ChooseDevice(), 0U);
  EXPECT_THAT(system_.memory.requested, ElementsAre(252U, 253U, 254U, 255U, 256U, 252U));
  EXPECT_EQ(system_.memory.in_use(), 1U);
  EXPECT_THAT(
      host_->log,
      ElementsAre("DevNum=0\r\nApiVer=1.4\r\n", "GetDevCaps FAILED:  DevNum=0 ApiVer=1.4\r\n",
                  "DevNum=1\r\nApiVer=1.4\r\n", "GetDevCaps:  DevNum=1 ApiVer=1.4\r\n"));
}

TEST_F(LineSessionTest, FindsNoSuitableDevice) {
  telephony_.devices = {{.media_modes = 0x4}, {.negotiation = 0x80000042, .version = 0}};
  LineSession& session = Session();
  session.InitializeLine();
  EXPECT_NE(session.ChooseDevice(), 0U);
  EXPECT_THAT(
      host_->log,
      ElementsAre("DevNum=0\r\nApiVer=1.4\r\n", "GetDevCaps:  DevNum=0 ApiVer=1.4\r\n",
                  "NO DEV on devNum 1 APIVerlw=0 APIVerhw=0\r\n", "No suitable device\r\n"));
}

TEST_F(LineSessionTest, GoesOnWithDevice0WhereNoDevicesAreCounted) {
  telephony_.devices.clear();
  LineSession& session = Session();
  session.InitializeLine();
  EXPECT_EQ(session.ChooseDevice(), 0U);
  EXPECT_EQ(session.OpenLine(), 0U);
  EXPECT_THAT(telephony_.calls, ElementsAre("initialize", "open 11 0 0 8"));
  EXPECT_THAT(host_->log, IsEmpty());
}

TEST_F(LineSessionTest, EndsTheChoiceWhenMemoryForCapabilitiesRunsOut) {
  telephony_.devices = {{}, {}};
  system_.memory.refused = {1};
  LineSession& session = Session();
  session.InitializeLine();
  EXPECT_EQ(session.ChooseDevice(), 0x80000044U);
  EXPECT_THAT(host_->log, ElementsAre("DevNum=0\r\nApiVer=1.4\r\n",
                                      "NO MEM on devNum 0 APIVerlw=4 APIVerhw=1\r\n"));
}

TEST_F(LineSessionTest, EndsTheChoiceWhenThereIsNoMemoryForWhatADriverNeeds) {
  telephony_.devices = {{.needed_size = 0xFFFFFFFF}};
  LineSession& session = Session();
  session.InitializeLine();
  EXPECT_EQ(session.ChooseDevice(), 0x80000044U);
  EXPECT_EQ(system_.memory.in_use(), 0U);
}

TEST_F(LineSessionTest, GoesOnToTheNextDeviceWhenADriverLacksMemory) {
  telephony_.devices = {{.capabilities = 0x80000044}, {}};
  LineSession& session = Session();
  session.InitializeLine();
  EXPECT_EQ(session.ChooseDevice(), 0U);
}

// OpenLine

TEST_F(LineSessionTest, OpensTheLineForAutomatedVoice) {
  LineSession& session = Session();
  session.InitializeLine();
  session.ChooseDevice();
  EXPECT_EQ(session.OpenLine(), 0U);
  EXPECT_TRUE(state_.line_open);
  const auto& parameters = telephony_.call_parameters;
  ASSERT_EQ(parameters.size(), 176U);
  EXPECT_EQ(LoadWord(parameters, 0), 176U);
  EXPECT_EQ(LoadWord(parameters, 4), 1U);
  EXPECT_EQ(LoadWord(parameters, 16), 8U);
}

TEST_F(LineSessionTest, LogsWhyTheLineCannotBeOpened) {
  telephony_.devices = {{.media_modes = 0}, {.version = 0x00020003}};
  std::vector<CodeText> failures(std::begin(kDeviceFailures), std::end(kDeviceFailures));
  failures.insert(failures.end(), {{0x80000001, "ALLOCATED"},
                                   {0x80000040, "LINE MAPPER FAILED"},
                                   {0x8000000D, "INCOMPAT EXT VER"},
                                   {0x8000002F, "INVAL MEDIA MODE"},
                                   {0x8000004D, "STRUCTURE TOO SMALL"},
                                   {0x80000036, "INVAL PRIV SELECT"},
                                   {0x80000052, "REINIT"},
                                   {0x80000056, "LINE ERROR"},
                                   {7, "LINE ERROR"}});
  for (const auto& [code, text] : failures) {
    telephony_.open = code;
    LineSession& session = Session();
    session.InitializeLine();
    session.ChooseDevice();
    Forget();
    state_.line_open = true;
    EXPECT_EQ(session.OpenLine(), code);
    EXPECT_FALSE(state_.line_open);
    EXPECT_THAT(host_->log,
                ElementsAre(std::string(text) + " on devNum 1 APIVerlw=3 APIVerhw=2\r\n"));
    session.TearDown();
    EXPECT_EQ(telephony_.calls.back(), "shutdown 11");
    EXPECT_THAT(telephony_.calls, ::testing::Not(::testing::Contains("close 22")));
  }
}

TEST_F(LineSessionTest, OpensNoLineWithoutMemoryForTheCallParameters) {
  system_.memory.refused = {2};
  LineSession& session = Session();
  session.InitializeLine();
  session.ChooseDevice();
  EXPECT_EQ(session.OpenLine(), 0x80000044U);
  EXPECT_EQ(telephony_.calls.back(), "capabilities 11 0 0x10004 252");
}

// PlaceCall

TEST_F(LineSessionTest, PlacesTheCallAndWaitsUntilItIsConnected) {
  LineSession& session = OpenSession();
  state_.call_connected = true;  // of another call
  system_.pump.events = {[&] { telephony_.Tell(2, 0x10); }, [&] { telephony_.Tell(2, 0x20); },
                         [&] { telephony_.Tell(2, 0x100); }};
  EXPECT_EQ(session.PlaceCall(), 0U);
  EXPECT_THAT(telephony_.calls, ElementsAre("make-call 22 5550100"));
  EXPECT_THAT(system_.pump.events, IsEmpty());
  EXPECT_TRUE(state_.call_connected);
  EXPECT_EQ(telephony_.call_parameters.size(), 176U);
}

TEST_F(LineSessionTest, WaitsOnThroughEverythingButAConnectionWhateverMakeCallAnswers) {
  for (const LineCode answer : {0U, 1U, 0x80000005U}) {
    LineSession& session = OpenSession();
    telephony_.make_call = answer;
    // Busy, no answer, disconnected, idle, the line closes, replies: nothing of it ends the wait.
    for (const std::uint32_t call_state : {0x40U, 0x20U, 0x4000U, 0x1U}) {
      system_.pump.events.emplace_back([=, this] { telephony_.Tell(2, call_state); });
    }
    system_.pump.events.emplace_back([this] { telephony_.Tell(3); });
    system_.pump.events.emplace_back([this] { telephony_.Tell(12, 0, 0x80000048); });
    system_.pump.events.emplace_back([this] { telephony_.Tell(12, 1, 0); });
    EXPECT_THROW(session.PlaceCall(), std::runtime_error);
    EXPECT_THAT(system_.pump.events, IsEmpty());
    EXPECT_THAT(system_.clock.waits, IsEmpty());
  }
}

TEST_F(LineSessionTest, StopsWaitingForAConnectionWhenTheLineIsNoLongerOpen) {
  LineSession& session = OpenSession();
  system_.pump.events = {[&] { state_.line_open = false; }};
  EXPECT_EQ(session.PlaceCall(), 0U);
  EXPECT_FALSE(state_.call_connected);
}

TEST_F(LineSessionTest, Dials63CharactersOfTheNumber) {
  LineSession& session = Session(5, std::string(64, '7'));
  session.InitializeLine();
  session.ChooseDevice();
  session.OpenLine();
  system_.pump.events = {[&] { telephony_.Tell(2, 0x100); }};
  session.PlaceCall();
  EXPECT_EQ(telephony_.calls.back(), "make-call 22 " + std::string(63, '7'));
}

// GetWaveDevice

TEST_F(LineSessionTest, FindsTheWaveDeviceOfTheCallAndOfTheLine) {
  LineSession& session = OpenSession();
  EXPECT_EQ(session.GetWaveDevice(CallSelect::kCall), 0U);
  EXPECT_EQ(session.wave_device(), 3U);
  EXPECT_EQ(session.GetWaveDevice(CallSelect::kLine), 0U);
  EXPECT_THAT(telephony_.calls,
              ElementsAre("get-id 22 0 4 24 wave/out", "get-id 22 0 4 28 wave/out",
                          "get-id 22 0 1 24 wave/out", "get-id 22 0 1 28 wave/out"));
}

TEST_F(LineSessionTest, TranslatesErrorsOfTheWaveDevice) {
  constexpr std::pair<LineCode, LineCode> kErrors[] = {
      {0x80000044, 0x40000000}, {0x80000011, 0x40000000}, {0x8000004B, 0x10000000},
      {0x80000048, 0x80000048}, {0x80000049, 0x80000049}, {0x80000023, 0x80000023},
  };
  LineSession& session = OpenSession();
  for (const auto& [error, answer] : kErrors) {
    telephony_.get_id = error;
    EXPECT_EQ(session.GetWaveDevice(CallSelect::kCall), answer);
  }
  EXPECT_THAT(host_->log, IsEmpty());
}

TEST_F(LineSessionTest, TakesNoWaveDeviceFromOutsideTheAnswer) {
  LineSession& session = OpenSession();
  for (const std::uint32_t offset :
       {0U, 20U, 23U, 25U, 28U, 0x7FFFFFFFU, 0xFFFFFFFCU, 0xFFFFFFFFU}) {
    telephony_.id_offset = 24;
    telephony_.id_needed_size = 28;
    telephony_.id_offset = offset;
    EXPECT_EQ(session.GetWaveDevice(CallSelect::kCall), 0x8000004DU) << offset;
  }
  telephony_.id_offset = 24;
  telephony_.id_needed_size = 24;
  EXPECT_EQ(session.GetWaveDevice(CallSelect::kCall), 0x8000004DU);
}

TEST_F(LineSessionTest, GivesUpAWaveDeviceThatAlwaysNeedsMoreRoom) {
  LineSession& session = OpenSession();
  system_.memory.requested.clear();
  telephony_.id_never_enough_by = 4;
  EXPECT_EQ(session.GetWaveDevice(CallSelect::kCall), 0x8000004DU);
  EXPECT_THAT(system_.memory.requested, ElementsAre(24U, 28U, 32U, 36U, 40U));
  EXPECT_THAT(host_->log, IsEmpty());
}

TEST_F(LineSessionTest, FindsNoWaveDeviceWithoutMemory) {
  LineSession& session = OpenSession();
  system_.memory.refused = {3, 5};
  EXPECT_EQ(session.GetWaveDevice(CallSelect::kCall), 0x80000044U);
  EXPECT_EQ(session.GetWaveDevice(CallSelect::kCall), 0x80000044U);
}

// MonitorDigits

TEST_F(LineSessionTest, LogsWhyDigitsCannotBeMonitored) {
  constexpr CodeText kFailures[] = {
      {0x80000018, "GOT LINEERR_INVALCALLHANDLE\r\n"},
      {0x8000001C, "GOT LINEERR_INVALCALLSTATE\r\n"},
      {0x80000027, "GOT LINEERR_INVALDIGITMODE\r\n"},
      {0x80000044, "GOT LINEERR_NOMEM\r\n"},
      {0x80000048, "GOT LINEERR_OPERATIONFAILED\r\n"},
      {0x80000049, "GOT LINEERR_OPERATIONUNAVAIL\r\n"},
      {0x8000004B, "GOT LINEERR_RESOURCEUNAVAIL\r\n"},
      {0x80000050, "GOT LINEERR_UNINITIALIZED\r\n"},
  };
  LineSession& session = OpenSession();
  for (const auto& [code, text] : kFailures) {
    Forget();
    telephony_.monitor_digits = code;
    EXPECT_EQ(session.MonitorDigits(), code);
    EXPECT_THAT(host_->log, ElementsAre(text));
  }
  Forget();
  telephony_.monitor_digits = 0x80000042;
  EXPECT_EQ(session.MonitorDigits(), 0x80000042U);
  EXPECT_THAT(host_->log, IsEmpty());
  telephony_.monitor_digits = 0;
  EXPECT_EQ(session.MonitorDigits(), 0U);
  EXPECT_EQ(telephony_.calls.back(), "monitor-digits 0 2");
}

// WaitForPlayback

TEST_F(LineSessionTest, DoesNotWaitWhereNothingPlays) {
  EXPECT_EQ(OpenSession().WaitForPlayback(), 0U);
  EXPECT_EQ(system_.pump.waits, 0);
}

TEST_F(LineSessionTest, WaitsUntilTheSoundHasEnded) {
  LineSession& session = OpenSession();
  Play();
  state_.playback_done = true;  // of another sound
  system_.pump.events = {[] {}, [&] { system_.wave_output.ReportDone(); }};
  EXPECT_EQ(session.WaitForPlayback(), 0x80000048U);
  EXPECT_THAT(system_.wave_output.calls, ElementsAre("unprepare", "close"));
  EXPECT_TRUE(state_.playback_done);
  EXPECT_FALSE(playback_.IsQueued());
  EXPECT_EQ(session.WaitForPlayback(), 0U);
}

TEST_F(LineSessionTest, AnswersTheReplyThatCameDuringThePlayback) {
  LineSession& session = OpenSession();
  Play();
  system_.pump.events = {[&] { telephony_.Tell(12, 1, 7); },  // somebody else's
                         [&] { telephony_.Tell(12, 0, 0x80000005); },
                         [&] { system_.wave_output.ReportDone(); }};
  EXPECT_EQ(session.WaitForPlayback(), 0x80000005U);
  EXPECT_TRUE(state_.reply_received);
}

TEST_F(LineSessionTest, WaitsForASoundThatIsDoneBefore) {
  LineSession& session = OpenSession();
  system_.wave_output.done_at_once = true;
  Play();
  EXPECT_EQ(session.WaitForPlayback(), 0x80000048U);
  EXPECT_THAT(system_.wave_output.calls, ElementsAre("unprepare", "close"));
}

TEST_F(LineSessionTest, HasFreedTheSoundWhenTheWaitEnds) {
  LineSession& session = OpenSession();
  const std::size_t before = system_.memory.in_use();
  Play();
  EXPECT_EQ(system_.memory.in_use(), before + 2);
  system_.pump.events = {[&] { system_.wave_output.ReportDone(); }};
  session.WaitForPlayback();
  EXPECT_EQ(system_.memory.in_use(), before);
}

TEST_F(LineSessionTest, GoesOnWaitingWhenTheLineCloses) {
  LineSession& session = OpenSession();
  Play();
  system_.pump.events = {[&] { telephony_.Tell(3); }, [&] { telephony_.Tell(2, 0x4000); }};
  EXPECT_THROW(session.WaitForPlayback(), std::runtime_error);
  EXPECT_THAT(system_.pump.events, IsEmpty());
  EXPECT_TRUE(state_.line_open);
}

TEST_F(LineSessionTest, StopsWaitingForASoundWhenTheLineIsNoLongerOpen) {
  LineSession& session = OpenSession();
  Play();
  system_.pump.events = {[&] { state_.line_open = false; }};
  EXPECT_EQ(session.WaitForPlayback(), 4U);
  EXPECT_TRUE(playback_.IsQueued());
}

// TearDown

TEST_F(LineSessionTest, TearsDownWhatItHasBuilt) {
  LineSession& session = OpenSession();
  session.GetWaveDevice(CallSelect::kCall);
  EXPECT_EQ(system_.memory.in_use(), 3U);
  Forget();
  state_.call_connected = state_.playback_done = state_.acknowledged = state_.reply_received = true;
  state_.last_digit = 'A';
  session.TearDown();
  EXPECT_THAT(telephony_.calls, ElementsAre("close 22", "shutdown 11"));
  EXPECT_EQ(system_.memory.in_use(), 0U);
  EXPECT_FALSE(state_.line_open || state_.call_connected || state_.playback_done ||
               state_.acknowledged || state_.reply_received);
  EXPECT_EQ(state_.last_digit, '0');
  EXPECT_THAT(system_.clock.waits, IsEmpty());
  session_.reset();
  EXPECT_THAT(telephony_.calls, ElementsAre("close 22", "shutdown 11"));
}

TEST_F(LineSessionTest, TriesToCloseAndToShutDownFiveTimesAtMost) {
  struct Trial {
    int failing;
    std::size_t tried;
  };
  for (const auto& [failing, tried] : {Trial{1, 2}, Trial{4, 5}, Trial{5, 5}, Trial{99, 5}}) {
    LineSession& session = OpenSession();
    system_.clock.waits.clear();
    telephony_.failing_closes = telephony_.failing_shutdowns = failing;
    EXPECT_EQ(session.TearDown(), failing < 5 ? 0U : 0x80000048U);
    std::vector<std::string> expected(tried, "close 22");
    expected.resize(2 * tried, "shutdown 11");
    EXPECT_EQ(telephony_.calls, expected);
    EXPECT_EQ(system_.clock.waits, std::vector<std::uint32_t>(2 * (tried - 1), 500));
  }
}

TEST_F(LineSessionTest, TearsDownWhatAnExceptionHasLeft) {
  OpenSession();
  session_.reset();
  EXPECT_THAT(telephony_.calls, ElementsAre("close 22", "shutdown 11"));
}

// Messages

TEST_F(LineSessionTest, LogsEachCallState) {
  constexpr CodeText kStates[] = {
      {0x1, "LINECALLSTATE_IDLE:  There is no call on the line.\r\n"},
      {0x2, "LINECALLSTATE_OFFERING:  An incoming call is being offered.\r\n"},
      {0x4, "LINECALLSTATE_ACCEPTED:  The incoming call has been accepted.\r\n"},
      {0x8, "LINECALLSTATE_DIALTONE:  The call is receiving a dial tone.\r\n"},
      {0x10, "LINECALLSTATE_DIALING:  The number is being dialed.\r\n"},
      {0x20, "LINECALLSTATE_RINGBACK:  The call is receiving a ringback tone.\r\n"},
      {0x40, "LINECALLSTATE_BUSY:  The call is receiving a busy tone.\r\n"},
      {0x80,
       "LINECALLSTATE_SPECIALINFO:  The call is receiving special information from the "
       "network.\r\n"},
      {0x100, "LINECALLSTATE_CONNECTED:  The call is connected to the other end.\r\n"},
      {0x200,
       "LINECALLSTATE_PROCEEDING:  The number has been dialed and the call is on its way.\r\n"},
      {0x400, "LINECALLSTATE_ONHOLD:  The call is on hold.\r\n"},
      {0x800, "LINECALLSTATE_CONFERENCED:  The call is part of a conference.\r\n"},
      {0x1000,
       "LINECALLSTATE_ONHOLDPENDCONF:  The call is on hold while it is added to a "
       "conference.\r\n"},
      {0x4000, "LINECALLSTATE_DISCONNECTED:  The other end has left the call.\r\n"},
      {0x8000, "LINECALLSTATE_UNKNOWN:  The state of the call is not known.\r\n"},
      {0x2000, "Unrecognized LINECALLSTATE Message\r\n"},
      {0, "Unrecognized LINECALLSTATE Message\r\n"},
      {0x140, "Unrecognized LINECALLSTATE Message\r\n"},
  };
  OpenSession();
  for (const auto& [call_state, text] : kStates) {
    Forget();
    state_.call_connected = false;
    telephony_.Tell(2, call_state);
    EXPECT_THAT(host_->log, ElementsAre(text));
    EXPECT_EQ(state_.call_connected, call_state == 0x100) << text;
    EXPECT_TRUE(state_.line_open);
  }
}

TEST_F(LineSessionTest, LogsEachDeviceState) {
  constexpr CodeText kStates[] = {
      {0x1, "OTHER"},
      {0x2, "RINGING"},
      {0x4, "CONNECTED"},
      {0x8, "DISCONNECTED"},
      {0x10, "MSGWAITON"},
      {0x20, "MSGWAITOFF"},
      {0x40, "INSERVICE"},
      {0x80, "OUTOFSERVICE"},
      {0x100, "MAINTENANCE"},
      {0x200, "OPEN"},
      {0x400, "CLOSE"},
      {0x800, "NUMCALLS"},
      {0x1000, "NUMCOMPLETIONS"},
      {0x2000, "TERMINALS"},
      {0x4000, "ROAMMODE"},
      {0x8000, "BATTERY"},
      {0x10000, "SIGNAL"},
      {0x20000, "DEVSPECIFIC"},
      {0x40000, "REINIT"},
      {0x80000, "LOCK"},
      {0x1000000, "REMOVED"},
  };
  OpenSession();
  for (const auto& [device_state, text] : kStates) {
    Forget();
    telephony_.Tell(8, device_state);
    EXPECT_THAT(host_->log, ElementsAre("GOT LINE_LINEDEVSTATE\r\n",
                                        "GOT LINEDEVSTATE_" + std::string(text) + "\r\n"));
  }
  for (const std::uint32_t other : {0U, 3U, 0x100000U, 0x200000U, 0x400000U, 0x800000U}) {
    Forget();
    telephony_.Tell(8, other);
    EXPECT_THAT(host_->log,
                ElementsAre("GOT LINE_LINEDEVSTATE\r\n", "GOT Unrecognized LINEDEVSTATE_MSG\r\n"));
  }
}

TEST_F(LineSessionTest, OnlyLogsTheOtherMessages) {
  constexpr CodeText kMessages[] = {
      {0, "GOT LINE_ADDRESSSTATE\r\n"}, {1, "GOT LINE_CALLINFO\r\n"},
      {3, "GOT LINE_CLOSE\r\n"},        {19, "GOT LINE_CREATE\r\n"},
      {4, "GOT LINE_DEVSPECIFIC\r\n"},  {5, "GOT LINE_DEVSPECIFICFEATURE\r\n"},
      {6, "GOT LINE_GATHERDIGITS\r\n"}, {7, "GOT LINE_GENERATE\r\n"},
      {13, "GOT LINE_REQUEST\r\n"},
  };
  OpenSession();
  for (const auto& [message, text] : kMessages) {
    Forget();
    telephony_.Tell(message, 0x100, 0);
    EXPECT_THAT(host_->log, ElementsAre(text));
    EXPECT_TRUE(state_.line_open);
    EXPECT_FALSE(state_.call_connected);
  }
  for (const std::uint32_t silent : {10U, 11U, 14U, 18U, 20U, 99U}) {
    Forget();
    telephony_.Tell(silent, 0x100, 0);
    EXPECT_THAT(host_->log, IsEmpty());
  }
}

TEST_F(LineSessionTest, LogsNothingWithoutAHost) {
  OpenSession();
  state_.host.store(nullptr);
  telephony_.Tell(2, 0x100);
  telephony_.Tell(8, 1);
  EXPECT_THAT(host_->log, IsEmpty());
  EXPECT_TRUE(state_.call_connected);
}

// For want of memory, for one.
class FailingHost final : public NotifierHost {
 public:
  Result ExpandMessage(std::string& /*text*/, EmptyText /*empty_text*/) override { return kOk; }
  void LogMessage(std::string_view) override { throw std::bad_alloc(); }
  void LogMessage(std::u16string_view) override { throw std::bad_alloc(); }
  Result GetAlertTrigger(std::uint32_t&) override { return kOk; }
};

TEST_F(LineSessionTest, KnowsOfAConnectionAlsoWhenThatCannotBeLogged) {
  OpenSession();
  state_.host = std::make_shared<FailingHost>();
  try {
    telephony_.Tell(2, 0x100);
  } catch (const std::bad_alloc&) {  // what telephony's callback keeps to itself
  }
  EXPECT_TRUE(state_.call_connected);
}

TEST_F(LineSessionTest, TakesRepliesToRequest0Alone) {
  OpenSession();
  telephony_.Tell(12, 1, 5);
  EXPECT_FALSE(state_.reply_received);
  EXPECT_EQ(state_.reply_result, 0x80000048U);
  telephony_.Tell(12, 0, 5);
  EXPECT_TRUE(state_.reply_received);
  EXPECT_EQ(state_.reply_result, 5U);
  EXPECT_THAT(host_->log, IsEmpty());
}

// Digits

bool IsMatch(std::int32_t button, char digit) {
  if (button == 99) return digit != 'A' && digit != 'D' && digit != ' ';
  if (button == 10) return digit == '*';
  if (button == 11) return digit == '#';
  return button >= 0 && button <= 9 && digit == "0123456789"[button];
}

TEST_F(LineSessionTest, TakesTheAgreedDigitForEachButton) {
  for (const std::int32_t button :
       {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 42, 48, 98, 99, 100, -1}) {
    for (const char digit :
         {'0', '1', '2', '3', '4', '5', '6', '7', '8', '9', '*', '#', 'A', 'D', ' '}) {
      OpenSession(button);
      state_.acknowledged = false;
      state_.last_digit = '0';
      telephony_.Tell(9, static_cast<std::uint32_t>(digit));
      EXPECT_EQ(state_.acknowledged, IsMatch(button, digit)) << button << ' ' << digit;
      const bool no_key = digit == 'A' || digit == 'D' || digit == ' ';
      EXPECT_EQ(state_.last_digit, no_key ? digit : '0');
      if (IsMatch(button, digit)) {
        EXPECT_THAT(telephony_.calls, ElementsAre("monitor-digits 0 0"));
      } else {
        EXPECT_THAT(telephony_.calls, IsEmpty());
      }
    }
  }
}

TEST_F(LineSessionTest, TakesTheDigitFromTheLowestByte) {
  OpenSession(7);
  telephony_.Tell(9, 0xFFFFFF00U | '7');
  EXPECT_TRUE(state_.acknowledged);
}

TEST_F(LineSessionTest, CutsTheSoundShortForTheKeyAndEndsTheWait) {
  LineSession& session = OpenSession(99);
  Play();
  system_.pump.events = {[&] { telephony_.Tell(9, 'B'); }, [&] { telephony_.Tell(9, '#'); }};
  EXPECT_EQ(session.WaitForPlayback(), 0x80000048U);
  EXPECT_THAT(telephony_.calls, ElementsAre("monitor-digits 0 0"));
  EXPECT_THAT(system_.wave_output.calls, ElementsAre("reset", "message 957", "unprepare", "close"));
  EXPECT_TRUE(state_.acknowledged);
}

TEST_F(LineSessionTest, TakesTheKeyAlsoWhereNothingPlays) {
  OpenSession(5);
  telephony_.Tell(9, '5');
  EXPECT_TRUE(state_.acknowledged);
  EXPECT_THAT(system_.wave_output.calls, IsEmpty());
}

// The probe

TEST_F(LineSessionTest, ProbesUpToTheWaveDeviceOfTheLine) {
  state_.host.store(nullptr);
  EXPECT_TRUE(ProbeLine(system_.system, state_));
  EXPECT_THAT(
      telephony_.calls,
      ElementsAre("initialize", "negotiate 11 0 0x10000 0x50000", "capabilities 11 0 0x10004 252",
                  "open 11 0 0x10004 8", "get-id 22 0 1 24 wave/out", "get-id 22 0 1 28 wave/out",
                  "close 22", "shutdown 11"));
  EXPECT_EQ(system_.pump.waits, 0);
  EXPECT_EQ(system_.memory.in_use(), 0U);
  EXPECT_FALSE(state_.line_open);
}

TEST_F(LineSessionTest, FailsTheProbeWhereTelephonyIsMissing) {
  telephony_.initialize = 0x80000049;
  EXPECT_FALSE(ProbeLine(system_.system, state_));
  EXPECT_THAT(telephony_.calls, ElementsAre("initialize"));
}

TEST_F(LineSessionTest, FailsTheProbeOfALineThatCannotBeClosed) {
  telephony_.failing_closes = 5;
  EXPECT_FALSE(ProbeLine(system_.system, state_));
  telephony_.failing_closes = 0;
  telephony_.failing_shutdowns = 5;
  EXPECT_FALSE(ProbeLine(system_.system, state_));
  telephony_.failing_closes = telephony_.failing_shutdowns = 4;
  EXPECT_TRUE(ProbeLine(system_.system, state_));
}

TEST_F(LineSessionTest, FailsTheProbeAtEachStepAndTearsDown) {
  telephony_.devices = {{.media_modes = 4}};
  EXPECT_FALSE(ProbeLine(system_.system, state_));
  EXPECT_EQ(telephony_.calls.back(), "shutdown 11");
  telephony_.devices = {{}};
  telephony_.open = 0x80000001;
  EXPECT_FALSE(ProbeLine(system_.system, state_));
  EXPECT_EQ(telephony_.calls.back(), "shutdown 11");
  telephony_.open = 0;
  telephony_.get_id = 0x80000048;
  EXPECT_FALSE(ProbeLine(system_.system, state_));
  EXPECT_THAT(telephony_.calls, ::testing::Contains("close 22"));
  EXPECT_EQ(telephony_.calls.back(), "shutdown 11");
}

}  // namespace
}  // namespace brantel
