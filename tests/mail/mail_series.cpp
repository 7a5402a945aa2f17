// mail_series INSTANCE COUNT [THREADS]: sends alerts for one SMTPMail instance in a row from one
// process, by one object and one binding to a host, and prints as JSON how many went out, and what
// the process held before and after. The first tenth of them make what is made once, and are not
// counted.
//
// With THREADS so many threads do so at the same time, each with an object and a host of its own;
// printed is how many alerts went out in all, and how many lines beginning with "220-" the hosts'
// logs have.
#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <exception>
#include <iostream>
#include <string>
#include <thread>
#include <vector>

#include "system/windows/bstr_win32.h"
#include "tests/module/expected_classes.h"
#include "tests/module/loaded_module.h"
#include "tests/module/process_level.h"
#include "tests/module/recording_host.h"
#include "tests/thread_gate.h"

namespace brantel {
namespace {

std::wstring ToWide(const char* text) {
  const int length = MultiByteToWideChar(CP_ACP, 0, text, -1, nullptr, 0);
  std::wstring wide(static_cast<std::size_t>(length), L'\0');
  MultiByteToWideChar(CP_ACP, 0, text, -1, wide.data(), length);
  wide.pop_back();
  return wide;
}

class Series {
 public:
  explicit Series(const std::wstring& instance) : instance_(instance) {
    if (FAILED(notifier_->Initialize(&host_))) throw std::runtime_error("Initialize failed");
  }

  int Send(int count) {
    int delivered = 0;
    for (int i = 0; i < count; ++i) {
      if (notifier_->Send(instance_.get()) == S_OK) ++delivered;
      early_lines_ += std::ranges::count_if(
          host_.log_calls, [](const LogCall& call) { return call.text.starts_with(L"220-"); });
      host_.log_calls = {};
      host_.expand_calls = {};
    }
    return delivered;
  }

  // Of all series.
  [[nodiscard]] std::ptrdiff_t early_lines() const { return early_lines_; }

 private:
  std::ptrdiff_t early_lines_ = 0;
  LoadedModule module_;
  RecordingHost host_;
  ComPointer<INotifier> notifier_ = module_.CreateNotifier(kSMTPMail);
  Bstr instance_;
};

void PrintLevel(const char* when) {
  const HeapLevel heaps = MeasureHeaps();
  std::cout << ", \"" << when << R"(": {"handles": )" << OpenHandles().size()
            << ", \"blocks\": " << heaps.blocks << ", \"bytes\": " << heaps.bytes << "}";
}

void SendInARow(const std::wstring& instance, int count) {
  Series series(instance);
  std::cout << "{\"warm_up\": " << series.Send(count / 10);
  PrintLevel("before");
  std::cout << ", \"delivered\": " << series.Send(count);
  PrintLevel("after");
  std::cout << ", \"heap_growth\": " << HeapGrowth() << "}\n";
}

struct Outcome {
  int delivered = 0;
  std::ptrdiff_t early_lines = 0;
};

void SendTogether(const std::wstring& instance, int count, int threads) {
  ThreadGate gate(threads);
  std::vector<Outcome> outcomes(static_cast<std::size_t>(threads));
  std::vector<std::jthread> senders;
  for (Outcome& outcome : outcomes) {
    senders.emplace_back([&] {
      Series series(instance);
      gate.PassTogether();
      outcome.delivered = series.Send(count);
      outcome.early_lines = series.early_lines();
    });
  }
  senders.clear();
  Outcome all;
  for (const Outcome& outcome : outcomes) {
    all.delivered += outcome.delivered;
    all.early_lines += outcome.early_lines;
  }
  std::cout << "{\"delivered\": " << all.delivered << ", \"early_lines\": " << all.early_lines
            << "}\n";
}

}  // namespace
}  // namespace brantel

int main(int argument_count, char** arguments) {
  using namespace brantel;
  try {
    if (argument_count != 3 && argument_count != 4) {
      throw std::invalid_argument("INSTANCE and COUNT are expected");
    }
    const std::wstring instance = ToWide(arguments[1]);
    const int count = std::stoi(arguments[2]);
    if (argument_count == 3) {
      SendInARow(instance, count);
    } else {
      SendTogether(instance, count, std::stoi(arguments[3]));
    }
    return 0;
  } catch (const std::exception& failure) {
    std::cerr << "mail_series: " << failure.what() << '\n';
    return 1;
  }
}
