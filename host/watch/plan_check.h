#pragma once

#include <map>
#include <string>
#include <vector>

#include "host/checks/diagnosis.h"
#include "host/watch/watch_plan.h"

namespace brantel::host {

// What keeps the instances from telling of an item what people need, of each item of which anything
// does. `classes` has the classes of the instances, by the instances' names.
std::vector<Diagnosis> DiagnoseItems(const WatchPlan& plan,
                                     const std::map<std::string, std::string>& classes);

}  // namespace brantel::host
