#include "host/attempt/alert_request.h"

#include "host/report/report_writer.h"

namespace brantel::host {
namespace {

Record OrNull(const auto& value) {
  return value ? Record(*value) : Record(nullptr);
}

AlertRequest RequestFrom(const Record& record) {
  AlertRequest request;
  if (const Record& file = record.at("module"); !file.is_null())
    request.module_file = file.get<std::string>();
  request.class_name = record.at("class").get<std::string>();
  request.instance_file = record.at("instance").get<std::string>();
  const Record& trigger = record.at("trigger");
  request.event = trigger.is_null() ? kNoEvent : AlertEvent{trigger.get<std::uint32_t>()};
  for (const Record& assignment : record.at("variables"))
    request.variables.Assign(assignment.get<std::string>());
  request.takes_raw_values = record.at("raw").get<bool>();
  return request;
}

}  // namespace

std::string RequestLine(const AlertRequest& request) {
  return JsonLine({{"module", OrNull(request.module_file)},
                   {"class", request.class_name},
                   {"instance", request.instance_file},
                   {"trigger", OrNull(request.event.trigger_word)},
                   {"variables", request.variables.assignments()},
                   {"raw", request.takes_raw_values}}) +
         "\n";
}

std::optional<AlertRequest> ParseRequest(std::string_view line) {
  try {
    return RequestFrom(Record::parse(line));
  } catch (const Record::exception&) {
    return std::nullopt;
  }
}

}  // namespace brantel::host
