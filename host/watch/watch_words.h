#pragma once

#include <string>

#include "host/report/report_writer.h"
#include "host/watch/watch.h"
#include "host/watch/watch_record.h"

namespace brantel::host {

// Tells of what a watch does as it comes: a line for each thing.
void TellRecord(const ReportWriter& report, const WatchRecord& record);

// Tells how it stands with all items: a table, or an object each.
void TellItems(const ReportWriter& report, const std::vector<ItemSnapshot>& items);

// Tells which alerts have not got through yet.
void TellOpenAlerts(const ReportWriter& report, const WatchMemory& memory);

}  // namespace brantel::host
