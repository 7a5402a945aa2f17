#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/report/report_writer.h"
#include "host/text/point_in_time.h"

namespace brantel::host {

// What became of an attempt to deliver an alert.
struct JournaledEnd {
  bool is_delivered = false;
  std::string verdict{};
  std::string result{};  // Send's, with its name; empty where it gave none
  double seconds = 0;
  std::string log{};  // the notifier's, without what is secret

  friend bool operator==(const JournaledEnd&, const JournaledEnd&) = default;
};

// What the journal says of an attempt: once before it, and once more with its end. Texts are UTF-8.
struct JournalEntry {
  std::string id{};  // the attempt's own
  PointInTime began{};
  std::string command{};  // "send", "test" or "watch"
  std::string class_name{};
  std::string instance{};     // the file's full path; empty where there is none
  std::string event{};        // its name, or its trigger word
  std::string machine{};      // on which it is made
  std::uint32_t process = 0;  // of that machine, by which it is made
  std::string decision{};     // of a watch, that had it made; empty where there is none
  std::optional<JournaledEnd> end{};

  friend bool operator==(const JournalEntry&, const JournalEntry&) = default;
};

// The entry as a line of the journal, with its end.
std::string JournalLine(const JournalEntry& entry);

// Reads such a line. Nothing when it is none, as one that was cut off.
std::optional<JournalEntry> ParseJournalLine(std::string_view line);

// The last that the journal says of each attempt, in the order in which they began. Lines that are
// none, such as those that were cut off, are passed over.
std::vector<JournalEntry> ReadJournal(std::string_view content);

}  // namespace brantel::host
