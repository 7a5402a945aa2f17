#include "win_popup/popup_delivery.h"

#include <cstddef>
#include <optional>

namespace brantel {
namespace {

constexpr std::string_view kThisComputer = "(local)";

// What is read of the registered name, with its NUL.
constexpr std::size_t kHostNameCapacity = 256;

constexpr std::size_t kMostCharacters = 1024;

std::u16string Converted(const CodePage& code_page, std::string_view text) {
  return code_page.ToUtf16(text).substr(0, kMostCharacters);
}

// Empty when nobody knows it.
std::string NameOfThisComputer(MachineName& machine_name) {
  const auto registered = machine_name.TcpipParameter("Hostname", kHostNameCapacity);
  if (registered && !registered->empty()) return *registered;
  const std::string full_name = machine_name.SocketsHostName().value_or("");
  return full_name.substr(0, full_name.find('.'));
}

}  // namespace

std::string ResolveDestination(MachineName& machine_name, std::string_view destination) {
  if (destination.empty() || destination == kThisComputer) {
    std::string name = NameOfThisComputer(machine_name);
    if (!name.empty()) return name;
  }
  return std::string(destination);
}

std::u16string MessageBuffer(const CodePage& code_page, std::string_view message) {
  std::u16string buffer = Converted(code_page, message);
  buffer.resize(message.size());
  return buffer;
}

bool DeliverPopup(const PopupSystem& system, NetworkApi& network, std::string_view destination,
                  std::string_view message) {
  const std::string name = ResolveDestination(system.machine_name, destination);
  const auto library = network.LibraryWith(NetworkEntry::kMessageBufferSend);
  if (!library) return true;
  return library->SendMessageBuffer(Converted(system.code_page, name),
                                    MessageBuffer(system.code_page, message));
}

}  // namespace brantel
