#pragma once

#include <windows.h>

#include <atomic>
#include <deque>
#include <optional>
#include <sstream>

#include "sim/hayes_modem.h"
#include "sim/timeline.h"
#include "sim/transcript.h"
#include "tests/far_ends/simulated_time.h"
#include "tests/module/import_patch.h"

namespace brantel {

// The machine's only serial port, COM1, with a simulated modem on it and the subscribers of the
// telephone book behind that; for the module alone and while this lives. Bytes take their time on
// the line, and a read waits as long as its time-outs say, all on simulated time. Who opens the
// port while it is open gets ERROR_ACCESS_DENIED, and who opens it next finds it as it was left.
// Pages that arrive are deliveries of the thread that has the port. There can be one at a time.
class ModemLine {
 public:
  explicit ModemLine(HMODULE module);
  ModemLine(const ModemLine&) = delete;
  ModemLine& operator=(const ModemLine&) = delete;
  ~ModemLine();

  [[nodiscard]] bool IsPortFree() const { return !is_taken_; }
  // How often the port was asked for while somebody had it.
  [[nodiscard]] long refusals() const { return refusals_; }
  // Whether a read would never have ended.
  [[nodiscard]] bool has_waited_for_ever() const { return has_waited_for_ever_; }
  // How much time has passed while the port was open.
  [[nodiscard]] sim::Time time_passed() const { return time_.now(); }

 private:
  static HANDLE WINAPI OnCreateFile(const char* path, DWORD access, DWORD share,
                                    SECURITY_ATTRIBUTES* security, DWORD creation, DWORD flags,
                                    HANDLE like);
  static BOOL WINAPI OnCloseHandle(HANDLE handle);
  static BOOL WINAPI OnGetCommState(HANDLE handle, DCB* control);
  static BOOL WINAPI OnSetCommState(HANDLE handle, DCB* control);
  static BOOL WINAPI OnGetCommTimeouts(HANDLE handle, COMMTIMEOUTS* timeouts);
  static BOOL WINAPI OnSetCommTimeouts(HANDLE handle, COMMTIMEOUTS* timeouts);
  static BOOL WINAPI OnReadFile(HANDLE file, void* buffer, DWORD size, DWORD* count,
                                OVERLAPPED* overlapped);
  static BOOL WINAPI OnWriteFile(HANDLE file, const void* bytes, DWORD size, DWORD* count,
                                 OVERLAPPED* overlapped);
  static BOOL WINAPI OnFlushFileBuffers(HANDLE file);

  [[nodiscard]] bool IsPort(HANDLE handle) const { return handle != nullptr && handle == port_; }
  HANDLE OpenPort();
  BOOL ClosePort();
  BOOL Read(char* buffer, DWORD size, DWORD* count);
  BOOL Write(const char* bytes, DWORD size, DWORD* count);
  void Hear(std::string_view bytes);
  [[nodiscard]] sim::Time TimeOf(std::size_t bytes) const;
  void NoteDeliveries() const;

  sim::Timeline time_;
  std::ostringstream text_;
  sim::Transcript transcript_{text_, time_};
  sim::HayesModem modem_;
  DCB control_{};
  COMMTIMEOUTS timeouts_{};
  std::deque<char> unread_;
  sim::Time last_arrival_{0};
  unsigned long opening_ = 0;  // bytes are for who had the port open when they were sent
  std::optional<OnSimulatedTime> on_time_;
  std::atomic<bool> is_taken_ = false;
  std::atomic<HANDLE> port_ = nullptr;
  std::atomic<long> refusals_ = 0;
  std::atomic<bool> has_waited_for_ever_ = false;

  ImportPatch create_;
  ImportPatch close_;
  ImportPatch get_control_;
  ImportPatch set_control_;
  ImportPatch get_timeouts_;
  ImportPatch set_timeouts_;
  ImportPatch read_;
  ImportPatch write_;
  ImportPatch flush_;
};

}  // namespace brantel
