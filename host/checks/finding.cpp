#include "host/checks/finding.h"

namespace brantel::host {

std::string_view SeverityName(Severity severity) {
  switch (severity) {
    case Severity::kOk:
      return "ok";
    case Severity::kWarning:
      return "warning";
    case Severity::kFailure:
      break;
  }
  return "failure";
}

}  // namespace brantel::host
