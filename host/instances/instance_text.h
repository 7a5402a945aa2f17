#pragma once

#include <span>
#include <string>
#include <vector>

#include "host/instances/instance_file.h"
#include "host/report/report_writer.h"

namespace brantel::host {

// What a file that holds an instance tells: its class, and the name and value of each field, a line
// for each line of a value.
std::string InstanceText(const InstanceFile& file);

// The same as {"class": ..., "name": ..., "fields": {...}}, the values as they are.
Record InstanceRecord(const InstanceFile& file);

// Tells of files: what class each is of and what its first texts are, or what is wrong with it.
void WriteInstanceTable(const ReportWriter& report, std::span<const InstanceFile> files);

// Puts files into the order in which people look for them.
void SortByName(std::vector<InstanceFile>& files);

// Puts stars into the place of passwords, in what is shown and not in what is stored.
void HideSecrets(InstanceFile& file);

// The passwords of an instance.
std::vector<std::string> SecretTexts(const InstanceFile& file);

}  // namespace brantel::host
