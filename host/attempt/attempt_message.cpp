#include "host/attempt/attempt_message.h"

#include "host/report/report_writer.h"

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
    return {{kFault, fault.message}, {kExitCode, fault.exit_code}};
  }
};

AttemptMessage MessageFrom(const Record& record) {
  if (record.contains(kLog)) return LoggedText{record.at(kLog).get<std::string>()};
  if (record.contains(kFault)) {
    return AttemptFault{record.at(kExitCode).get<ExitCode>(), record.at(kFault).get<std::string>()};
  }
  return SendResult{record.at(kResult).get<std::int32_t>()};
}

}  // namespace

std::string MessageLine(const AttemptMessage& message) {
  return JsonLine(std::visit(ToRecord(), message)) + "\n";
}

std::optional<AttemptMessage> ParseMessage(std::string_view line) {
  try {
    return MessageFrom(Record::parse(line));
  } catch (const Record::exception&) {
    return std::nullopt;
  }
}

}  // namespace brantel::host
