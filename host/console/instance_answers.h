#pragma once

#include <string>

#include "host/console/console_context.h"
#include "host/console/http_message.h"
#include "host/instances/instance_file.h"

namespace brantel::host {

// Instances, and what is done with their files.
HttpResponse GetInstances(ConsoleContext& console, const ConsoleVisit& visit);
HttpResponse GetInstance(ConsoleContext& console, const ConsoleVisit& visit);
HttpResponse PostRename(ConsoleContext& console, const ConsoleVisit& visit);
HttpResponse PostCopy(ConsoleContext& console, const ConsoleVisit& visit);

// Its page, with what keeps from doing what was asked for; empty where nothing does.
HttpResponse ShowInstance(ConsoleContext& console, const ConsoleVisit& visit,
                          const InstanceFile& file, const std::string& complaint);

}  // namespace brantel::host
