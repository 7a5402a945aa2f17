#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/checks/diagnosis.h"
#include "host/console/console_backend.h"
#include "host/console/form_dialog.h"
#include "host/console/page_template.h"
#include "host/journal/journal_entry.h"
#include "host/journal/journal_history.h"

namespace brantel::host {

// What templates are filled with, by what is shown. Each adds to the values that it is given.

// An instance in a list, with its last attempt, if there was one.
void FillListedInstance(PageValues& values, const InstanceFile& file, const JournalEntry* last,
                        ConsoleBackend& backend);

// An instance's fields with their values, without passwords.
void FillFields(PageValues& values, InstanceFile file);

// What doctor has found, in the list "findings", and the worst of it, "severity".
void FillDiagnosis(PageValues& values, const Diagnosis& diagnosis);

// A class with what its instances may hold, in the list "fields".
void FillClass(PageValues& values, const ClassDescription& notifier_class);

void FillEntry(PageValues& values, const JournalEntry& entry, AttemptState state);

void FillForm(PageValues& values, const ConsoleForm& form);

// A send with what it has told, in the list "lines".
void FillSend(PageValues& values, const SendProgress& progress);

void FillWatched(PageValues& values, const WatchedRow& item);

// The events by their names, in the list "events".
void FillEvents(PageValues& values);

// The last attempt for the instance of this name; null when the journal knows none.
const JournalEntry* LastAttemptOf(const std::vector<JournalEntry>& journal, std::string_view name);

// What has become of the attempt up to now.
AttemptState PresentStateOf(const JournalEntry& entry, ConsoleBackend& backend);

// Whether the entry has the words somewhere, letter case of English letters aside.
bool HasWords(const JournalEntry& entry, std::string_view words);

// The text of a log as lines for people.
std::string ShownLog(std::string_view log);

}  // namespace brantel::host
