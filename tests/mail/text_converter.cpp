// text_converter OPERATION: converts texts by the module's own code, so that tests can compare it
// with what others wrote. Each line of the input is a text in hexadecimal, and so is each line of
// the output. OPERATION is one of the names below, or "header-" and a code page.
#include <exception>
#include <iostream>
#include <string>
#include <string_view>

#include "smtp_mail/message/header_encoding.h"
#include "tests/hexadecimal.h"
#include "text/japanese_code.h"
#include "text/japanese_text.h"

namespace brantel {
namespace {

constexpr int kHeaderLimit = 512;
// More than the conversions need of it, so that none is cut.
constexpr std::size_t kRoom = 1U << 20U;

std::string Convert(const std::string& operation, const std::string& text) {
  constexpr std::string_view kHeader = "header-";
  if (operation == "euc-jp-to-shift-jis") return EucJpToShiftJis(text);
  if (operation == "jis-to-shift-jis") return JisToShiftJis(text);
  if (operation == "euc-jp-to-jis") return EucJpToJis(text, kRoom);
  if (operation == "shift-jis-to-jis") return ShiftJisToJis(text, kRoom);
  if (operation.starts_with(kHeader)) {
    const auto code_page = static_cast<unsigned>(std::stoul(operation.substr(kHeader.size())));
    return EncodeHeaderText(text, code_page, kHeaderLimit);
  }
  throw std::invalid_argument("no such operation: " + operation);
}

}  // namespace
}  // namespace brantel

int main(int argument_count, char** arguments) {
  try {
    if (argument_count != 2) throw std::invalid_argument("one operation is expected");
    for (std::string line; std::getline(std::cin, line);) {
      const std::string text = brantel::FromHexadecimal(line);
      std::cout << brantel::ToHexadecimal(brantel::Convert(arguments[1], text)) << '\n';
    }
    return 0;
  } catch (const std::exception& failure) {
    std::cerr << "text_converter: " << failure.what() << '\n';
    return 1;
  }
}
