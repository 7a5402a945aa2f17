#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <vector>

#include "host/watch/watch.h"

namespace brantel::host {

// How alerts of a watch are delivered.
struct AlertRoute {
  std::optional<std::string> module_file{};  // to load without registration, if one is named
  std::wstring instances{};                  // the folder of instance files, in full
  std::string plan{};                        // the name of the plan's file, for the journal
};

// What an alert through this instance has for itself: its class, and the serial port of a class
// that has one. Nobody else uses either at the same time.
std::vector<std::string> ResourcesOf(const std::wstring& folder, const std::string& instance);

// Delivers the alert in a process of its own, which is ended when `stop` is signalled. What keeps
// it from being tried is told as a failure.
AttemptResult AttemptAlert(const AlertRoute& route, const AttemptOrder& order, HANDLE stop);

}  // namespace brantel::host
