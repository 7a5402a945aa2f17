#include "tests/far_ends/telephone_network.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "tests/far_ends/deliveries.h"

namespace brantel {
namespace {

using sim::ExchangeEvent;
using sim::ExchangeLine;
using sim::ExchangeMessage;
using sim::ExchangeScript;
using sim::TelephoneExchange;
using sim::Time;

TelephoneNetwork* telephone_network = nullptr;

constexpr const char* kTelephonyLibrary = "TAPI32.DLL";
constexpr const char* kWindowClass = "Telephone network of the tests";
constexpr UINT kTellMessage = WM_APP;
// Nobody waits so long.
constexpr Time kForEver = std::chrono::hours(24);

ExchangeEvent CallStateEvent(Time delay, DWORD state) {
  return {.delay = delay, .message = {.kind = LINE_CALLSTATE, .first = state}};
}

ExchangeScript AnsweringPerson() {
  constexpr Time kRings{300};
  constexpr Time kAnswers{1000};
  constexpr Time kPressesKey{4000};
  ExchangeScript script;
  script.events = {CallStateEvent(kRings, LINECALLSTATE_RINGBACK),
                   CallStateEvent(kAnswers, LINECALLSTATE_CONNECTED),
                   {.delay = kPressesKey, .key = '1'}};
  return script;
}

template <typename Function>
void* Address(Function* function) {
  return reinterpret_cast<void*>(function);
}

LONG Code(TelephoneExchange::Code code) {
  return static_cast<LONG>(code);
}

}  // namespace

TelephoneNetwork::TelephoneNetwork(HMODULE module)
    : exchange_(AnsweringPerson(), plan_, transcript_,
                [this](const ExchangeMessage& message) { Tell(message); }) {
  const std::pair<const char*, void*> replacements[] = {
      {"waveOutOpen", Address(&OnWaveOpen)},
      {"waveOutPrepareHeader", Address(&OnWavePrepare)},
      {"waveOutWrite", Address(&OnWaveWrite)},
      {"waveOutReset", Address(&OnWaveReset)},
      {"waveOutUnprepareHeader", Address(&OnWaveUnprepare)},
      {"waveOutMessage", Address(&OnWaveMessage)},
      {"waveOutClose", Address(&OnWaveClose)},
      {"MsgWaitForMultipleObjectsEx", Address(&OnAwaitInput)},
  };
  for (const auto& [name, function] : replacements) {
    patches_.push_back(std::make_unique<ImportPatch>(module, name, function));
  }
  WNDCLASSA window_class{};
  window_class.lpfnWndProc = &HandleMessage;
  window_class.hInstance = GetModuleHandleA(nullptr);
  window_class.lpszClassName = kWindowClass;
  RegisterClassA(&window_class);
  telephone_network = this;
}

TelephoneNetwork::~TelephoneNetwork() {
  telephone_network = nullptr;
  UnregisterClassA(kWindowClass, GetModuleHandleA(nullptr));
}

std::vector<LibraryEntry> TelephoneNetwork::Entries() {
  return {{kTelephonyLibrary, "lineInitialize", Address(&OnInitialize)},
          {kTelephonyLibrary, "lineNegotiateAPIVersion", Address(&OnNegotiate)},
          {kTelephonyLibrary, "lineGetDevCapsA", Address(&OnGetCapabilities)},
          {kTelephonyLibrary, "lineOpenA", Address(&OnOpen)},
          {kTelephonyLibrary, "lineMakeCallA", Address(&OnMakeCall)},
          {kTelephonyLibrary, "lineGetIDA", Address(&OnGetId)},
          {kTelephonyLibrary, "lineMonitorDigits", Address(&OnMonitorDigits)},
          {kTelephonyLibrary, "lineClose", Address(&OnCloseLine)},
          {kTelephonyLibrary, "lineShutdown", Address(&OnShutdown)}};
}

// Telephony

LONG TelephoneNetwork::OnInitialize(LPHLINEAPP application, HINSTANCE, LINECALLBACK callback,
                                    LPCSTR, LPDWORD count) {
  std::uint32_t lines = 0;
  const auto error = telephone_network->exchange_.Initialize(lines);
  if (error != 0) return Code(error);
  telephone_network->StartListening(callback);
  *application = TelephoneExchange::kApplication;
  *count = lines;
  return 0;
}

LONG TelephoneNetwork::OnNegotiate(HLINEAPP, DWORD device, DWORD lowest, DWORD highest,
                                   LPDWORD version, LPLINEEXTENSIONID) {
  std::uint32_t negotiated = 0;
  const auto error = telephone_network->exchange_.Negotiate(device, lowest, highest, negotiated);
  *version = negotiated;
  return Code(error);
}

LONG TelephoneNetwork::OnGetCapabilities(HLINEAPP, DWORD device, DWORD, DWORD,
                                         LPLINEDEVCAPS capabilities) {
  const ExchangeLine* line = nullptr;
  const auto error = telephone_network->exchange_.ReadCapabilities(device, line);
  if (error != 0) return Code(error);
  capabilities->dwNeededSize = capabilities->dwUsedSize = sizeof *capabilities;
  if (capabilities->dwTotalSize < sizeof *capabilities) return 0;
  capabilities->dwMediaModes = line->media_modes;
  return 0;
}

LONG TelephoneNetwork::OnOpen(HLINEAPP, DWORD device, LPHLINE line, DWORD, DWORD, DWORD_PTR,
                              DWORD privileges, DWORD media_modes, LPLINECALLPARAMS const) {
  const auto error = telephone_network->exchange_.Open(device, media_modes, privileges);
  if (error == 0) *line = TelephoneExchange::kLine;
  return Code(error);
}

LONG TelephoneNetwork::OnMakeCall(HLINE line, LPHCALL call, LPCSTR number, DWORD,
                                  LPLINECALLPARAMS const) {
  telephone_network->number_ = number;
  return Code(telephone_network->exchange_.MakeCall(
      line, number, reinterpret_cast<std::uint32_t&>(*call), Time(0)));
}

LONG TelephoneNetwork::OnGetId(HLINE line, DWORD, HCALL call, DWORD select, LPVARSTRING id,
                               LPCSTR device_class) {
  const auto error = telephone_network->exchange_.GetWaveDevice(line, call, select, device_class);
  if (error != 0) return Code(error);
  constexpr DWORD kNeeded = sizeof(VARSTRING) + sizeof(DWORD);
  id->dwNeededSize = kNeeded;
  if (id->dwTotalSize < kNeeded) return 0;
  id->dwUsedSize = kNeeded;
  id->dwStringFormat = STRINGFORMAT_BINARY;
  id->dwStringSize = sizeof(DWORD);
  id->dwStringOffset = sizeof(VARSTRING);
  std::memset(id + 1, 0, sizeof(DWORD));
  return 0;
}

LONG TelephoneNetwork::OnMonitorDigits(HCALL call, DWORD modes) {
  return Code(telephone_network->exchange_.MonitorDigits(call, modes));
}

LONG TelephoneNetwork::OnCloseLine(HLINE line) {
  telephone_network->NoteCall();
  return Code(telephone_network->exchange_.Close(line));
}

LONG TelephoneNetwork::OnShutdown(HLINEAPP application) {
  const auto error = telephone_network->exchange_.Shutdown(application);
  if (error == 0) telephone_network->StopListening();
  return Code(error);
}

void TelephoneNetwork::StartListening(LINECALLBACK callback) {
  StopListening();
  text_.str({});
  callback_ = callback;
  on_time_.emplace(plan_);
  window_ = CreateWindowA(kWindowClass, "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                          GetModuleHandleA(nullptr), nullptr);
}

void TelephoneNetwork::StopListening() {
  if (window_ == nullptr) return;
  DestroyWindow(std::exchange(window_, nullptr));
  callback_ = nullptr;
  untold_.clear();
  on_time_.reset();
}

void TelephoneNetwork::Tell(const ExchangeMessage& message) {
  if (window_ == nullptr) return;
  if (message.kind == LINE_MONITORDIGITS) was_key_pressed_ = true;
  untold_.push_back(message);
  PostMessageA(window_, kTellMessage, 0, 0);
}

LRESULT TelephoneNetwork::HandleMessage(HWND window, UINT message, WPARAM first, LPARAM second) {
  if (message != kTellMessage) return DefWindowProcA(window, message, first, second);
  telephone_network->TellNext();
  return 0;
}

void TelephoneNetwork::TellNext() {
  if (untold_.empty()) return;
  const ExchangeMessage message = untold_.front();
  untold_.pop_front();
  callback_(TelephoneExchange::kCall, message.kind, 0, message.first, message.second,
            message.third);
}

void TelephoneNetwork::NoteCall() {
  if (std::exchange(was_key_pressed_, false)) {
    std::ostringstream delivery;
    delivery << "call to " << number_ << " heard";
    for (const unsigned sound : heard_)
      delivery << ' ' << sound;
    NoteDelivery(delivery.str());
  }
  number_.clear();
  heard_.clear();
}

// Time

DWORD TelephoneNetwork::OnAwaitInput(DWORD count, const HANDLE* handles, DWORD timeout, DWORD mask,
                                     DWORD flags) {
  const DWORD now = MsgWaitForMultipleObjectsEx(count, handles, 0, mask, flags);
  if (now != WAIT_TIMEOUT) return now;
  telephone_network->PassTime(timeout);
  return MsgWaitForMultipleObjectsEx(count, handles, 0, mask, flags);
}

void TelephoneNetwork::PassTime(DWORD limit) {
  const auto next = plan_.NextTime();
  if (!next) return AnswerAfterAll();
  plan_.AdvanceTo(std::min(*next, plan_.now() + Time(limit)));
}

// Nothing will ever happen: in place of a wait without an end, a day passes.
void TelephoneNetwork::AnswerAfterAll() {
  has_waited_for_ever_ = true;
  plan_.AdvanceTo(plan_.now() + kForEver);
  Tell({.kind = LINE_CALLSTATE, .first = LINECALLSTATE_CONNECTED});
}

// Waves

TelephoneNetwork::OpenWave* TelephoneNetwork::WaveOf(HWAVEOUT device) {
  const auto found = std::ranges::find_if(waves_, [&](const std::unique_ptr<OpenWave>& wave) {
    return reinterpret_cast<HWAVEOUT>(wave.get()) == device;
  });
  return found == waves_.end() ? nullptr : found->get();
}

MMRESULT TelephoneNetwork::OnWaveOpen(HWAVEOUT* device, UINT, const WAVEFORMATEX* format,
                                      DWORD_PTR callback, DWORD_PTR instance, DWORD flags) {
  if (format->nAvgBytesPerSec == 0) return WAVERR_BADFORMAT;
  if ((flags & WAVE_FORMAT_QUERY) != 0) return MMSYSERR_NOERROR;
  auto wave = std::make_unique<OpenWave>(OpenWave{.callback = callback,
                                                  .instance = instance,
                                                  .bytes_per_second = format->nAvgBytesPerSec,
                                                  .queued = nullptr,
                                                  .end = {}});
  *device = reinterpret_cast<HWAVEOUT>(wave.get());
  telephone_network->waves_.insert(std::move(wave));
  return MMSYSERR_NOERROR;
}

MMRESULT TelephoneNetwork::OnWavePrepare(HWAVEOUT device, WAVEHDR* header, UINT size) {
  if (telephone_network->WaveOf(device) == nullptr) return MMSYSERR_INVALHANDLE;
  if (size < sizeof *header) return MMSYSERR_INVALPARAM;
  header->dwFlags |= WHDR_PREPARED;
  return MMSYSERR_NOERROR;
}

MMRESULT TelephoneNetwork::OnWaveWrite(HWAVEOUT device, WAVEHDR* header, UINT) {
  OpenWave* const wave = telephone_network->WaveOf(device);
  if (wave == nullptr) return MMSYSERR_INVALHANDLE;
  if ((header->dwFlags & WHDR_PREPARED) == 0) return WAVERR_UNPREPARED;
  if (wave->queued != nullptr) return WAVERR_STILLPLAYING;
  constexpr DWORD kMilliseconds = 1000;
  header->dwFlags = (header->dwFlags | WHDR_INQUEUE) & ~DWORD{WHDR_DONE};
  wave->queued = header;
  const Time length(std::uint64_t{header->dwBufferLength} * kMilliseconds / wave->bytes_per_second);
  wave->end = telephone_network->plan_.After(length, [device, wave] {
    telephone_network->heard_.push_back(static_cast<unsigned char>(*wave->queued->lpData));
    telephone_network->EndWave(device, *wave);
  });
  return MMSYSERR_NOERROR;
}

void TelephoneNetwork::EndWave(HWAVEOUT device, OpenWave& wave) {
  WAVEHDR* const header = std::exchange(wave.queued, nullptr);
  header->dwFlags = (header->dwFlags | WHDR_DONE) & ~DWORD{WHDR_INQUEUE};
  using Callback = void(CALLBACK*)(HWAVEOUT, UINT, DWORD_PTR, DWORD_PTR, DWORD_PTR);
  const auto callback = reinterpret_cast<Callback>(wave.callback);
  driver_.Run(
      [&] { callback(device, WOM_DONE, wave.instance, reinterpret_cast<DWORD_PTR>(header), 0); });
}

MMRESULT TelephoneNetwork::OnWaveReset(HWAVEOUT device) {
  OpenWave* const wave = telephone_network->WaveOf(device);
  if (wave == nullptr) return MMSYSERR_INVALHANDLE;
  telephone_network->plan_.Cancel(wave->end);
  if (wave->queued != nullptr) telephone_network->EndWave(device, *wave);
  return MMSYSERR_NOERROR;
}

MMRESULT TelephoneNetwork::OnWaveUnprepare(HWAVEOUT device, WAVEHDR* header, UINT) {
  if (telephone_network->WaveOf(device) == nullptr) return MMSYSERR_INVALHANDLE;
  if ((header->dwFlags & WHDR_INQUEUE) != 0) return WAVERR_STILLPLAYING;
  header->dwFlags &= ~DWORD{WHDR_PREPARED};
  return MMSYSERR_NOERROR;
}

MMRESULT TelephoneNetwork::OnWaveMessage(HWAVEOUT, UINT, DWORD_PTR, DWORD_PTR) {
  return MMSYSERR_NOTSUPPORTED;
}

MMRESULT TelephoneNetwork::OnWaveClose(HWAVEOUT device) {
  OpenWave* const wave = telephone_network->WaveOf(device);
  if (wave == nullptr) return MMSYSERR_INVALHANDLE;
  if (wave->queued != nullptr) return WAVERR_STILLPLAYING;
  std::erase_if(telephone_network->waves_,
                [&](const std::unique_ptr<OpenWave>& open) { return open.get() == wave; });
  return MMSYSERR_NOERROR;
}

}  // namespace brantel
