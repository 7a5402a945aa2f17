#include "host/console/console_pages.h"

#include <algorithm>

#include "host/alert/alert_event.h"
#include "host/console/form_text.h"
#include "host/instances/field_guide.h"
#include "host/instances/instance_text.h"
#include "host/text/letter_case.h"
#include "host/text/log_text.h"
#include "host/text/seconds_text.h"
#include "module/class_descriptions.h"

namespace brantel::host {
namespace {

std::string_view FileNameOf(std::string_view path) {
  return path.substr(path.rfind('\\') + 1);
}

// As part of the name of a class in the style sheet.
std::string StyleOf(AttemptState state) {
  std::string style(AttemptStateName(state));
  std::ranges::replace(style, ' ', '-');
  return style;
}

bool ContainsIgnoringCase(std::string_view text, std::string_view words) {
  const auto is_same = [](char one, char other) { return LowerCase(one) == LowerCase(other); };
  return words.empty() ||
         std::search(text.begin(), text.end(), words.begin(), words.end(), is_same) != text.end();
}

void FillControl(PageValues& values, const FormControl& control) {
  values.Set("id", "field-" + control.name)
      .Set("name", control.name)
      .Set("label", control.label)
      .Set("value", control.value)
      .Set("hint", control.hint)
      .SetFlag("needed", control.is_needed)
      .SetFlag("kept", control.is_kept)
      .SetFlag("checked", control.value == "1")
      .SetFlag("line", control.kind == FormControlKind::kLine)
      .SetFlag("lines", control.kind == FormControlKind::kLines)
      .SetFlag("password", control.kind == FormControlKind::kPassword)
      .SetFlag("checkbox", control.kind == FormControlKind::kCheckBox)
      .SetFlag("selection", control.kind == FormControlKind::kSelection);
  for (const std::string& choice : control.choices) {
    values.Add("choices").Set("choice", choice).SetFlag("chosen", choice == control.value);
  }
}

std::string CapitalisedWords(std::string words) {
  if (!words.empty() && words[0] >= 'a' && words[0] <= 'z')
    words[0] = static_cast<char>(words[0] - 'a' + 'A');
  return words;
}

}  // namespace

void FillListedInstance(PageValues& values, const InstanceFile& file, const JournalEntry* last,
                        ConsoleBackend& backend) {
  values.Set("name", file.name)
      .Set("path", "/instances/" + EncodePercents(file.name))
      .Set("class", file.layout == nullptr ? "" : file.layout->class_name)
      .Set("fault", file.fault)
      .SetFlag("has_class", file.layout != nullptr)
      .SetFlag("has_fault", !file.fault.empty())
      .SetFlag("has_last", last != nullptr);
  if (last == nullptr) return;
  FillEntry(values, *last, PresentStateOf(*last, backend));
  values.Set("name", file.name).Set("path", "/instances/" + EncodePercents(file.name));
}

void FillFields(PageValues& values, InstanceFile file) {
  HideSecrets(file);
  for (std::size_t i = 0; i < file.layout->fields.size(); ++i) {
    const InstanceField& field = file.layout->fields[i];
    const bool is_number = field.kind == FieldKind::kInteger;
    const std::string value =
        is_number ? std::to_string(file.instance->integer(i)) : file.instance->text(i);
    values.Add("fields")
        .Set("field", CapitalisedWords(std::string(field.name)))
        .Set("value", value)
        .SetFlag("is_empty", value.empty());
  }
}

void FillDiagnosis(PageValues& values, const Diagnosis& diagnosis) {
  const std::string severity(SeverityName(diagnosis.severity()));
  values.Set("severity", severity).SetFlag("is_sound", diagnosis.findings.empty());
  for (const Finding& finding : diagnosis.findings) {
    values.Add("findings")
        .Set("finding_severity", SeverityName(finding.severity))
        .Set("finding", CapitalisedWords(FindingText(finding)));
  }
}

void FillClass(PageValues& values, const ClassDescription& notifier_class) {
  values.Set("class", notifier_class.instances.class_name)
      .Set("add_path", "/add/" + std::string(notifier_class.instances.class_name))
      .Set("help_path", "/help/" + std::string(notifier_class.instances.class_name))
      .SetFlag("has_pages", notifier_class.web_form.has_value());
  for (const InstanceField& field : notifier_class.instances.fields) {
    const FieldGuide& guide = GuideOf(notifier_class, field.index);
    values.Add("fields")
        .Set("field", CapitalisedWords(std::string(field.name)))
        .Set("values", guide.values)
        .Set("standard", guide.standard)
        .Set("meaning", guide.meaning)
        .SetFlag("needed", guide.need == Need::kNeeded)
        .SetFlag("filled_in", guide.filling == Filling::kFilledIn);
  }
}

void FillEntry(PageValues& values, const JournalEntry& entry, AttemptState state) {
  values.Set("entry_path", "/journal/" + EncodePercents(entry.id))
      .Set("began", ShortTimeText(entry.began))
      .Set("class", entry.class_name)
      .Set("instance", FileNameOf(entry.instance))
      .Set("event", entry.event)
      .Set("command", entry.command)
      .Set("machine", entry.machine)
      .Set("state", AttemptStateName(state))
      .Set("state_style", StyleOf(state))
      .Set("verdict", entry.end ? CapitalisedWords(entry.end->verdict) : "")
      .Set("result", entry.end ? entry.end->result : "")
      .Set("seconds", entry.end ? SecondsText(entry.end->seconds) : "")
      .SetFlag("has_end", entry.end.has_value())
      .Set("log", entry.end ? ShownLog(entry.end->log) : "");
}

void FillForm(PageValues& values, const ConsoleForm& form) {
  values.Set("instance_name", form.name);
  for (const FormControl& control : form.controls)
    FillControl(values.Add("controls"), control);
}

void FillSend(PageValues& values, const SendProgress& progress) {
  values.Set("instance", progress.instance)
      .Set("class", progress.class_name)
      .Set("event", progress.event)
      .Set("instance_path", "/instances/" + EncodePercents(progress.instance))
      .Set("verdict", CapitalisedWords(progress.verdict))
      .Set("outcome", progress.is_delivered ? "delivered" : "failed")
      .SetFlag("has_ended", progress.has_ended);
  std::string log;
  for (const SendLine& line : progress.lines) {
    if (line.kind == SendLineKind::kLog) {
      log += line.text;
      continue;
    }
    values.Add("phases")
        .Set("phase_seconds", SecondsText(line.seconds))
        .Set("phase", CapitalisedWords(line.text));
  }
  values.Set("log", ShownLog(log));
}

void FillWatched(PageValues& values, const WatchedRow& item) {
  values.Set("name", item.name)
      .Set("kind", item.kind)
      .Set("state", StatusName(item.status))
      .Set("state_style", StatusName(item.status))
      .Set("since", item.since)
      .Set("detail", item.detail)
      .Set("acknowledge_path", "/acknowledge?item=" + EncodePercents(item.name))
      .SetFlag("can_be_acknowledged", item.can_be_acknowledged);
}

void FillEvents(PageValues& values) {
  for (const NamedAlertEvent& named : NamedAlertEvents()) {
    values.Add("events")
        .Set("event_name", named.name)
        .SetFlag("is_standard", named.event == kItemDown);
  }
}

const JournalEntry* LastAttemptOf(const std::vector<JournalEntry>& journal, std::string_view name) {
  const auto found = std::find_if(journal.rbegin(), journal.rend(), [&](const JournalEntry& entry) {
    return EqualIgnoringCase(FileNameOf(entry.instance), name);
  });
  return found == journal.rend() ? nullptr : &*found;
}

AttemptState PresentStateOf(const JournalEntry& entry, ConsoleBackend& backend) {
  return StateOf(entry, [&](const JournalEntry& attempt) { return backend.RunsStill(attempt); });
}

bool HasWords(const JournalEntry& entry, std::string_view words) {
  const auto has = [&](std::string_view text) { return ContainsIgnoringCase(text, words); };
  return has(entry.class_name) || has(FileNameOf(entry.instance)) || has(entry.event) ||
         has(ShortTimeText(entry.began)) ||
         (entry.end && (has(entry.end->verdict) || has(entry.end->log)));
}

std::string ShownLog(std::string_view log) {
  return LogText().Render(log);
}

}  // namespace brantel::host
