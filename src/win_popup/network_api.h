#pragma once

#include <atomic>
#include <memory>

#include "win_popup/network_library.h"

namespace brantel {

// Which library is loaded.
enum class LibraryMode {
  kNone = 0,       // none, or none that is of use
  kWindowsNt = 1,  // netapi32.dll
  kWindows95 = 2,  // svrapi.dll, which has nothing that shows messages
};

// The network library, loaded when it is first needed. It may be let go while another thread uses
// it.
class NetworkApi {
 public:
  // The system must outlive the object.
  explicit NetworkApi(NetworkSystem& system) : system_(system) {}

  // Loads the library of this family of Windows unless it is loaded. A failure is not kept: the
  // next call tries again.
  LibraryMode LoadNetworkApi();

  // The library of the Windows NT family, loaded if need be, where it has the entry; else null. It
  // stays loaded as long as somebody holds it.
  std::shared_ptr<NetworkLibrary> LibraryWith(NetworkEntry entry);

  // Lets the library go. It is loaded again when it is needed again.
  void Free() noexcept;

 private:
  struct Binding {
    LibraryMode mode;
    std::unique_ptr<NetworkLibrary> library;
  };

  // What is loaded, now if need be. Null when there is nothing of use.
  std::shared_ptr<Binding> Bind();

  NetworkSystem& system_;
  std::atomic<std::shared_ptr<Binding>> binding_;
};

}  // namespace brantel
