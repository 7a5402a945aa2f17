#pragma once

#include <windows.h>

#include <map>
#include <memory>
#include <optional>
#include <string>

#include "host/console/console_backend.h"
#include "system/windows/handle_win32.h"

namespace brantel::host {

// From where the console sends.
struct SendSetup {
  std::wstring directory;                    // of the instances, in full
  std::string journal{};                     // as DeliveryOptions has it
  std::optional<std::string> module_file{};  // as --module has it
};

// The sends that somebody has asked the console for, each on a thread of its own.
class SendDesk {
 public:
  explicit SendDesk(SendSetup setup);
  SendDesk(const SendDesk&) = delete;
  SendDesk& operator=(const SendDesk&) = delete;
  // Ends the sends that are under way.
  ~SendDesk();

  // See ConsoleBackend.
  std::optional<std::string> Begin(const SendOrder& order);
  std::optional<SendProgress> ProgressOf(const std::string& id);

 private:
  class Send;

  void DropOldest();

  const SendSetup setup_;
  const Handle stop_;
  std::map<unsigned, std::unique_ptr<Send>> sends_;  // in the order in which they began
  unsigned begun_ = 0;
};

}  // namespace brantel::host
