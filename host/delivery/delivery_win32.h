#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "host/attempt/attempt_message.h"
#include "host/delivery/delivery_course.h"
#include "host/delivery/delivery_listener.h"
#include "host/delivery/delivery_options.h"
#include "host/instances/instance_file.h"
#include "host/journal/journal_entry.h"

namespace brantel::host {

// An alert that is to be delivered.
struct AlertToDeliver {
  std::string command;     // by its name, for the journal
  std::string class_name;  // as given
  std::string instance;    // the instance's name for the journal; empty where it has none
  std::wstring path;       // its file's, in full; empty where there is none
  InstanceFile file;       // what that holds, as far as it can be read
  std::wstring folder;     // in full, where the journal is if no other place is given; or empty
  std::optional<std::string> module_file;  // to load without registration, if one is named
  std::string decision{};                  // of a watch, for the journal; empty where there is none
};

// What became of an alert.
struct DeliveryEnd {
  JournalEntry entry;                 // as it stands in the journal
  DeliverySummary summary;            // any result that is not negative counts as delivered
  std::optional<AttemptFault> fault;  // why it could not be tried, if it could not
};

// Delivers the alert through its module file, or through the registered class, in a process of its
// own, and ends that when the event `stop` is signalled (null where nothing stops it). Notes the
// alert in the journal before and after. Can be called on any thread, on several at a time. Throws
// CommandFailure when no process can be started.
DeliveryEnd Deliver(const AlertToDeliver& alert, const DeliveryOptions& options, HANDLE stop,
                    DeliveryListener& listener);

}  // namespace brantel::host
