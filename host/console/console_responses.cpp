#include "host/console/console_responses.h"

#include <utility>

#include "host/console/console_files.h"
#include "host/text/version.h"

namespace brantel::host {
namespace {

// The console has no inline script or style; what it shows apart is in frames.
constexpr std::string_view kConsolePolicy =
    "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' data:; "
    "connect-src 'self'; form-action 'self'; frame-src 'self'; frame-ancestors 'none'; "
    "base-uri 'none'";
// The module's pages are as they are: nothing in them runs, and they reach nothing of the console.
constexpr std::string_view kFramePolicy =
    "default-src 'none'; style-src 'unsafe-inline'; form-action 'self'; frame-ancestors 'self'; "
    "base-uri 'none'; sandbox allow-forms allow-popups allow-popups-to-escape-sandbox "
    "allow-top-navigation-by-user-activation";

HttpResponse Html(unsigned status, std::string body, std::string_view policy) {
  return {.status = status,
          .fields = {{"Content-Type", "text/html; charset=utf-8"},
                     {"Content-Security-Policy", std::string(policy)}},
          .body = std::move(body)};
}

}  // namespace

HttpResponse Redirect(const std::string& path) {
  return {.status = 303, .fields = {{"Location", path}}};
}

HttpResponse ConsolePage(ConsoleContext& console, const ConsoleVisit& visit, std::string_view name,
                         std::string_view title, PageValues values, unsigned status) {
  const bool is_in = visit.session != nullptr;
  values.Set("title", title)
      .Set("directory", is_in ? console.options.directory : "")
      .Set("version", ProgramVersion())
      .Set("token", is_in ? visit.session->token : "")
      .SetFlag("is_in", is_in)
      .SetFlag("can_log_out", is_in && console.sessions.asks_for_password());
  for (const std::string_view place : {"overview", "instances", "classes", "journal"})
    values.SetFlag("at_" + std::string(place), place == name);
  return Html(status, FillTemplate(PageTemplate(name), values, PageTemplate), kConsolePolicy);
}

HttpResponse MessagePage(unsigned status, std::string_view title, std::string_view words) {
  PageValues values;
  values.Set("title", title).Set("words", words);
  return Html(status, FillTemplate(PageTemplate("message"), values, PageTemplate), kConsolePolicy);
}

HttpResponse NotFound() {
  return MessagePage(404, "There is nothing here", "The console has no page at this address.");
}

HttpResponse ModulePage(const std::optional<std::string>& page) {
  if (!page) {
    return StepPage(500, "The module makes no page here. The log of the host may say why.",
                    "/instances", "To the instances");
  }
  return Html(200, *page, kFramePolicy);
}

HttpResponse StepPage(unsigned status, std::string_view words, std::string_view path,
                      std::string_view link) {
  PageValues values;
  values.Set("words", words).Set("path", path).Set("link", link);
  return Html(status, FillTemplate(PageTemplate("step"), values, PageTemplate), kFramePolicy);
}

}  // namespace brantel::host
