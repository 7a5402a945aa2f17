#include "smtp_mail/message/charset.h"

#include <algorithm>
#include <array>

namespace brantel {
namespace {

constexpr std::array kCharsets = {
    Charset{932, "Content-Type: text/plain;charset=ISO-2022-JP\r\n", " =?ISO-2022-JP?Q?", 21},
    Charset{949, "Content-Type: text/plain;charset=ISO-2022-JP-2\r\n", " =?ISO-2022-JP-2?Q?", 21},
    Charset{1250, "Content-Type: text/plain;charset=ISO-8859-2\r\n", " =?ISO-8859-2?Q?", 18},
    Charset{1251, "Content-Type: text/plain;charset=ISO-8859-5\r\n", " =?ISO-8859-5?Q?", 18},
    Charset{1252, "Content-Type: text/plain;charset=us-ascii\r\n", " =?ISO-8859-1?Q?", 18},
    Charset{1253, "Content-Type: text/plain;charset=ISO-8859-7\r\n", " =?ISO-8859-7?Q?", 18},
    Charset{1254, "Content-Type: text/plain;charset=ISO-8859-9\r\n", " =?ISO-8859-9?Q?", 18},
    Charset{1255, "Content-Type: text/plain;charset=ISO-8859-8\r\n", " =?ISO-8859-8?Q?", 18},
    Charset{1256, "Content-Type: text/plain;charset=ISO-8859-6\r\n", " =?ISO-8859-6?Q?", 18},
    Charset{1257, "Content-Type: text/plain;charset=ISO-8859-4\r\n", " =?ISO-8859-4?Q?", 18},
};

}  // namespace

const Charset* FindCharset(unsigned code_page) {
  const auto* const row = std::ranges::find(kCharsets, code_page, &Charset::code_page);
  return row == kCharsets.end() ? nullptr : row;
}

std::string_view ContentTypeLine(unsigned code_page) {
  const Charset* const charset = FindCharset(code_page);
  return charset == nullptr ? "Content-Type: text/plain;charset=us-ascii\r\n"
                            : charset->content_type;
}

}  // namespace brantel
