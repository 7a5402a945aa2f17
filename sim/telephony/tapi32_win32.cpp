// tapi32.dll: a telephone exchange in the place of the system's telephony. The environment names
// its script and where the transcript goes:
//   TELEPHONE_EXCHANGE               the script; without one there is a line that never answers
//   TELEPHONE_EXCHANGE_TRANSCRIPT    what happens is appended to this file
//   TELEPHONE_EXCHANGE_DELAYS        how long each message to the caller took is appended to this
//   one
// What it tells comes by messages of the thread that called lineInitialize, which another thread
// posts, as with the system's.
#include <windows.h>
#include <tapi.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "sim/telephone_exchange.h"

namespace brantel::sim {
namespace {

constexpr DWORD kPauseBetweenLooksAtKeys = 10;  // milliseconds
constexpr const char* kWindowClass = "TelephoneExchange";

// That something may have happened. Its second parameter is the time, by the clock of TimeStamp.
constexpr UINT kTimeMessage = WM_APP;

HINSTANCE own_module = nullptr;

std::string FromEnvironment(const char* name) {
  std::array<char, 32768> value{};
  const DWORD length = GetEnvironmentVariableA(name, value.data(), value.size());
  return length < value.size() ? std::string(value.data(), length) : std::string();
}

std::string ReadFile(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

ExchangeScript ReadScript() {
  const std::string path = FromEnvironment("TELEPHONE_EXCHANGE");
  return path.empty() ? ExchangeScript{} : ParseExchangeScript(ReadFile(path));
}

std::int64_t TimeStamp() {
  LARGE_INTEGER count{};
  QueryPerformanceCounter(&count);
  return count.QuadPart;
}

std::int64_t ToMicroseconds(std::int64_t count) {
  LARGE_INTEGER per_second{};
  QueryPerformanceFrequency(&per_second);
  constexpr std::int64_t kMicroseconds = 1000000;
  return count * kMicroseconds / per_second.QuadPart;
}

// Not GetTickCount, whose steps are longer the busier the machine is: the times in a transcript
// would be closer to each other than what they are the times of.
DWORD Milliseconds() {
  constexpr std::int64_t kMicroseconds = 1000;
  return static_cast<DWORD>(ToMicroseconds(TimeStamp()) / kMicroseconds);
}

// A thread that tells a window when something is due. It costs next to nothing meanwhile: what the
// caller's program costs is measured with it inside.
class Alarm {
 public:
  explicit Alarm(const ExchangeScript& script)
      : keys_file_(script.keys_file),
        tell_(script.sends_messages ? &SendNotifyMessageA : &PostMessageA),
        keys_size_(KeysSize()) {}

  void Start(HWND window) {
    window_ = window;
    is_ending_ = false;
    thread_ = CreateThread(nullptr, 0, &Run, this, 0, nullptr);
  }

  void Stop() {
    is_ending_ = true;
    SetEvent(changed_);
    WaitForSingleObject(thread_, INFINITE);
    CloseHandle(thread_);
  }

  // When something is due next, by Milliseconds(); nothing: not at all.
  void Set(std::optional<DWORD> due) {
    due_ = due ? std::int64_t{*due} : kNever;
    SetEvent(changed_);
  }

 private:
  static constexpr std::int64_t kNever = -1;

  static DWORD WINAPI Run(void* self) {
    static_cast<Alarm*>(self)->Watch();
    return 0;
  }

  void Watch() {
    while (!is_ending_) {
      WaitForSingleObject(changed_, Pause());
      if (IsDue() || HasNewKeys())
        tell_(window_, kTimeMessage, 0, static_cast<LPARAM>(TimeStamp()));
    }
  }

  [[nodiscard]] DWORD Pause() const {
    const DWORD longest = keys_file_.empty() ? INFINITE : kPauseBetweenLooksAtKeys;
    const std::int64_t due = due_;
    if (due == kNever) return longest;
    const auto left = static_cast<std::int32_t>(static_cast<DWORD>(due) - Milliseconds());
    return std::min<DWORD>(longest, static_cast<DWORD>(std::max(left, std::int32_t{1})));
  }

  // Only once for each time that is set.
  bool IsDue() {
    std::int64_t due = due_;
    if (due == kNever) return false;
    const auto left = static_cast<std::int32_t>(static_cast<DWORD>(due) - Milliseconds());
    return left <= 0 && due_.compare_exchange_strong(due, kNever);
  }

  bool HasNewKeys() {
    const DWORD size = KeysSize();
    return std::exchange(keys_size_, size) != size;
  }

  [[nodiscard]] DWORD KeysSize() const {
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!keys_file_.empty()) {
      GetFileAttributesExA(keys_file_.c_str(), GetFileExInfoStandard, &data);
    }
    return data.nFileSizeLow;
  }

  const std::string keys_file_;
  BOOL(WINAPI* const tell_)(HWND, UINT, WPARAM, LPARAM);
  DWORD keys_size_;
  HANDLE const changed_ = CreateEventW(nullptr, FALSE, FALSE, nullptr);
  HANDLE thread_ = nullptr;
  HWND window_ = nullptr;
  std::atomic<bool> is_ending_ = false;
  std::atomic<std::int64_t> due_ = kNever;
};

// What is told, and to whom.
struct Listener {
  LINECALLBACK callback = nullptr;
  DWORD_PTR instance = 0;
};

// The exchange on the time of day.
class RunningExchange {
 public:
  RunningExchange()
      : exchange_(ReadScript(), plan_, transcript_,
                  [this](const ExchangeMessage& message) { TellListener(message); }),
        alarm_(exchange_.script()) {
    std::array<char, MAX_PATH> path{};
    GetModuleFileNameA(own_module, path.data(), MAX_PATH);
    transcript_.Note("line", std::string("is served by ") + path.data());
    if (const std::string& keys = exchange_.script().keys_file; !keys.empty()) {
      keys_read_ = ReadFile(keys).size();
    }
  }

