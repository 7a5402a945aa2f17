#include "sim/pseudo_terminal.h"

#include <fcntl.h>
#include <sys/inotify.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <system_error>
#include <utility>

#include "sim/line_rate.h"

namespace brantel::sim {
namespace {

[[noreturn]] void ThrowSystemError(const std::string& what) {
  throw std::system_error(errno, std::generic_category(), what);
}

int Checked(int result, const std::string& what) {
  if (result < 0) ThrowSystemError(what);
  return result;
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
  openings_ = FileDescriptor(Checked(inotify_init1(IN_NONBLOCK | IN_CLOEXEC), "inotify"));
  Checked(inotify_add_watch(openings_.get(), path_.c_str(), IN_OPEN), path_);
  MakeRaw();
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

// As a serial port would be: nothing is echoed or changed on its way.
void PseudoTerminal::MakeRaw() {
  termios settings{};
  Checked(tcgetattr(master_.get(), &settings), path_);
  cfmakeraw(&settings);
  settings.c_iflag &= ~static_cast<tcflag_t>(INPCK);
  Checked(tcsetattr(master_.get(), TCSANOW, &settings), path_);
}

// A pseudo-terminal has neither parity nor seven bits, and the C library refuses a setting with
// these unless something else of it is new. The flag that goes with parity means nothing here;
// taken back, it is what is new when a program asks for the same setting once more.
void PseudoTerminal::ForgetParityCheck() {
  termios settings{};
  if (tcgetattr(master_.get(), &settings) != 0 || (settings.c_iflag & INPCK) == 0) return;
  settings.c_iflag &= ~static_cast<tcflag_t>(INPCK);
  tcsetattr(master_.get(), TCSANOW, &settings);
}

// What the last program has not read would be there for the next one.
void PseudoTerminal::DiscardUnread() {
  const FileDescriptor slave(open(path_.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
  if (slave.get() >= 0) tcflush(slave.get(), TCIFLUSH);
}

PortInput PseudoTerminal::NoteClosed() {
  const bool was_open = !std::exchange(closed_, true);
  MakeRaw();
  if (was_open) DiscardUnread();
  return {.bytes = {}, .closed = was_open};
}

PortInput PseudoTerminal::Read() {
  std::array<char, 4096> buffer{};
  if (closed_) read(openings_.get(), buffer.data(), buffer.size());
  const ssize_t count = read(master_.get(), buffer.data(), buffer.size());
  // The system's word for a port that nobody has open.
  if (count < 0 && errno == EIO) return NoteClosed();
  closed_ = false;
  if (count <= 0) return {};
  ForgetParityCheck();
  return {.bytes = std::string(buffer.data(), static_cast<std::size_t>(count)), .closed = false};
}

void PseudoTerminal::Write(std::string_view bytes) {
  if (closed_) return;
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
  return std::to_string(BitsPerSecond(master_.get())) + " bit/s " +
         std::string{DataBits(settings.c_cflag), ParityLetter(settings.c_cflag), stop_bits};
}

}  // namespace brantel::sim
