#pragma once

#include <algorithm>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "host/console/console_backend.h"
#include "host/instances/instance_text.h"
#include "host/instances/journal_name.h"
#include "module/class_descriptions.h"
#include "tests/unit/host/checks/fake_checked_system.h"
#include "tests/unit/instance/fake_instance_files.h"
#include "tests/unit/text/few_code_pages.h"
#include "web/web_forms.h"

namespace brantel::host {

// What a console is before, in memory: instance files that are as particular as those on disk, the
// module's own web forms, and sends that go as far as a test lets them.
class FakeConsoleBackend : public ConsoleBackend {
 public:
  inline static const std::string kFolder = "C:\\alerts";

  FakeInstanceFiles instance_files;
  FakeCheckedSystem checked_system;
  std::map<std::string, SendProgress> sends;
  std::vector<SendOrder> orders;
  std::size_t most_sends = 4;
  std::vector<JournalEntry> journal;
  std::set<std::string> running;  // ids of attempts
  bool makes_pages = true;

  // Adds an instance whose texts are all this one.
  void AddInstance(const std::string& class_name, const std::string& name,
                   const std::string& text) {
    const InstanceLayout& layout = FindClassDescription(class_name)->instances;
    Instance instance(layout.fields.size());
    for (std::size_t i = 0; i < layout.fields.size(); ++i) {
      if (layout.fields[i].kind == FieldKind::kText) instance.set_text(i, text);
    }
    instance_files.files[PathOf(name)] = EncodeInstance(layout, instance);
  }

  static std::string PathOf(const std::string& name) { return kFolder + "\\" + name; }

  // What the file of this name holds; nothing when there is none.
  [[nodiscard]] std::optional<std::string> ContentOf(const std::string& name) const {
    const auto file = instance_files.files.find(PathOf(name));
    if (file == instance_files.files.end()) return std::nullopt;
    return file->second;
  }

  [[nodiscard]] Instance StoredAs(const std::string& class_name, const std::string& name) const {
    const InstanceLayout& layout = FindClassDescription(class_name)->instances;
    return DecodeInstance(layout, ContentOf(name).value()).value();
  }

  InstanceFiles& files() override { return instance_files; }
  [[nodiscard]] const std::string& directory() const override { return kFolder; }
  CheckedSystem& system() override { return checked_system; }

  std::vector<InstanceFile> ReadInstances() override {
    std::vector<InstanceFile> found;
    for (const std::string& name : NamesIn(kFolder)) {
      const auto content = instance_files.Open(PathOf(name));
      const std::string shown = FromLatin(name);
      if (IsJournalName(shown)) continue;
      found.push_back(content ? ExamineInstanceFile(shown, *content, FromLatin)
                              : InstanceFile{.name = shown, .fault = "cannot be read"});
    }
    SortByName(found);
    return found;
  }

  bool MakeFolder(const std::string& path) override {
    folders.insert(path);
    return true;
  }
  std::vector<std::string> FilesIn(const std::string& folder) override {
    std::vector<std::string> names;
    for (const std::string& name : NamesIn(folder))
      names.push_back(FromLatin(name));
    return names;
  }

  std::optional<std::string> AddPage(const ClassDescription& notifier_class) override {
    if (!makes_pages) return std::nullopt;
    WebForms forms(instance_files, notifier_class, kCodePage1252);
    return FromLatin(forms.AddPage(kFolder, nullptr).view());
  }
  std::optional<std::string> EditPage(const ClassDescription& notifier_class,
                                      const std::string& name) override {
    if (!makes_pages) return std::nullopt;
    WebForms forms(instance_files, notifier_class, kCodePage1252);
    return PageOf(forms, name);
  }
  bool SubmitForm(const ClassDescription& notifier_class, const std::optional<std::string>& edited,
                  const std::string& form) override {
    WebForms forms(instance_files, notifier_class, kCodePage1252);
    if (edited) {
      PageOf(forms, *edited);
    } else {
      forms.AddPage(kFolder, nullptr);
    }
    return forms.SubmitForm(kFolder, checked_system.ToCodePage(form).value()) == kOk;
  }

  std::optional<std::string> BeginSend(const SendOrder& order) override {
    if (orders.size() == most_sends) return std::nullopt;
    orders.push_back(order);
    const std::string id = "send-" + std::to_string(orders.size());
    sends[id] = {.instance = order.instance,
                 .class_name = order.class_name,
                 .event = EventText(order.event)};
    return id;
  }
  std::optional<SendProgress> ProgressOf(const std::string& id) override {
    const auto send = sends.find(id);
    if (send == sends.end()) return std::nullopt;
    return send->second;
  }

  const std::vector<JournalEntry>& Journal() override { return journal; }
  bool RunsStill(const JournalEntry& entry) override { return running.contains(entry.id); }

  std::set<std::string> folders;

 private:
  static std::string FromLatin(std::string_view bytes) {
    return FakeCheckedSystem().FromCodePage(bytes);
  }

  [[nodiscard]] std::vector<std::string> NamesIn(const std::string& folder) const {
    std::vector<std::string> names;
    for (const auto& [path, content] : instance_files.files) {
      const std::size_t slash = path.rfind('\\');
      if (path.substr(0, slash) == folder) names.push_back(path.substr(slash + 1));
    }
    return names;
  }

  std::optional<std::string> PageOf(WebForms& forms, const std::string& name) const {
    const std::string stored = checked_system.ToCodePage(name).value();
    const std::string path = PathOf(stored);
    const auto page =
        forms.EditPage({std::u16string(path.begin(), path.end()), path}, stored, nullptr);
    if (!page) return std::nullopt;
    return FromLatin(page->view());
  }
};

// Random texts that count, and a clock that stands until it is set.
class FakeConsoleSystem final : public ConsoleSystem {
 public:
  double now = 1000;

  std::string RandomText() override {
    const std::string number = std::to_string(++made_);
    return std::string(32 - number.size(), '0') + number;
  }
  [[nodiscard]] double Now() const override { return now; }

 private:
  unsigned made_ = 0;
};

}  // namespace brantel::host
