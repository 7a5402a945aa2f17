#pragma once

#include <cstddef>
#include <string_view>

#include "description/class_description.h"
#include "instance/instance_codec.h"
#include "text/code_page.h"
#include "web/web_page.h"

namespace brantel {

// How many brackets and quotes a browser finds in a page: a lead byte takes whatever follows for
// its second one.
inline int CountMarkup(std::string_view page, const CodePage& code_page) {
  int count = 0;
  for (std::size_t i = 0; i < page.size(); ++i) {
    if (code_page.IsLeadByte(page[i])) {
      ++i;
    } else if (page[i] == '<' || page[i] == '>' || page[i] == '"') {
      ++count;
    }
  }
  return count;
}

// As many as there are on the class's edit page where nothing is filled in: no value adds any or
// takes one away.
inline bool HasMarkupOfEditPage(std::string_view page, const ClassDescription& description,
                                const CodePage& code_page) {
  const Instance empty(description.instances.fields.size());
  return CountMarkup(page, code_page) ==
         CountMarkup(BuildEditPage(description, "", empty).view(), code_page);
}

}  // namespace brantel
