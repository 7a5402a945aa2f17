#include "tests/far_ends/modem_line.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "tests/far_ends/deliveries.h"

namespace brantel {
namespace {

ModemLine* modem_line = nullptr;

constexpr DWORD kBitsPerByte = 10;
constexpr DWORD kRateAtFirst = 1200;

// Whether that many milliseconds are a limit at all.
bool Limits(DWORD milliseconds) {
  return milliseconds != 0;
}

template <typename Function>
void* Hook(Function* function) {
  return reinterpret_cast<void*>(function);
}

}  // namespace

ModemLine::ModemLine(HMODULE module)
    : modem_(
          time_, transcript_, {}, [this](std::string_view bytes) { Hear(bytes); }, [] {}),
      create_(module, "CreateFileA", Hook(&OnCreateFile)),
      close_(module, "CloseHandle", Hook(&OnCloseHandle)),
      get_control_(module, "GetCommState", Hook(&OnGetCommState)),
      set_control_(module, "SetCommState", Hook(&OnSetCommState)),
      get_timeouts_(module, "GetCommTimeouts", Hook(&OnGetCommTimeouts)),
      set_timeouts_(module, "SetCommTimeouts", Hook(&OnSetCommTimeouts)),
      read_(module, "ReadFile", Hook(&OnReadFile)),
      write_(module, "WriteFile", Hook(&OnWriteFile)),
      flush_(module, "FlushFileBuffers", Hook(&OnFlushFileBuffers)) {
  control_.DCBlength = sizeof control_;
  control_.BaudRate = kRateAtFirst;
  modem_line = this;
}

ModemLine::~ModemLine() {
  modem_line = nullptr;
}

HANDLE ModemLine::OnCreateFile(const char* path, DWORD access, DWORD share,
                               SECURITY_ATTRIBUTES* security, DWORD creation, DWORD flags,
                               HANDLE like) {
  const std::string_view name = path;
  if (!name.starts_with("COM")) {
    return CreateFileA(path, access, share, security, creation, flags, like);
  }
  if (name == "COM1") return modem_line->OpenPort();
  SetLastError(ERROR_FILE_NOT_FOUND);
  return INVALID_HANDLE_VALUE;
}

BOOL ModemLine::OnCloseHandle(HANDLE handle) {
  return modem_line->IsPort(handle) ? modem_line->ClosePort() : CloseHandle(handle);
}

BOOL ModemLine::OnGetCommState(HANDLE, DCB* control) {
  *control = modem_line->control_;
  return TRUE;
}

BOOL ModemLine::OnSetCommState(HANDLE, DCB* control) {
  if (control->BaudRate == 0 || control->ByteSize < 7 || control->ByteSize > 8) {
    SetLastError(ERROR_INVALID_PARAMETER);
    return FALSE;
  }
  modem_line->control_ = *control;
  return TRUE;
}

BOOL ModemLine::OnGetCommTimeouts(HANDLE, COMMTIMEOUTS* timeouts) {
  *timeouts = modem_line->timeouts_;
  return TRUE;
}

BOOL ModemLine::OnSetCommTimeouts(HANDLE, COMMTIMEOUTS* timeouts) {
  modem_line->timeouts_ = *timeouts;
  return TRUE;
}

BOOL ModemLine::OnReadFile(HANDLE file, void* buffer, DWORD size, DWORD* count,
                           OVERLAPPED* overlapped) {
  if (!modem_line->IsPort(file)) return ReadFile(file, buffer, size, count, overlapped);
  return modem_line->Read(static_cast<char*>(buffer), size, count);
}

BOOL ModemLine::OnWriteFile(HANDLE file, const void* bytes, DWORD size, DWORD* count,
                            OVERLAPPED* overlapped) {
  if (!modem_line->IsPort(file)) return WriteFile(file, bytes, size, count, overlapped);
  return modem_line->Write(static_cast<const char*>(bytes), size, count);
}

BOOL ModemLine::OnFlushFileBuffers(HANDLE) {
  return TRUE;
}

HANDLE ModemLine::OpenPort() {
  if (is_taken_.exchange(true)) {
    ++refusals_;
    SetLastError(ERROR_ACCESS_DENIED);
    return INVALID_HANDLE_VALUE;
  }
  ++opening_;
  unread_.clear();
  text_.str({});
  on_time_.emplace(time_);
  // A handle of the system's, so that one that is not closed is found among those left open.
  port_ = CreateEventW(nullptr, FALSE, FALSE, nullptr);
  return port_;
}

BOOL ModemLine::ClosePort() {
  HANDLE const port = port_.exchange(nullptr);
  modem_.LoseDtr();
  NoteDeliveries();
  on_time_.reset();
  ++opening_;
  is_taken_ = false;
  return CloseHandle(port);
}

void ModemLine::NoteDeliveries() const {
  std::istringstream lines(text_.str());
  for (std::string line; std::getline(lines, line);) {
    for (const std::string_view taken : {" takes a page for ", " shows "}) {
      const std::size_t found = line.find(taken);
      if (found != std::string::npos) {
        NoteDelivery(line.substr(found + taken.size()));
      }
    }
  }
}

sim::Time ModemLine::TimeOf(std::size_t bytes) const {
  constexpr std::size_t kMilliseconds = 1000;
  return sim::Time(bytes * kBitsPerByte * kMilliseconds / control_.BaudRate + 1);
}

// Byte by byte, as they come over a line.
void ModemLine::Hear(std::string_view bytes) {
  for (const char byte : bytes) {
    last_arrival_ = std::max(last_arrival_, time_.now()) + TimeOf(1);
    time_.After(last_arrival_ - time_.now(), [this, byte, opening = opening_] {
      if (opening == opening_) unread_.push_back(byte);
    });
  }
}

BOOL ModemLine::Read(char* buffer, DWORD size, DWORD* count) {
  SwitchToThread();
  const DWORD total_limit =
      timeouts_.ReadTotalTimeoutMultiplier * size + timeouts_.ReadTotalTimeoutConstant;
  const sim::Time total_end = time_.now() + sim::Time(total_limit);
  std::optional<sim::Time> end;
  if (Limits(total_limit)) end = total_end;
  *count = 0;
  while (true) {
    for (; *count < size && !unread_.empty(); ++*count) {
      buffer[*count] = unread_.front();
      unread_.pop_front();
      if (!Limits(timeouts_.ReadIntervalTimeout)) continue;
      end = time_.now() + sim::Time(timeouts_.ReadIntervalTimeout);
      if (Limits(total_limit)) end = std::min(*end, total_end);
    }
    if (*count == size) return TRUE;
    const auto next = time_.NextTime();
    if (!next && !end) {
      has_waited_for_ever_ = true;
      SetLastError(ERROR_OPERATION_ABORTED);
      return FALSE;
    }
    const bool is_over = end && (!next || *end < *next);
    time_.AdvanceTo(is_over ? *end : *next);
    if (is_over) return TRUE;
  }
}

BOOL ModemLine::Write(const char* bytes, DWORD size, DWORD* count) {
  SwitchToThread();
  time_.AdvanceTo(time_.now() + TimeOf(size));
  modem_.Receive({bytes, size});
  *count = size;
  return TRUE;
}

}  // namespace brantel