  // The exchange as of now.
  TelephoneExchange& Now() {
    clock_.AdvanceTo(Elapsed());
    return exchange_;
  }

  [[nodiscard]] Time Lateness() const { return clock_.now() - plan_.now(); }

  bool Listen(LINECALLBACK callback) {
    listener_ = {callback, 0};
    if (window_ == nullptr) {
      WNDCLASSA window_class{};
      window_class.lpfnWndProc = &HandleMessage;
      window_class.hInstance = own_module;
      window_class.lpszClassName = kWindowClass;
      RegisterClassA(&window_class);
      window_ = CreateWindowA(kWindowClass, "", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, own_module,
                              nullptr);
      if (window_ != nullptr) alarm_.Start(window_);
    }
    return window_ != nullptr;
  }

  // To be called when something may have been planned.
  void SetAlarm() {
    const auto next = plan_.NextTime();
    if (next) {
      alarm_.Set(started_ + static_cast<DWORD>(next->count()));
    } else {
      alarm_.Set(std::nullopt);
    }
  }

  // Whether a function has enough room in what it is given.
  [[nodiscard]] bool HasEnough(std::string_view function) const {
    return !exchange_.script().never_enough.contains(function);
  }

  void NameInstance(DWORD_PTR instance) { listener_.instance = instance; }

  void StopListening() {
    listener_ = {};
    if (window_ == nullptr) return;
    alarm_.Stop();
    DestroyWindow(window_);
    window_ = nullptr;
  }

 private:
  static LRESULT CALLBACK HandleMessage(HWND window, UINT message, WPARAM first, LPARAM second);

  [[nodiscard]] Time Elapsed() const { return Time(Milliseconds() - started_); }

  void LookAtTime(LPARAM told) {
    if (delays_) {
      const auto counts =
          static_cast<std::uint32_t>(TimeStamp()) - static_cast<std::uint32_t>(told);
      delays_ << ToMicroseconds(counts) << std::endl;
    }
    clock_.AdvanceTo(Elapsed());
    plan_.AdvanceTo(Elapsed());
    SetAlarm();
    if (!exchange_.script().keys_file.empty()) PressNewKeys();
  }

