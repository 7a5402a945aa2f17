#pragma once

#include <memory>
#include <string>
#include <vector>

#include "tests/unit/allocation_counter.h"
#include "tests/unit/dialog/fake_dialog_view.h"

namespace brantel {

// A dialog on a screen of the system's, whose own memory does not run out.
class StrainedDialogView final : public DialogView {
 public:
  FakeDialogView screen;

  void SetTitle(const std::string& title) override {
    const MemoryOfOthers others;
    screen.SetTitle(title);
  }
  std::string Text(int control, std::size_t limit) override {
    return Copy([&] { return screen.Text(control, limit); });
  }
  void SetText(int control, const std::string& text) override {
    const MemoryOfOthers others;
    screen.SetText(control, text);
  }
  void LimitTyping(int control, std::size_t limit) override {
    const MemoryOfOthers others;
    screen.LimitTyping(control, limit);
  }
  bool IsChecked(int control) override {
    const MemoryOfOthers others;
    return screen.IsChecked(control);
  }
  void SetChecked(int control, bool checked) override {
    const MemoryOfOthers others;
    screen.SetChecked(control, checked);
  }
  void FillList(int control, const std::vector<std::string>& items) override {
    const MemoryOfOthers others;
    screen.FillList(control, items);
  }
  std::optional<std::size_t> SelectedItem(int control) override {
    const MemoryOfOthers others;
    return screen.SelectedItem(control);
  }
  void SelectItem(int control, std::size_t position) override {
    const MemoryOfOthers others;
    screen.SelectItem(control, position);
  }
  void AppendItem(int control, const std::string& item) override {
    const MemoryOfOthers others;
    screen.AppendItem(control, item);
  }
  bool HasItem(int control, const std::string& item) override {
    const MemoryOfOthers others;
    return screen.HasItem(control, item);
  }
  void MoveFocus(int control) override {
    const MemoryOfOthers others;
    screen.MoveFocus(control);
  }
  void ShowMessage(const std::string& text, const std::string& caption, MessageIcon icon) override {
    const MemoryOfOthers others;
    screen.ShowMessage(text, caption, icon);
  }
  void ShowHelp(std::optional<unsigned> context) override {
    const MemoryOfOthers others;
    screen.ShowHelp(context);
  }
  std::optional<std::string> ChooseFile(const FileKind&, const std::string&) override {
    return std::nullopt;
  }
  std::optional<std::string> ChooseDirectory(const std::string&) override { return std::nullopt; }
  void ShowDialog(const DialogMaker&) override {}
  std::shared_ptr<DialogTasks> Tasks() override { return screen.tasks; }
  void Close() override {
    const MemoryOfOthers others;
    screen.Close();
  }

 private:
  // In memory of the caller's.
  template <typename Ask>
  static std::string Copy(Ask ask) {
    std::string text;
    {
      const MemoryOfOthers others;
      text = ask();
    }
    return {text};
  }
};

inline std::unique_ptr<StrainedDialogView> MakeScreen() {
  const MemoryOfOthers others;
  return std::make_unique<StrainedDialogView>();
}

}  // namespace brantel
