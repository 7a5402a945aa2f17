#pragma once

#include <string>
#include <string_view>

namespace brantel {

// What ends a value in a posted form besides "&", NUL and the end of the text.
enum class ValueEnd {
  kLineBreak,  // a carriage return or a line feed
  kNothing,    // line breaks belong to the value
};

// The value of a field in a posted form ("name=value&name=value"): what follows the first "name="
// anywhere in the text, even inside another field's name, with every "+" turned into a blank.
// Percent escapes deliberately stay as they are. A form without the field gives `absent`.
std::string FormField(std::string_view form, std::string_view name, ValueEnd end,
                      std::string_view absent = {});

}  // namespace brantel