  void PressNewKeys() {
    const std::string keys = ReadFile(exchange_.script().keys_file);
    for (; keys_read_ < keys.size(); ++keys_read_) {
      const char key = keys[keys_read_];
      if (key != '\r' && key != '\n') exchange_.PressKey(key);
    }
  }

  void TellListener(const ExchangeMessage& message) const {
    if (listener_.callback == nullptr) return;
    listener_.callback(TelephoneExchange::kCall, message.kind, listener_.instance, message.first,
                       message.second, message.third);
  }

  const DWORD started_ = Milliseconds();
  Timeline clock_;  // on which nothing is planned
  Timeline plan_;
  std::ofstream stream_{FromEnvironment("TELEPHONE_EXCHANGE_TRANSCRIPT"), std::ios::app};
  Transcript transcript_{stream_, clock_};
  std::ofstream delays_{FromEnvironment("TELEPHONE_EXCHANGE_DELAYS"), std::ios::app};
  TelephoneExchange exchange_;
  Alarm alarm_;
  Listener listener_;
  HWND window_ = nullptr;
  std::size_t keys_read_ = 0;
};

// Made for the first function that is called. It is never ended: the library stays until the
// process ends.
RunningExchange& Exchange() {
  static auto* const exchange = new RunningExchange;
  return *exchange;
}

LRESULT CALLBACK RunningExchange::HandleMessage(HWND window, UINT message, WPARAM first,
                                                LPARAM second) {
  if (message == kTimeMessage) {
    Exchange().LookAtTime(second);
    return 0;
  }
  return DefWindowProcA(window, message, first, second);
}

// A caller must not meet an exception: a script that cannot be read is an exchange out of order.
template <typename Body>
LONG Guard(Body body) noexcept {
  try {
    return static_cast<LONG>(body(Exchange()));
  } catch (const std::exception& error) {
    OutputDebugStringA(error.what());
    return static_cast<LONG>(LINEERR_OPERATIONFAILED);
  }
}

// A byte more than there is.
DWORD NeverEnough(DWORD total) {
  return total + 1;
}

void FillCapabilities(const ExchangeLine& line, bool has_enough, LINEDEVCAPS& capabilities) {
  const DWORD total = capabilities.dwTotalSize;
  constexpr DWORD kFixedSize = 252;
  const DWORD needed =
      has_enough ? std::max<DWORD>(line.capabilities_size, kFixedSize) : NeverEnough(total);
  capabilities.dwNeededSize = needed;
  capabilities.dwUsedSize = std::min(total, needed);
  // A caller with too little room learns no more than that.
  if (total < needed) return;
  capabilities.dwNumAddresses = 1;
  capabilities.dwBearerModes = LINEBEARERMODE_VOICE;
  capabilities.dwMediaModes = line.media_modes;
  capabilities.dwMonitorDigitModes = LINEDIGITMODE_DTMF;
}

void FillWaveDevice(std::uint32_t device, bool has_enough, VARSTRING& id) {
  const DWORD total = id.dwTotalSize;
  const DWORD needed = has_enough ? sizeof(VARSTRING) + sizeof(DWORD) : NeverEnough(total);
  id.dwNeededSize = needed;
  id.dwUsedSize = sizeof(VARSTRING);
  if (total < needed) return;
  id.dwUsedSize = needed;
  id.dwStringFormat = STRINGFORMAT_BINARY;
  id.dwStringSize = sizeof(DWORD);
  id.dwStringOffset = sizeof(VARSTRING);
  std::memcpy(reinterpret_cast<char*>(&id) + sizeof(VARSTRING), &device, sizeof device);
}

}  // namespace
}  // namespace brantel::sim

using brantel::sim::ExchangeLine;
using brantel::sim::Guard;
using brantel::sim::RunningExchange;
using brantel::sim::TelephoneExchange;

