// modemsim: a modem on a pseudo-terminal, with a small telephone network behind it.
#include <poll.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <exception>
#include <iostream>
#include <map>
#include <optional>
#include <string>

#include "sim/hayes_modem.h"
#include "sim/pseudo_terminal.h"
#include "sim/telephone_book.h"

namespace brantel::sim {
namespace {

struct CommandLine {
  std::optional<std::string> link;
  HayesModem::Options modem;
};

const std::map<std::string, Answering> kAnsweringNames = {
    {"normal", Answering::kNormal},   {"none", Answering::kNone},   {"late", Answering::kLate},
    {"garbage", Answering::kGarbage}, {"flood", Answering::kFlood},
};

std::string Footer() {
  std::string text = "Telephone numbers:\n";
  for (const Subscriber& subscriber : TelephoneBook()) {
    text +=
        "  " + std::string(subscriber.number) + "  " + std::string(subscriber.description) + "\n";
  }
  return text + "  others   " + std::string(FindSubscriber("").description) +
         "\n\n"
         "Examples:\n"
         "  modemsim\n"
         "  modemsim --link /tmp/modem    and in another terminal:  picocom /tmp/modem\n"
         "  modemsim --link /tmp/modem --answering late\n"
         "  wine reg add 'HKLM\\Software\\Wine\\Ports' /v COM1 /d /tmp/modem    makes it COM1 for\n"
         "                                programs under Wine, from the next start of wineserver "
         "on\n"
         "At the modem:  ATDT5550100,42#    pages 42\n";
}

void Declare(CLI::App& app, CommandLine& command_line) {
  app.add_option("--link", command_line.link,
                 "Make a symbolic link to the port, and remove it at the end")
      ->option_text("PATH");
  app.add_option("--answering", command_line.modem.answering,
                 "How commands are answered: normal, none, late (2.5 s),\n"
                 "garbage, flood (300 bytes without an end)")
      ->option_text("HOW")
      ->type_name("HOW")
      // The last one is asked first, and is the one to tell the names when there is no such.
      ->transform(CLI::Transformer(kAnsweringNames).description(""))
      ->transform(CLI::IsMember(kAnsweringNames));
  app.add_flag("--echo-stuck", command_line.modem.echo_is_stuck, "E0 does not end the echo");
  app.footer(Footer());
}

// Readable when the program is to end.
FileDescriptor EndSignals() {
  sigset_t signals;
  sigemptyset(&signals);
  for (const int number : {SIGINT, SIGTERM, SIGHUP}) {
    sigaddset(&signals, number);
  }
  pthread_sigmask(SIG_BLOCK, &signals, nullptr);
  return FileDescriptor(signalfd(-1, &signals, SFD_CLOEXEC));
}

class Simulator {
 public:
  explicit Simulator(const CommandLine& command_line)
      : port_(command_line.link),
        modem_(
            timeline_, transcript_, command_line.modem,
            [this](std::string_view bytes) { port_.Write(bytes); }, [this] { ended_ = true; }) {
    transcript_.Note("modem", "is at " + command_line.link.value_or(port_.path()));
  }

  void Run() {
    while (!ended_) {
      std::array<pollfd, 2> waiting = {pollfd{port_.descriptor(), POLLIN, 0},
                                       pollfd{end_signals_.get(), POLLIN, 0}};
      poll(waiting.data(), waiting.size(), MillisecondsToNextEvent());
      timeline_.AdvanceTo(Elapsed());
      if (waiting[0].revents != 0) Receive();
      if (waiting[1].revents != 0) ended_ = true;
    }
  }

 private:
  [[nodiscard]] Time Elapsed() const {
    return std::chrono::duration_cast<Time>(std::chrono::steady_clock::now() - start_);
  }

  // For poll: -1 when nothing is planned.
  [[nodiscard]] int MillisecondsToNextEvent() const {
    const auto next = timeline_.NextTime();
    if (!next) return -1;
    return static_cast<int>(std::max(*next - Elapsed(), Time(0)).count());
  }

  void Receive() {
    const PortInput input = port_.Read();
    if (!input.bytes.empty()) {
      NoteSetting();
      modem_.Receive(input.bytes);
    }
    if (input.closed) modem_.LoseDtr();
  }

  void NoteSetting() {
    const std::string setting = port_.Setting();
    if (setting != setting_) transcript_.Note("port", "is set to " + setting);
    setting_ = setting;
  }

  // Before the port: who sees its link may end the program, and the link is to go with it.
  FileDescriptor end_signals_ = EndSignals();
  std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
  Timeline timeline_;
  Transcript transcript_{std::cout, timeline_};
  PseudoTerminal port_;
  HayesModem modem_;
  std::string setting_;
  bool ended_ = false;
};

int Main(int argc, char** argv) {
  CommandLine command_line;
  CLI::App app(
      "modemsim, a modem on a pseudo-terminal and the telephones that it can call.\n"
      "Writes what happens, with the time in seconds, until Ctrl+C.",
      "modemsim");
  Declare(app, command_line);
  CLI11_PARSE(app, argc, argv);
  Simulator(command_line).Run();
  return 0;
}

}  // namespace
}  // namespace brantel::sim

int main(int argc, char** argv) {
  try {
    return brantel::sim::Main(argc, argv);
  } catch (const std::exception& error) {
    std::cerr << "modemsim: " << error.what() << '\n';
    return 1;
  }
}
