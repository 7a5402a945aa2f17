#pragma once

#include "instance/instance_files.h"
#include "notifier/notifier.h"
#include "system/sockets_library.h"
#include "win_popup/network_api.h"
#include "win_popup/popup_delivery.h"

namespace brantel {

// Shows a message on the screen of a user or computer of the network, by the messenger service.
class WinPopup final : public Notifier {
 public:
  // What is passed by reference must outlive the object.
  WinPopup(InstanceFiles& files, SocketsLibrary& sockets, NetworkSystem& network_system,
           const PopupSystem& system)
      : files_(files), sockets_(sockets), network_(network_system), system_(system) {}

  // The sockets library is started while a host is bound.
  std::shared_ptr<NotifierHost> Initialize(const HostQuery& query_host) override;
  void Shutdown() noexcept override;

  // S_OK when the messenger service took the message, or this system has none. E_FAIL without a
  // host, for an instance that cannot be loaded, and when the messenger service refuses; the host's
  // result when it cannot expand the message.
  Result Send(const InstanceArgument& argument, NotifierHost* host) override;

 private:
  InstanceFiles& files_;
  SocketsLibrary& sockets_;
  NetworkApi network_;
  PopupSystem system_;
};

}  // namespace brantel
