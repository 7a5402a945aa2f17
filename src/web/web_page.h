#pragma once

#include <string_view>

#include "description/class_description.h"
#include "instance/instance_codec.h"
#include "web/html_text.h"

namespace brantel {

// The complete HTML pages that the host's web server shows, in the system's ANSI code page. Tools
// know them byte for byte: the two pages deliberately differ in letter case and line breaks.

// The form for a new instance. The values that it starts from are deliberately not escaped.
HtmlText BuildAddPage(const ClassDescription& description, const Instance& values);

// The form for the instance of this name. Name and values are escaped.
HtmlText BuildEditPage(const ClassDescription& description, std::string_view name,
                       const Instance& values);

}  // namespace brantel
