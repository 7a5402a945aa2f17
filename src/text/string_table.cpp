#include "text/string_table.h"

namespace brantel {

std::string LookupFailureText(unsigned id) {
  return std::to_string(id) + " DEBUG - Unable to load string";
}

}  // namespace brantel
