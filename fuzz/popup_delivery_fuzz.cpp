// Pop-ups with arbitrary texts, for arbitrary destinations on a computer with arbitrary names: the
// messenger service gets one message in a buffer of the size that it expects, with nothing in it
// but the text and zeros.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "fuzz/fuzz_input.h"
#include "tests/unit/system/fake_machine_name.h"
#include "tests/unit/text/few_code_pages.h"
#include "tests/unit/win_popup/fake_network_system.h"
#include "win_popup/popup_delivery.h"

namespace brantel {
namespace {

constexpr std::size_t kMostCharacters = 1024;

void CheckBuffer(std::u16string_view buffer, std::string_view message, const CodePage& code_page) {
  Require(buffer.size() == message.size());
  const std::u16string text = code_page.ToUtf16(message).substr(0, kMostCharacters);
  Require(buffer.starts_with(text));
  Require(buffer.find_first_not_of(u'\0', text.size()) == std::u16string_view::npos);
}

void CheckName(const std::u16string& name, std::string_view destination,
               const CodePage& code_page) {
  Require(name.size() <= kMostCharacters);
  if (destination.empty() || destination == "(local)") return;
  Require(code_page.ToUtf16(destination).starts_with(name));
}

}  // namespace
}  // namespace brantel

// A byte for the code page and one for the names that the computer has, those names, the
// destination, and the message.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace brantel;
  const std::string bytes(data, data + size);
  FuzzInput input(bytes);
  const CodePage* code_page = &kCodePage1252;
  if (input.Byte() % 2 == 1) code_page = &kCodePage932;
  const std::uint8_t names = input.Byte();
  FakeMachineName machine;
  machine.host_name.reset();
  if ((names & 1U) != 0) machine.host_name = input.Field();
  if ((names & 2U) != 0) machine.sockets_host_name = input.Field();
  const std::string_view destination = input.Field();
  const std::string_view message = input.Take(size);

  FakeNetworkSystem system;
  NetworkApi network(system);
  Require(DeliverPopup({machine, *code_page}, network, destination, message));
  Require(system.sent.size() == 1);
  CheckBuffer(system.sent.front().buffer, message, *code_page);
  CheckName(system.sent.front().name, destination, *code_page);
  return 0;
}
