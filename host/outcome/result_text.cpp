#include "host/outcome/result_text.h"

#include <array>
#include <string_view>

namespace brantel::host {
namespace {

struct ResultName {
  std::uint32_t code;
  std::string_view name;
};

// What the module, registration and object creation answer with.
constexpr std::array kNames = {
    ResultName{0x00000000, "S_OK"},
    ResultName{0x00000001, "S_FALSE"},
    ResultName{0x80004001, "E_NOTIMPL"},
    ResultName{0x80004002, "E_NOINTERFACE"},
    ResultName{0x80004003, "E_POINTER"},
    ResultName{0x80004005, "E_FAIL"},
    ResultName{0x8000FFFF, "E_UNEXPECTED"},
    ResultName{0x8002801C, "TYPE_E_REGISTRYACCESS"},
    ResultName{0x80029C4A, "TYPE_E_CANTLOADLIBRARY"},
    ResultName{0x80040111, "CLASS_E_CLASSNOTAVAILABLE"},
    ResultName{0x80040154, "REGDB_E_CLASSNOTREG"},
    ResultName{0x800401F3, "CO_E_CLASSSTRING"},
    ResultName{0x80070005, "E_ACCESSDENIED"},
    ResultName{0x8007000E, "E_OUTOFMEMORY"},
    ResultName{0x80070057, "E_INVALIDARG"},
    ResultName{0x80140001, "SMTPMAIL_E_RECIPIENT_REFUSED"},
};

std::string HexText(std::uint32_t code) {
  std::string text = "0x";
  for (unsigned shift = 32; shift > 0;) {
    shift -= 4;
    text += "0123456789ABCDEF"[(code >> shift) & 0xFU];
  }
  return text;
}

}  // namespace

std::string ResultText(std::int32_t result) {
  const auto code = static_cast<std::uint32_t>(result);
  for (const ResultName& known : kNames) {
    if (known.code == code) return HexText(code) + " (" + std::string(known.name) + ")";
  }
  return HexText(code);
}

}  // namespace brantel::host
