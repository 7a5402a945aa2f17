// page_builder PROTOCOL: builds what pages are on the line by the module's own code, so that tests
// can compare it with what others wrote. Each line of the input is a page, its parts in hexadecimal
// with commas between: pager ID, message, password. The page's number, from 0 on, is its number
// among those of the process. Each line of the output is what goes over the line, in hexadecimal.
#include <cstdint>
#include <exception>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>

#include "pager/ntt/ntt_line.h"
#include "pager/tap/tap_session.h"
#include "pager/ucp/ucp_frame.h"
#include "tests/hexadecimal.h"

namespace brantel {
namespace {

struct Page {
  std::string pager_id;
  std::string message;
  std::string password;
};

Page ReadPage(const std::string& line) {
  std::istringstream parts(line);
  Page page;
  for (std::string* const part : {&page.pager_id, &page.message, &page.password}) {
    std::string digits;
    std::getline(parts, digits, ',');
    *part = FromHexadecimal(digits);
  }
  return page;
}

std::string Build(std::string_view protocol, const Page& page, std::uint32_t number) {
  if (protocol == "TAP") return BuildTapBlock(page.pager_id, page.message, kTap.block);
  if (protocol == "SMS-TAP") return BuildTapBlock(page.pager_id, page.message, kSmsTap.block);
  if (protocol == "NTT") {
    return BuildNttLine(page.pager_id, page.password, NttMessage(page.message));
  }
  if (protocol == "UCP-SMS") {
    return BuildUcpFrame(number % 100, BuildUcpBody(page.pager_id, page.message).value());
  }
  throw std::invalid_argument("there is no protocol " + std::string(protocol));
}

}  // namespace
}  // namespace brantel

int main(int argument_count, char** arguments) {
  try {
    if (argument_count != 2) throw std::invalid_argument("one protocol is expected");
    std::uint32_t number = 0;
    for (std::string line; std::getline(std::cin, line); ++number) {
      std::cout << brantel::ToHexadecimal(
                       brantel::Build(arguments[1], brantel::ReadPage(line), number))
                << '\n';
    }
    return 0;
  } catch (const std::exception& failure) {
    std::cerr << "page_builder: " << failure.what() << '\n';
    return 1;
  }
}
