#include "sim/pseudo_terminal.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <system_error>
#include <utility>

namespace brantel::sim {
namespace {

[[noreturn]] void ThrowSystemError(const std::string& what) {
  throw std::system_error(errno, std::generic_category(), what);
}

int Checked(int result, const std::string& what) {
  if (result < 0) ThrowSystemError(what);
  return result;
}

struct Rate {
  speed_t speed;
  unsigned bits_per_second;
};

constexpr std::array kRates = {
    Rate{B50, 50},         Rate{B75, 75},         Rate{B110, 110},     Rate{B134, 134},
    Rate{B150, 150},       Rate{B200, 200},       Rate{B300, 300},     Rate{B600, 600},
    Rate{B1200, 1200},     Rate{B1800, 1800},     Rate{B2400, 2400},   Rate{B4800, 4800},
    Rate{B9600, 9600},     Rate{B19200, 19200},   Rate{B38400, 38400}, Rate{B57600, 57600},
    Rate{B115200, 115200}, Rate{B230400, 230400},
};

std::string RateText(speed_t speed) {
  const auto* const rate = std::ranges::find(kRates, speed, &Rate::speed);
  return rate == kRates.end() ? "unusual rate" : std::to_string(rate->bits_per_second) + " bit/s";
}

char DataBits(tcflag_t flags) {
  switch (flags & CSIZE) {
    case CS5:
      return '5';
    case CS6:
      return '6';
    case CS7:
      return '7';
    default:
      return '8';
  }
}

char ParityLetter(tcflag_t flags) {
  if ((flags & PARENB) == 0) return 'N';
  return (flags & PARODD) != 0 ? 'O' : 'E';
}

}  // namespace

FileDescriptor::FileDescriptor(FileDescriptor&& other) noexcept
    : number_(std::exchange(other.number_, -1)) {}

FileDescriptor& FileDescriptor::operator=(FileDescriptor&& other) noexcept {
  std::swap(number_, other.number_);
  return *this;
}

FileDescriptor::~FileDescriptor() {
  if (number_ >= 0) close(number_);
}

PseudoTerminal::PseudoTerminal(const std::optional<std::filesystem::path>& link)
    : master_(Checked(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC), "no pseudo-terminal")) {
  Checked(grantpt(master_.get()), "grantpt");
  Checked(unlockpt(master_.get()), "unlockpt");
  std::array<char, 128> name{};
  if (ptsname_r(master_.get(), name.data(), name.size()) != 0) ThrowSystemError("ptsname");
  path_ = name.data();
  slave_ = FileDescriptor(Checked(open(path_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC), path_));

  // As a serial port would be: nothing is echoed or changed on its way.
  termios settings{};
  Checked(tcgetattr(slave_.get(), &settings), path_);
  cfmakeraw(&settings);
  Checked(tcsetattr(slave_.get(), TCSANOW, &settings), path_);
  Checked(fcntl(master_.get(), F_SETFL, O_NONBLOCK), path_);
  if (link) MakeLink(*link);
}

PseudoTerminal::~PseudoTerminal() {
  std::error_code ignored;
  if (link_) std::filesystem::remove(*link_, ignored);
}

void PseudoTerminal::MakeLink(const std::filesystem::path& link) {
  if (std::filesystem::is_symlink(link)) std::filesystem::remove(link);
  std::filesystem::create_symlink(path_, link);
  link_ = link;
}

std::string PseudoTerminal::Read() {
  std::array<char, 4096> buffer{};
  const ssize_t count = read(master_.get(), buffer.data(), buffer.size());
  return {buffer.data(), static_cast<std::size_t>(std::max<ssize_t>(count, 0))};
}

void PseudoTerminal::Write(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = write(master_.get(), bytes.data(), bytes.size());
    if (count <= 0) return;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

std::string PseudoTerminal::Setting() const {
  termios settings{};
  if (tcgetattr(master_.get(), &settings) != 0) return "unknown";
  const char stop_bits = (settings.c_cflag & CSTOPB) != 0 ? '2' : '1';
  return RateText(cfgetospeed(&settings)) + " " +
         std::string{DataBits(settings.c_cflag), ParityLetter(settings.c_cflag), stop_bits};
}

}  // namespace brantel::sim
