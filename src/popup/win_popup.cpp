#include "popup/win_popup.h"

#include <string>

#include "framework/sockets_binding.h"
#include "framework/text_end.h"
#include "popup/win_popup_layout.h"

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
  const auto instance = LoadInstanceForAlert(files_, kWinPopupLayout, argument, host);
  if (!instance) return kFail;
  std::string message = instance->text(kMessage);
  const Result expanded = host->ExpandMessage(message);
  if (Failed(expanded)) return expanded;
  return DeliverPopup(surroundings_, network_, instance->text(kDestination), UpToNul(message))
             ? kOk
             : kFail;
}

}  // namespace brantel
