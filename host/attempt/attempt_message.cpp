#include "host/attempt/attempt_message.h"

#include "host/report/json_text.h"

namespace brantel::host {
namespace {

constexpr const char* kLog = "log";
constexpr const char* kResult = "result";
constexpr const char* kFault = "fault";
constexpr const char* kExitCode = "exit_code";

struct ToRecord {
  Record operator()(const LoggedText& logged) const { return {{kLog, logged.text}}; }
  Record operator()(const SendResult& sent) const { return {{kResult, sent.result}}; }
  Record operator()(const AttemptFault& fault) const {
    return {{kFault, fault.message}, {kExitCode, static_cast<int>(fault.exit_code)}};
  }
};

AttemptMessage MessageFrom(const Record& record) {
  if (const Value* text = record.Find(kLog)) return LoggedText{text->Text()};
  if (const Value* fault = record.Find(kFault))
    return AttemptFault{static_cast<ExitCode>(record.At(kExitCode).Whole<int>()), fault->Text()};
  return SendResult{record.At(kResult).Whole<std::int32_t>()};
}

}  // namespace

std::string MessageLine(const AttemptMessage& message) {
  return JsonLine(std::visit(ToRecord(), message)) + "\n";
}

std::optional<AttemptMessage> ParseMessage(std::string_view line) {
  return ReadRecord(line, MessageFrom);
}

}  // namespace brantel::host
