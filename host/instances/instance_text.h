#pragma once

#include <string>
#include <vector>

#include "host/instances/instance_file.h"

namespace brantel::host {

// What a file that holds an instance tells: its class, and the name and value of each field, a line
// for each line of a value.
std::string InstanceText(const InstanceFile& file);

// The same as one JSON object, {"class": ..., "name": ..., "fields": {...}}, the values as they
// are.
std::string InstanceJson(const InstanceFile& file);

// A table of files by their names: what class each is of and what its first texts are, or what is
// wrong with it.
std::string InstanceTable(std::vector<InstanceFile> files);

}  // namespace brantel::host
