#include "win_popup/win_popup.h"

#include <string>

#include "notifier/instance_loading.h"
#include "notifier/sockets_binding.h"
#include "text/text_end.h"
#include "win_popup/win_popup_description.h"

namespace brantel {

std::shared_ptr<NotifierHost> WinPopup::Initialize(const HostQuery& query_host) {
  return BindWithSockets(sockets_, query_host);
}

void WinPopup::Shutdown() noexcept {
  network_.Free();
  sockets_.Stop();
}

Result WinPopup::Send(const InstanceArgument& argument, NotifierHost* host) {
  using namespace win_popup_field;
  if (host == nullptr) return kFail;
  const auto instance = LoadInstanceForAlert(files_, kWinPopup.instances, argument, host);
  if (!instance) return kFail;
  std::string message = instance->text(kMessage);
  const Result expanded = host->ExpandMessage(message);
  if (Failed(expanded)) return expanded;
  return DeliverPopup(system_, network_, instance->text(kDestination), UpToNul(message)) ? kOk
                                                                                         : kFail;
}

}  // namespace brantel
