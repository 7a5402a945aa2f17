#include "host/attempt/alert_request.h"

#include "host/report/json_text.h"

namespace brantel::host {
namespace {

AlertRequest RequestFrom(const Record& record) {
  AlertRequest request;
  if (const Value& file = record.At("module"); !file.is_null()) request.module_file = file.Text();
  request.class_name = record.At("class").Text();
  request.instance_file = record.At("instance").Text();
  const Value& trigger = record.At("trigger");
  request.event = trigger.is_null() ? kNoEvent : AlertEvent{trigger.Whole<std::uint32_t>()};
  for (const Value& assignment : record.At("variables").Values())
    request.variables.Assign(assignment.Text());
  request.takes_raw_values = record.At("raw").Flag();
  return request;
}

}  // namespace

std::string RequestLine(const AlertRequest& request) {
  return JsonLine(Record{{"module", request.module_file},
                         {"class", request.class_name},
                         {"instance", request.instance_file},
                         {"trigger", request.event.trigger_word},
                         {"variables", request.variables.assignments()},
                         {"raw", request.takes_raw_values}}) +
         "\n";
}

std::optional<AlertRequest> ParseRequest(std::string_view line) {
  return ReadRecord(line, RequestFrom);
}

}  // namespace brantel::host
