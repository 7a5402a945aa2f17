#include "port/modem_port.h"

#include <algorithm>
#include <array>

#include "text/string_table.h"

namespace brantel {
namespace {

constexpr unsigned kClaimCountdown = 19;
constexpr std::uint32_t kClaimDelay = 1000;

constexpr std::size_t kReadLimit = 100;

// ERROR_FILE_NOT_FOUND, which the system gives for a port that does not exist.
constexpr std::uint32_t kNoSuchPort = 2;

constexpr std::array<std::uint32_t, 10> kBaudTable = {300,   1200,  2400,  4800,  9600,
                                                      14400, 19200, 38400, 57600, 115200};
constexpr std::int32_t kLowestRate = 300;

}  // namespace

bool ModemPort::OpenPort(std::optional<std::uint32_t> port_number, std::int32_t baud_selector,
                         const Framing& framing) {
  if (!WaitForPort()) return false;
  if (OpenDevice(port_number) && Configure(baud_selector, framing)) return true;
  ClosePort();
  return false;
}

void ModemPort::ClosePort() {
  device_.reset();
  if (claimed_) busy_ = 0;
  claimed_ = false;
}

bool ModemPort::TryClaim() {
  std::uint32_t free = 0;
  claimed_ = busy_.compare_exchange_strong(free, policy_.busy_mark);
  return claimed_;
}

bool ModemPort::WaitForPort() {
  for (unsigned countdown = kClaimCountdown; !TryClaim(); --countdown) {
    log_.Format(text_id::kPortInUse, {countdown});
    Wait(kClaimDelay);
    if (countdown == 0) return TryClaim();
  }
  return true;
}

bool ModemPort::OpenDevice(std::optional<std::uint32_t> port_number) {
  const SystemFailure failure = port_number ? ports_.Open(*port_number, device_) : kNoSuchPort;
  return Succeeded(failure, text_id::kOpenError);
}

bool ModemPort::Configure(std::int32_t baud_selector, const Framing& framing) {
  return Succeeded(device_->GetControl(), text_id::kGetControlError) &&
         Succeeded(device_->SetControl(BitsPerSecond(baud_selector), framing),
                   text_id::kSetControlError) &&
         (!policy_.opening_timeouts || SetTimeouts(*policy_.opening_timeouts));
}

std::uint32_t ModemPort::BitsPerSecond(std::int32_t baud_selector) const {
  if (baud_selector >= 0 && static_cast<std::size_t>(baud_selector) < kBaudTable.size()) {
    return kBaudTable.at(static_cast<std::size_t>(baud_selector));
  }
  return baud_selector < kLowestRate ? policy_.rate_for_too_low
                                     : static_cast<std::uint32_t>(baud_selector);
}

bool ModemPort::Succeeded(SystemFailure failure, unsigned text_id) {
  if (failure) log_.Format(text_id, {*failure});
  return !failure;
}

bool ModemPort::GetTimeouts(SerialTimeouts& timeouts) {
  return Succeeded(device_->GetTimeouts(timeouts), text_id::kGetControlError);
}

// Without time-outs a read could wait for ever, so a port that does not take them is not used.
bool ModemPort::SetTimeouts(const SerialTimeouts& timeouts) {
  return Succeeded(device_->SetTimeouts(timeouts), text_id::kSetControlError);
}

bool ModemPort::Write(std::string_view text) {
  const SystemFailure failure = device_->Write(text);
  if (failure) log_.Failure(text_id::kWriteError, *failure);
  return !failure;
}

SystemFailure ModemPort::Read(std::size_t limit, std::string& text) {
  text.assign(limit, '\0');
  std::size_t count = 0;
  const SystemFailure failure = device_->Read(text, count);
  text.resize(failure ? 0 : count);
  text.resize(std::min(text.find('\0'), text.size()));
  return failure;
}

bool ModemPort::WriteLogged(std::string_view text) {
  log_.Quoted(text_id::kSending, text);
  if (!Write(text)) return false;
  Flush();
  return true;
}

bool ModemPort::ReadLogged() {
  const SystemFailure failure = Read(kReadLimit, response_);
  if (failure) {
    log_.Failure(text_id::kReadError, *failure);
    return false;
  }
  log_.Quoted(text_id::kReturned, response_);
  return true;
}

bool ModemPort::SendCommand(std::string_view text) {
  if (!WriteLogged(text)) return false;
  log_.Line(text_id::kWaitingForCompletion);
  return ReadLogged();
}

void ModemPort::HangUp() {
  WriteLogged("+++");
  Wait(kEscapeGuardTime);
  SendCommand("ATH0\r");
}

}  // namespace brantel