// The declarations have names of another style and constants where they mean what they point to.
// NOLINTBEGIN(*-inconsistent-declaration-parameter-name, misc-misplaced-const)
extern "C" {

BOOL WINAPI DllMain(HINSTANCE instance, DWORD reason, void*) {
  if (reason == DLL_PROCESS_ATTACH) brantel::sim::own_module = instance;
  return TRUE;
}

LONG WINAPI lineInitialize(LPHLINEAPP application, HINSTANCE, LINECALLBACK callback, LPCSTR,
                           LPDWORD line_count) {
  return Guard([&](RunningExchange& exchange) -> DWORD {
    std::uint32_t count = 0;
    const auto error = exchange.Now().Initialize(count);
    if (error != 0) return error;
    if (!exchange.Listen(callback)) return LINEERR_OPERATIONFAILED;
    *application = TelephoneExchange::kApplication;
    *line_count = count;
    return 0;
  });
}

LONG WINAPI lineNegotiateAPIVersion(HLINEAPP, DWORD device, DWORD lowest, DWORD highest,
                                    LPDWORD version, LPLINEEXTENSIONID) {
  return Guard([&](RunningExchange& exchange) {
    std::uint32_t negotiated = 0;
    const auto error = exchange.Now().Negotiate(device, lowest, highest, negotiated);
    *version = negotiated;
    return error;
  });
}

LONG WINAPI lineGetDevCapsA(HLINEAPP, DWORD device, DWORD, DWORD, LPLINEDEVCAPS capabilities) {
  return Guard([&](RunningExchange& exchange) {
    const ExchangeLine* line = nullptr;
    const auto error = exchange.Now().ReadCapabilities(device, line);
    if (error == 0) {
      brantel::sim::FillCapabilities(*line, exchange.HasEnough("lineGetDevCaps"), *capabilities);
    }
    return error;
  });
}

LONG WINAPI lineOpenA(HLINEAPP, DWORD device, LPHLINE line, DWORD, DWORD, DWORD_PTR instance,
                      DWORD privileges, DWORD media_modes, LPLINECALLPARAMS const) {
  return Guard([&](RunningExchange& exchange) {
    const auto error = exchange.Now().Open(device, media_modes, privileges);
    if (error == 0) {
      exchange.NameInstance(instance);
      *line = TelephoneExchange::kLine;
    }
    return error;
  });
}

LONG WINAPI lineMakeCallA(HLINE line, LPHCALL call, LPCSTR number, DWORD, LPLINECALLPARAMS const) {
  return Guard([&](RunningExchange& exchange) {
    TelephoneExchange& now = exchange.Now();
    const auto answer =
        now.MakeCall(line, number, reinterpret_cast<std::uint32_t&>(*call), exchange.Lateness());
    exchange.SetAlarm();
    return answer;
  });
}

LONG WINAPI lineGetIDA(HLINE line, DWORD, HCALL call, DWORD select, LPVARSTRING id,
                       LPCSTR device_class) {
  return Guard([&](RunningExchange& exchange) {
    TelephoneExchange& now = exchange.Now();
    const auto error = now.GetWaveDevice(line, call, select, device_class);
    if (error == 0) {
      brantel::sim::FillWaveDevice(now.script().wave_device, exchange.HasEnough("lineGetID"), *id);
    }
    return error;
  });
}

LONG WINAPI lineMonitorDigits(HCALL call, DWORD modes) {
  return Guard(
      [&](RunningExchange& exchange) { return exchange.Now().MonitorDigits(call, modes); });
}

LONG WINAPI lineClose(HLINE line) {
  return Guard([&](RunningExchange& exchange) { return exchange.Now().Close(line); });
}

LONG WINAPI lineShutdown(HLINEAPP application) {
  return Guard([&](RunningExchange& exchange) {
    const auto error = exchange.Now().Shutdown(application);
    if (error == 0) exchange.StopListening();
    return error;
  });
}

}  // extern "C"
// NOLINTEND(*-inconsistent-declaration-parameter-name, misc-misplaced-const)
