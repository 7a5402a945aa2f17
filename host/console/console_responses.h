#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "host/console/console_context.h"
#include "host/console/http_message.h"
#include "host/console/page_template.h"

namespace brantel::host {

HttpResponse Redirect(const std::string& path);

// The page of that template, for whoever visits.
HttpResponse ConsolePage(ConsoleContext& console, const ConsoleVisit& visit, std::string_view name,
                         std::string_view title, PageValues values, unsigned status = 200);

// A page of a few words, which nobody has to be logged in for.
HttpResponse MessagePage(unsigned status, std::string_view title, std::string_view words);
HttpResponse NotFound();

// A page that the module has made, byte by byte: nothing in it runs, and it reaches nothing of the
// console. Without one: that there is none.
HttpResponse ModulePage(const std::optional<std::string>& page);

// What stands in the frame of the module's pages where these lead: a link out of the frame.
HttpResponse StepPage(unsigned status, std::string_view words, std::string_view path,
                      std::string_view link);

}  // namespace brantel::host
