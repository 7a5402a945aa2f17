#include "popup/win_popup_dialog.h"

#include "framework/dialog_tasks.h"
#include "popup/win_popup_layout.h"

namespace brantel {
namespace {

constexpr int kNameEdit = 203;
constexpr int kDestinationBox = 215;

// The help file has no page of this dialog's own, so help opens at the contents.
constexpr InstanceDialogSpec kSpec = {
    .layout = kWinPopupLayout,
    .template_id = 116,
    .add_title_id = text_id::kAddWinPopup,
    .edit_title_id = text_id::kEditWinPopup,
    .name_control = kNameEdit,
    .name_error_focus = kNameEdit,
    .name_taken_check = NameTakenCheck::kAfterFields,
    .prefilled = false,
};

}  // namespace

WinPopupDialog::WinPopupDialog(DialogView& view, InstanceFiles& files, InstanceDialogCall call,
                               const DestinationSources& sources)
    : InstanceDialog(kSpec, view, files, std::move(call)),
      network_(sources.network_system),
      sources_(sources) {}

void WinPopupDialog::FillLists() {
  auto library = network_.LibraryWith(NetworkEntry::kMessageNameEnum);
  if (!library) return;
  // The worker may outlive the dialog. What it leaves to be done here is done only while the dialog
  // is open.
  const auto take = [this, tasks = view().Tasks()](const std::string& name, Repetition repetition) {
    return tasks->Leave([this, name, repetition] { Offer(name, repetition); });
  };
  sources_.workers.Start([library = std::move(library), &neighbourhood = sources_.neighbourhood,
                          take] { FindDestinations(*library, neighbourhood, take); });
}

void WinPopupDialog::Offer(const std::string& name, Repetition repetition) {
  if (repetition == Repetition::kLeftOut && view().HasItem(kDestinationBox, name)) return;
  view().AppendItem(kDestinationBox, name);
}

}  // namespace brantel
