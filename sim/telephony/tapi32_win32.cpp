// tapi32.dll: a telephone exchange in the place of the system's telephony. The environment names
// its script and where the transcript goes:
//   TELEPHONE_EXCHANGE               the script; without one there is a line that never answers
//   TELEPHONE_EXCHANGE_TRANSCRIPT    what happens is appended to this file
// What it tells comes by a timer of the thread that called lineInitialize, so through that thread's
// messages, as with the system's.
#include <windows.h>
#include <tapi.h>

#include <array>
#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>

#include "sim/telephone_exchange.h"

namespace brantel::sim {
namespace {

constexpr UINT kTick = 10;  // milliseconds
constexpr const char* kWindowClass = "TelephoneExchange";

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
                  [this](const ExchangeMessage& message) { TellListener(message); }) {
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
      SetTimer(window_, 1, kTick, nullptr);
    }
    return window_ != nullptr;
  }

  void NameInstance(DWORD_PTR instance) { listener_.instance = instance; }

  void StopListening() {
    listener_ = {};
    if (window_ != nullptr) DestroyWindow(window_);
    window_ = nullptr;
  }

 private:
  static LRESULT CALLBACK HandleMessage(HWND window, UINT message, WPARAM first, LPARAM second);

  [[nodiscard]] Time Elapsed() const { return Time(GetTickCount() - started_); }

  void Tick() {
    clock_.AdvanceTo(Elapsed());
    plan_.AdvanceTo(Elapsed());
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

  const DWORD started_ = GetTickCount();
  Timeline clock_;  // on which nothing is planned
  Timeline plan_;
  std::ofstream stream_{FromEnvironment("TELEPHONE_EXCHANGE_TRANSCRIPT"), std::ios::app};
  Transcript transcript_{stream_, clock_};
  TelephoneExchange exchange_;
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
  if (message == WM_TIMER) {
    Exchange().Tick();
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

void FillCapabilities(const ExchangeLine& line, LINEDEVCAPS& capabilities) {
  const DWORD total = capabilities.dwTotalSize;
  constexpr DWORD kFixedSize = 252;
  const DWORD needed = std::max<DWORD>(line.capabilities_size, kFixedSize);
  capabilities.dwNeededSize = needed;
  capabilities.dwUsedSize = std::min(total, needed);
  // A caller with too little room learns no more than that.
  if (total < needed) return;
  capabilities.dwNumAddresses = 1;
  capabilities.dwBearerModes = LINEBEARERMODE_VOICE;
  capabilities.dwMediaModes = line.media_modes;
  capabilities.dwMonitorDigitModes = LINEDIGITMODE_DTMF;
}

void FillWaveDevice(std::uint32_t device, VARSTRING& id) {
  constexpr DWORD kNeeded = sizeof(VARSTRING) + sizeof(DWORD);
  id.dwNeededSize = kNeeded;
  id.dwUsedSize = sizeof(VARSTRING);
  if (id.dwTotalSize < kNeeded) return;
  id.dwUsedSize = kNeeded;
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
    if (error == 0) brantel::sim::FillCapabilities(*line, *capabilities);
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
    return now.MakeCall(line, number, reinterpret_cast<std::uint32_t&>(*call), exchange.Lateness());
  });
}

LONG WINAPI lineGetIDA(HLINE line, DWORD, HCALL call, DWORD select, LPVARSTRING id,
                       LPCSTR device_class) {
  return Guard([&](RunningExchange& exchange) {
    TelephoneExchange& now = exchange.Now();
    const auto error = now.GetWaveDevice(line, call, select, device_class);
    if (error == 0) brantel::sim::FillWaveDevice(now.script().wave_device, *id);
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
