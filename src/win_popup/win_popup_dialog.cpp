#include "win_popup/win_popup_dialog.h"

#include "dialog/dialog_tasks.h"
#include "win_popup/win_popup_description.h"
#include "win_popup/win_popup_ids.h"

namespace brantel {
WinPopupDialog::WinPopupDialog(DialogView& view, InstanceFiles& files, InstanceDialogCall call,
                               const DestinationSources& sources)
    : InstanceDialog(kWinPopup, view, files, std::move(call)),
      network_(sources.network_system),
      sources_(sources) {}

void WinPopupDialog::FillLists() {
  auto library = network_.LibraryWith(NetworkEntry::kMessageNameEnum);
  if (!library) return;
  // The worker may outlive the dialog. What it posts here is done only while the dialog
  // is open.
  DestinationSeeker seeker = {
      .wants_more = [tasks = view().Tasks()] { return tasks->IsOpen(); },
      .take =
          [this, tasks = view().Tasks()](const std::string& name, Repetition repetition) {
            tasks->Post([this, name, repetition] { Offer(name, repetition); });
          },
  };
  sources_.workers.Start(
      [library = std::move(library), &neighbourhood = sources_.neighbourhood,
       seeker = std::move(seeker)] { FindDestinations(*library, neighbourhood, seeker); });
}

void WinPopupDialog::Offer(const std::string& name, Repetition repetition) {
  if (repetition == Repetition::kLeftOut && view().HasItem(WIN_POPUP_DESTINATION, name)) return;
  view().AppendItem(WIN_POPUP_DESTINATION, name);
}

}  // namespace brantel
