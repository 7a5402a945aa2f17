#include "port/modem_port.h"

#include <algorithm>
#include <array>
#include <utility>

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
  auto device = port_number ? ports_.Open(*port_number) : Failure{kNoSuchPort};
  if (!Succeeded(device, text_id::kOpenError)) return false;
  device_ = std::move(*device);
  return true;
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

std::optional<SerialTimeouts> ModemPort::GetTimeouts() {
  const auto timeouts = device_->GetTimeouts();
  if (!Succeeded(timeouts, text_id::kGetControlError)) return std::nullopt;
  return *timeouts;
}

// Without time-outs a read could wait for ever, so a port that does not take them is not used.
bool ModemPort::SetTimeouts(const SerialTimeouts& timeouts) {
  return Succeeded(device_->SetTimeouts(timeouts), text_id::kSetControlError);
}

bool ModemPort::Write(std::string_view text) {
  const auto written = device_->Write(text);
  if (!written) log_.Failure(text_id::kWriteError, written.reason());
  return static_cast<bool>(written);
}

Outcome<> ModemPort::Read(std::size_t limit, std::string& text) {
  text.assign(limit, '\0');
  const auto count = device_->Read(text);
  text.resize(count ? *count : 0);
  text.resize(std::min(text.find('\0'), text.size()));
  if (!count) return count.failure();
  return kDone;
}

bool ModemPort::WriteLogged(std::string_view text) {
  log_.Quoted(text_id::kSending, text);
  if (!Write(text)) return false;
  Flush();
  return true;
}

bool ModemPort::ReadLogged() {
  const auto read = Read(kReadLimit, response_);
  if (!read) {
    log_.Failure(text_id::kReadError, read.reason());
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
