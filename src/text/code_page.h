#pragma once

#include <string>
#include <string_view>

namespace brantel {

// The code page in which the module keeps all text.
class CodePage {
 public:
  virtual ~CodePage() = default;

  // Whether the code page's double-byte characters begin with this byte.
  [[nodiscard]] virtual bool IsLeadByte(char byte) const = 0;

  [[nodiscard]] virtual std::u16string ToUtf16(std::string_view text) const = 0;
};

}  // namespace brantel
