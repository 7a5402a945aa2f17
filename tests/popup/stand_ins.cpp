#include "tests/popup/stand_ins.h"

#include <fstream>
#include <stdexcept>

namespace brantel {
namespace {

constexpr const wchar_t* kGateName = L"network gate of the tests";
constexpr const wchar_t* kArrivalsName = L"network gate of the tests reached";
constexpr const wchar_t* kGateVariable = L"NEIGHBOURHOOD_GATE";
// More answers than ever wait at the same time.
constexpr LONG kMostWaiting = 1000;

}  // namespace

StandIns::StandIns() {
  Set(L"MESSENGER_REPORT", (scratch_.path() / L"report").c_str());
}

StandIns::~StandIns() {
  for (const wchar_t* name : set_) {
    SetEnvironmentVariableW(name, nullptr);
  }
}

void StandIns::SetMessageNames(const wchar_t* names) {
  Set(L"MESSENGER_NAMES", names);
}

void StandIns::SetNetwork(const wchar_t* description) {
  Set(L"NEIGHBOURHOOD", description);
}

void StandIns::SetNetworkDelay(unsigned milliseconds) {
  Set(L"NEIGHBOURHOOD_DELAY", std::to_wstring(milliseconds).c_str());
}

void StandIns::SetAnswer(unsigned status) {
  Set(L"MESSENGER_ANSWER", std::to_wstring(status).c_str());
}

void StandIns::CloseGate() {
  // One of the same name that is still there would let through what it was opened for.
  gate_ = Handle();
  arrivals_ = Handle();
  gate_ = Handle(CreateSemaphoreW(nullptr, 0, 2 * kMostWaiting, kGateName));
  arrivals_ = Handle(CreateSemaphoreW(nullptr, 0, 2 * kMostWaiting, kArrivalsName));
  // NOLINTNEXTLINE(readability-suspicious-call-argument): its value is a name
  Set(kGateVariable, kGateName);
}

void StandIns::LetThrough(int answers) {
  ReleaseSemaphore(gate_.get(), answers, nullptr);
}

void StandIns::AwaitArrival() {
  AwaitThat([this] { return WaitForSingleObject(arrivals_.get(), 0) == WAIT_OBJECT_0; },
            "nobody asks the network");
}

void StandIns::OpenGate() {
  SetEnvironmentVariableW(kGateVariable, nullptr);
  if (gate_) LetThrough(kMostWaiting);
}

std::vector<std::string> StandIns::Report() const {
  std::ifstream stream(scratch_.path() / L"report");
  std::vector<std::string> lines;
  for (std::string line; std::getline(stream, line);) {
    lines.push_back(line);
  }
  return lines;
}

void StandIns::Set(const wchar_t* name, const wchar_t* value) {
  SetEnvironmentVariableW(name, value);
  set_.push_back(name);
}

void AwaitThat(const std::function<bool()>& condition, const char* otherwise) {
  constexpr DWORD kPatience = 60000;  // ms, for a machine that is busy
  constexpr DWORD kLookAgain = 10;
  for (DWORD waited = 0; waited < kPatience; waited += kLookAgain) {
    if (condition()) return;
    Sleep(kLookAgain);
  }
  throw std::runtime_error(otherwise);
}

}  // namespace brantel
