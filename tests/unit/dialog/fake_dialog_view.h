#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "dialog/dialog.h"
#include "dialog/dialog_tasks.h"
#include "dialog/dialog_view.h"

namespace brantel {

// Tasks that wait until the test lets the dialog do them.
class FakeDialogTasks final : public DialogTasks {
 public:
  bool is_open = true;
  std::vector<std::function<void()>> left;

  void Post(std::function<void()> task) override {
    if (is_open) left.push_back(std::move(task));
  }

  [[nodiscard]] bool IsOpen() override { return is_open; }

  void Do() {
    for (const auto& task : std::exchange(left, {})) {
      task();
    }
  }
};

// A dialog in memory, with whatever controls are asked for.
class FakeDialogView final : public DialogView {
 public:
  std::string title;
  std::map<int, std::string> texts;
  std::map<int, bool> checks;
  std::map<int, std::size_t> limits;
  std::map<int, std::vector<std::string>> lists;
  std::map<int, std::optional<std::size_t>> selections;
  // What the operator answers.
  std::optional<std::string> chosen_file;
  std::optional<std::string> chosen_directory;
  // What the operator does in a dialog that was shown over this one and has opened.
  std::function<void(Dialog&, FakeDialogView&)> in_shown_dialog = [](Dialog&, FakeDialogView&) {};
  // What an operator notices, in order: "message TEXT", "message TEXT [CAPTION]", "error TEXT",
  // "focus CONTROL", "help CONTEXT", "help contents", "choose file LABEL PATTERN from CURRENT",
  // "choose directory TITLE", "close".
  std::vector<std::string> events;

  // The radio buttons and check boxes that are checked.
  [[nodiscard]] std::vector<int> Checked() const {
    std::vector<int> checked;
    for (const auto& [control, is_checked] : checks) {
      if (is_checked) checked.push_back(control);
    }
    return checked;
  }

  void SetTitle(const std::string& new_title) override { title = new_title; }

  std::string Text(int control, std::size_t limit) override {
    return texts[control].substr(0, limit);
  }
  void SetText(int control, const std::string& text) override { texts[control] = text; }
  void LimitTyping(int control, std::size_t limit) override { limits[control] = limit; }

  bool IsChecked(int control) override { return checks[control]; }
  void SetChecked(int control, bool checked) override { checks[control] = checked; }

  void FillList(int control, const std::vector<std::string>& items) override {
    lists[control] = items;
    selections[control].reset();
  }
  std::optional<std::size_t> SelectedItem(int control) override { return selections[control]; }
  void SelectItem(int control, std::size_t position) override {
    selections[control] = position < lists[control].size() ? std::optional(position) : std::nullopt;
  }

  void AppendItem(int control, const std::string& item) override { lists[control].push_back(item); }
  bool HasItem(int control, const std::string& item) override {
    return std::ranges::find(lists[control], item) != lists[control].end();
  }

  void MoveFocus(int control) override { events.push_back("focus " + std::to_string(control)); }

  void ShowMessage(const std::string& text, const std::string& caption, MessageIcon icon) override {
    events.push_back((icon == MessageIcon::kError ? "error " : "message ") + text +
                     (caption.empty() ? "" : " [" + caption + "]"));
  }

  void ShowHelp(std::optional<unsigned> context) override {
    events.push_back("help " + (context ? std::to_string(*context) : "contents"));
  }

  std::optional<std::string> ChooseFile(const FileKind& kind, const std::string& current) override {
    events.push_back("choose file " + std::to_string(kind.label_id) + " " +
                     std::string(kind.pattern) + " from " + current);
    return chosen_file;
  }

  std::optional<std::string> ChooseDirectory(const std::string& browser_title) override {
    events.push_back("choose directory " + browser_title);
    return chosen_directory;
  }

  void ShowDialog(const DialogMaker& make) override {
    FakeDialogView view;
    const auto dialog = make(view);
    dialog->Open();
    in_shown_dialog(*dialog, view);
  }

  std::shared_ptr<DialogTasks> Tasks() override { return tasks; }

  void Close() override { events.emplace_back("close"); }

  std::shared_ptr<FakeDialogTasks> tasks = std::make_shared<FakeDialogTasks>();
};

}  // namespace brantel
