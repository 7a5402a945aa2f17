#include "host/text/version.h"

namespace brantel::host {

std::string_view ProgramVersion() {
  return NOTIFYHOST_VERSION;
}

}  // namespace brantel::host
