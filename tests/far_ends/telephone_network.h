#pragma once

#include <windows.h>
#include <mmsystem.h>
#include <tapi.h>

#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "sim/telephone_exchange.h"
#include "sim/timeline.h"
#include "sim/transcript.h"
#include "tests/far_ends/driver_thread.h"
#include "tests/far_ends/simulated_time.h"
#include "tests/far_ends/stand_in_libraries.h"
#include "tests/module/import_patch.h"

namespace brantel {

// A telephone line behind a simulated exchange, with a wave device, for the module alone and while
// this lives. Whoever is called answers after a second, listens, and presses 1 four seconds after
// the call was placed. Time is simulated: it passes while the module waits for its messages. What
// happens on the line comes by messages of the thread that called lineInitialize, the ends of
// sounds on a thread of the driver's. A call in the course of which a key was heard is a delivery
// of the thread that placed it: its number and, for each sound that was heard to its end, the
// sound's first byte. There can be one network and one call at a time.
class TelephoneNetwork {
 public:
  explicit TelephoneNetwork(HMODULE module);
  TelephoneNetwork(const TelephoneNetwork&) = delete;
  TelephoneNetwork& operator=(const TelephoneNetwork&) = delete;
  ~TelephoneNetwork();

  static std::vector<LibraryEntry> Entries();

  [[nodiscard]] bool IsIdle() const { return window_ == nullptr && waves_.empty(); }
  // Whether a wait would never have ended. It was ended by somebody who answers.
  [[nodiscard]] bool has_waited_for_ever() const { return has_waited_for_ever_; }
  [[nodiscard]] sim::Time time_passed() const { return plan_.now(); }

 private:
  struct OpenWave {
    DWORD_PTR callback = 0;
    DWORD_PTR instance = 0;
    DWORD bytes_per_second = 0;
    WAVEHDR* queued = nullptr;
    sim::Timeline::Ticket end;
  };

  static LONG WINAPI OnInitialize(LPHLINEAPP application, HINSTANCE, LINECALLBACK callback, LPCSTR,
                                  LPDWORD count);
  static LONG WINAPI OnNegotiate(HLINEAPP, DWORD device, DWORD lowest, DWORD highest,
                                 LPDWORD version, LPLINEEXTENSIONID);
  static LONG WINAPI OnGetCapabilities(HLINEAPP, DWORD device, DWORD, DWORD, LPLINEDEVCAPS);
  static LONG WINAPI OnOpen(HLINEAPP, DWORD device, LPHLINE line, DWORD, DWORD, DWORD_PTR,
                            DWORD privileges, DWORD media_modes, LPLINECALLPARAMS const);
  static LONG WINAPI OnMakeCall(HLINE line, LPHCALL call, LPCSTR number, DWORD,
                                LPLINECALLPARAMS const);
  static LONG WINAPI OnGetId(HLINE line, DWORD, HCALL call, DWORD select, LPVARSTRING id,
                             LPCSTR device_class);
  static LONG WINAPI OnMonitorDigits(HCALL call, DWORD modes);
  static LONG WINAPI OnCloseLine(HLINE line);
  static LONG WINAPI OnShutdown(HLINEAPP application);
  static LRESULT CALLBACK HandleMessage(HWND window, UINT message, WPARAM first, LPARAM second);

  static MMRESULT WINAPI OnWaveOpen(HWAVEOUT* device, UINT number, const WAVEFORMATEX* format,
                                    DWORD_PTR callback, DWORD_PTR instance, DWORD flags);
  static MMRESULT WINAPI OnWavePrepare(HWAVEOUT device, WAVEHDR* header, UINT size);
  static MMRESULT WINAPI OnWaveWrite(HWAVEOUT device, WAVEHDR* header, UINT size);
  static MMRESULT WINAPI OnWaveReset(HWAVEOUT device);
  static MMRESULT WINAPI OnWaveUnprepare(HWAVEOUT device, WAVEHDR* header, UINT size);
  static MMRESULT WINAPI OnWaveMessage(HWAVEOUT device, UINT message, DWORD_PTR, DWORD_PTR);
  static MMRESULT WINAPI OnWaveClose(HWAVEOUT device);

  static DWORD WINAPI OnAwaitInput(DWORD count, const HANDLE* handles, DWORD timeout, DWORD mask,
                                   DWORD flags);

  void StartListening(LINECALLBACK callback);
  void StopListening();
  void Tell(const sim::ExchangeMessage& message);
  void TellNext();
  void PassTime(DWORD limit);
  void AnswerAfterAll();
  void NoteCall();
  // Nothing for a device that is not open.
  OpenWave* WaveOf(HWAVEOUT device);
  void EndWave(HWAVEOUT device, OpenWave& wave);

  sim::Timeline plan_;
  std::ostringstream text_;
  sim::Transcript transcript_{text_, plan_};
  sim::TelephoneExchange exchange_;
  DriverThread driver_;
  HWND window_ = nullptr;
  LINECALLBACK callback_ = nullptr;
  std::deque<sim::ExchangeMessage> untold_;
  std::optional<OnSimulatedTime> on_time_;
  std::set<std::unique_ptr<OpenWave>> waves_;
  std::string number_;
  bool was_key_pressed_ = false;
  std::vector<unsigned> heard_;
  bool has_waited_for_ever_ = false;

  std::vector<std::unique_ptr<ImportPatch>> patches_;
};

}  // namespace brantel
