#include "pager/pager_protocol.h"

#include "text/string_table.h"

namespace brantel {

PagerProtocol ProtocolNamed(std::string_view name) {
  constexpr unsigned kCount = 4;
  for (unsigned index = 0; index < kCount; ++index) {
    if (name == LoadText(text_id::kFirstProtocol + index)) {
      return static_cast<PagerProtocol>(index + 1);
    }
  }
  return PagerProtocol::kUnknown;
}

}  // namespace brantel
