#pragma once

#include "dialog/instance_dialog.h"
#include "win_popup/destination_search.h"
#include "win_popup/network_api.h"
#include "win_popup/worker_threads.h"

namespace brantel {

// What the destinations to choose from are found by.
struct DestinationSources {
  NetworkSystem& network_system;
  NetworkNeighbourhood& neighbourhood;
  WorkerThreads& workers;
};

// The dialog of WinPopup's instances. Its list of destinations fills while the operator works, as
// the network answers; closing the dialog waits for nothing.
class WinPopupDialog final : public InstanceDialog {
 public:
  // All but the call must outlive the object, and the neighbourhood also its workers.
  WinPopupDialog(DialogView& view, InstanceFiles& files, InstanceDialogCall call,
                 const DestinationSources& sources);

 private:
  void FillLists() override;
  void Offer(const std::string& name, Repetition repetition);

  // The library is held here and by the worker, each for itself, and not by the notifier: that may
  // be sending or shut down meanwhile.
  NetworkApi network_;
  DestinationSources sources_;
};

}  // namespace brantel
