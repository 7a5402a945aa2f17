#pragma once

#include <string_view>

#include "framework/html_text.h"
#include "framework/instance_codec.h"
#include "framework/web_form_spec.h"

namespace brantel {

// The complete HTML pages that the host's web server shows, in the system's ANSI code page. Tools
// know them byte for byte: the two pages deliberately differ in letter case and line breaks.

// The form for a new instance. The values that it starts from are deliberately not escaped.
HtmlText BuildAddPage(const WebFormSpec& spec, const Instance& values);

// The form for the instance of this name. Name and values are escaped.
HtmlText BuildEditPage(const WebFormSpec& spec, std::string_view name, const Instance& values);

}  // namespace brantel
