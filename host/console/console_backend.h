#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "description/class_description.h"
#include "host/alert/alert_event.h"
#include "host/alert/message_variables.h"
#include "host/checks/checked_system.h"
#include "host/instances/instance_file.h"
#include "host/journal/journal_entry.h"
#include "host/watch/watch_record.h"
#include "instance/instance_files.h"

namespace brantel::host {

// A test-send that somebody asks for.
struct SendOrder {
  std::string instance;  // its name
  std::string class_name;
  AlertEvent event;
  MessageVariables variables{};
};

enum class SendLineKind { kPhase, kLog };

// Something that a send has told, without what is secret.
struct SendLine {
  SendLineKind kind = SendLineKind::kLog;
  double seconds = 0;
  std::string text;  // UTF-8; a phase is one line, a log as the notifier gave it
};

// How far a send has come.
struct SendProgress {
  std::string instance;
  std::string class_name;
  std::string event;
  std::vector<SendLine> lines{};
  bool has_ended = false;
  bool is_delivered = false;
  std::string verdict{};  // what became of it, once it has ended
};

// A file that was taken out of the directory and can still be put back.
struct FileAside {
  std::string id;
  std::string name;
};

// One thing that is watched, for people who look at the console.
struct WatchedRow {
  std::string name;
  std::string kind;  // "item" or "service"
  ItemStatus status = ItemStatus::kUnknown;
  std::string since{};               // the time of its last change
  std::string detail{};              // what was found last
  bool can_be_acknowledged = false;  // so that nobody is told any more that it is down
};

// What is watched, where something is. Asked from the console's thread.
class WatchedItems {
 public:
  virtual ~WatchedItems() = default;

  // Does not wait for anything.
  virtual std::vector<WatchedRow> Items() = 0;

  // Somebody acknowledges that the item is down. On return that survives the process. False when
  // there is nothing to be acknowledged. Throws CommandFailure when it cannot be kept.
  virtual bool Acknowledge(const std::string& item, const std::string& by) = 0;
};

// What the console shows and changes. All calls come from one thread. Texts are UTF-8, but for
// those of InstanceFiles.
class ConsoleBackend {
 public:
  virtual ~ConsoleBackend() = default;

  virtual InstanceFiles& files() = 0;
  // The directory of the instances, without a backslash at its end, in the code page.
  [[nodiscard]] virtual const std::string& directory() const = 0;
  virtual CheckedSystem& system() = 0;

  // What the files of the directory hold, by their names.
  virtual std::vector<InstanceFile> ReadInstances() = 0;

  // Makes the folder, where there is none; false when that does not succeed.
  virtual bool MakeFolder(const std::string& path) = 0;
  // The names of the files in a folder, UTF-8.
  virtual std::vector<std::string> FilesIn(const std::string& folder) = 0;

  // The module's own pages, as it makes them; nothing when it makes none. `name` is the instance's.
  virtual std::optional<std::string> AddPage(const ClassDescription& notifier_class) = 0;
  virtual std::optional<std::string> EditPage(const ClassDescription& notifier_class,
                                              const std::string& name) = 0;
  // Has the module save what was posted from the page of this instance, or from the add page.
  virtual bool SubmitForm(const ClassDescription& notifier_class,
                          const std::optional<std::string>& edited, const std::string& form) = 0;

  // Begins a send and gives its id; nothing when too many are under way.
  virtual std::optional<std::string> BeginSend(const SendOrder& order) = 0;
  // Nothing when there is no such send, or no longer.
  virtual std::optional<SendProgress> ProgressOf(const std::string& id) = 0;

  // The attempts that the journal knows, the oldest first.
  virtual const std::vector<JournalEntry>& Journal() = 0;
  // Whether the process of an attempt whose end is not noted still runs.
  virtual bool RunsStill(const JournalEntry& entry) = 0;
};

// What the console has of the computer beside that.
class ConsoleSystem {
 public:
  virtual ~ConsoleSystem() = default;

  // A text of 32 hexadecimal digits that nobody can guess.
  virtual std::string RandomText() = 0;
  // Seconds that pass evenly.
  [[nodiscard]] virtual double Now() const = 0;
};

}  // namespace brantel::host
