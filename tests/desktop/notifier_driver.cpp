// Drives a notifier of the module for the tests of what is seen and heard. Its argument is the name
// of the class. Commands come from standard input, one a line, their words parted by tabs, and each
// is answered by a line on standard output:
//   initialize            "result CODE" of Initialize with the program's host
//   shutdown              the same of Shutdown
//   references            "references COUNT", how often others than the program hold its host
//   log                   "log COUNT", how many lines the host has been told
//   processor-time        "processor-time PROCESS THREAD", for how many milliseconds processors
//                         have worked for this process, and for its thread that drives the notifier
//   send PATH             "result CODE" when Send has returned; the path may be empty
//   add DIRECTORY         "shown LEFT TOP WIDTH HEIGHT" when the dialog has opened
//   edit DIRECTORY NAME   the same
//   press BUTTON          the same of the dialog that the button opens over this one
//   close                 "closed" when that has been cancelled
//   cancel                "result CODE" when the dialog has closed
// The end of the input ends the program. Texts are UTF-8.
#include <windows.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <exception>
#include <iostream>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "system/windows/bstr_win32.h"
#include "tests/module/dialog_session.h"
#include "tests/module/expected_classes.h"
#include "tests/module/loaded_module.h"
#include "tests/module/recording_host.h"

namespace brantel {
namespace {

std::wstring FromUtf8(const std::string& text) {
  const int length = static_cast<int>(text.size());
  const int needed = MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(needed), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), needed);
  return wide;
}

std::string ResultLine(HRESULT result) {
  std::array<char, 16> code{};
  std::snprintf(code.data(), code.size(), "%08lX", static_cast<unsigned long>(result));
  return std::string("result ") + code.data();
}

// A screen without a window manager has no active window; the title is to look like one's.
void LookActive(HWND dialog) {
  SendMessageA(dialog, WM_NCACTIVATE, TRUE, 0);
}

std::string ShownLine(HWND dialog) {
  RECT area{};
  GetWindowRect(dialog, &area);
  std::ostringstream line;
  line << "shown " << area.left << ' ' << area.top << ' ' << area.right - area.left << ' '
       << area.bottom - area.top;
  return line.str();
}

std::string ProcessorTimeLine() {
  const auto milliseconds = [](const auto& get_times, HANDLE whose) {
    FILETIME created{};
    FILETIME ended{};
    FILETIME in_system{};
    FILETIME in_program{};
    if (get_times(whose, &created, &ended, &in_system, &in_program) == FALSE) {
      throw std::runtime_error("the system does not know the processor time");
    }
    constexpr std::uint64_t kPerMillisecond = 10000;
    std::uint64_t sum = 0;
    for (const FILETIME& time : {in_system, in_program}) {
      sum += std::uint64_t{time.dwHighDateTime} << 32U | time.dwLowDateTime;
    }
    return std::to_string(sum / kPerMillisecond);
  };
  return "processor-time " + milliseconds(GetProcessTimes, GetCurrentProcess()) + " " +
         milliseconds(GetThreadTimes, GetCurrentThread());
}

const ExpectedClass& ClassNamed(const std::string& name) {
  for (const ExpectedClass& candidate : kExpectedClasses) {
    if (candidate.name == name) return candidate;
  }
  throw std::runtime_error("no such class: " + name);
}

class NotifierDriver {
 public:
  explicit NotifierDriver(const ExpectedClass& driven)
      : class_(driven), notifier_(module_.CreateNotifier(driven)) {}

  std::string Execute(const std::vector<std::string>& words) {
    const auto argument = [&](std::size_t i) {
      return FromUtf8(i < words.size() ? words[i] : std::string());
    };
    if (words[0] == "initialize") return ResultLine(notifier_->Initialize(&host_));
    if (words[0] == "shutdown") return ResultLine(notifier_->Shutdown());
    if (words[0] == "references") return "references " + std::to_string(host_.references() - 1);
    if (words[0] == "log") return "log " + std::to_string(host_.log_calls.size());
    if (words[0] == "processor-time") return ProcessorTimeLine();
    if (words[0] == "send") return ResultLine(notifier_->Send(Bstr(argument(1)).get()));
    if (words[0] == "add") return Show({.notifier_class = class_, .directory = argument(1)});
    if (words[0] == "edit") {
      return Show({.notifier_class = class_, .directory = argument(1), .edited = argument(2)});
    }
    if (words[0] == "press") return Press(std::stoi(words.at(1)));
    if (words[0] == "close") return Close();
    if (words[0] == "cancel") return Cancel();
    throw std::runtime_error("no such command: " + words[0]);
  }

 private:
  std::string Show(const DialogRequest& request) {
    session_.emplace(module_, request);
    session_->AwaitSight();
    LookActive(session_->dialog());
    return ShownLine(session_->dialog());
  }

  std::string Press(int button) {
    session_->StartClick(button);
    HWND opened = session_->AwaitPopup();
    LookActive(opened);
    return ShownLine(opened);
  }

  std::string Close() {
    session_->ClickInPopup(IDCANCEL);
    if (session_->popup() != nullptr) throw std::runtime_error("the dialog stays");
    return "closed";
  }

  std::string Cancel() {
    session_->PressKey(VK_ESCAPE);
    return ResultLine(session_->Await().result);
  }

  const ExpectedClass& class_;
  LoadedModule module_;
  RecordingHost host_;
  ComPointer<INotifier> notifier_;
  std::optional<DialogSession> session_;
};

std::vector<std::string> WordsOf(const std::string& line) {
  std::vector<std::string> words(1);
  for (const char c : line) {
    if (c == '\t') {
      words.emplace_back();
    } else if (c != '\r') {
      words.back() += c;
    }
  }
  return words;
}

}  // namespace
}  // namespace brantel

int main(int argument_count, char** arguments) {
  using namespace brantel;
  try {
    if (argument_count != 2) throw std::runtime_error("wants the name of a class");
    NotifierDriver driver(ClassNamed(arguments[1]));
    for (std::string line; std::getline(std::cin, line);) {
      std::cout << driver.Execute(WordsOf(line)) << std::endl;
    }
  } catch (const std::exception& reason) {
    std::cerr << "notifier_driver: " << reason.what() << '\n';
    return 1;
  }
  return 0;
}
