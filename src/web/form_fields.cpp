#include "web/form_fields.h"

#include <algorithm>

#include "text/text_end.h"
namespace brantel {

std::string FormField(std::string_view form, std::string_view name, ValueEnd end,
                      std::string_view absent) {
  form = UpToNul(form);
  const std::string start = std::string(name) + "=";
  const std::size_t found = form.find(start);
  if (found == std::string_view::npos) return std::string(absent);

  const std::string_view rest = form.substr(found + start.size());
  const std::string_view stops = end == ValueEnd::kLineBreak ? "&\r\n" : "&";
  std::string value(rest.substr(0, rest.find_first_of(stops)));
  std::ranges::replace(value, '+', ' ');
  return value;
}

}  // namespace brantel
