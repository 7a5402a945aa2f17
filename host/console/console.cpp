#include "host/console/console.h"

#include <string_view>
#include <utility>

#include "host/console/console_cookies.h"
#include "host/console/console_responses.h"
#include "host/console/deleted_answers.h"
#include "host/console/form_text.h"
#include "host/console/frame_answers.h"
#include "host/outcome/command_failure.h"

namespace brantel::host {
namespace {

constexpr std::string_view kFormType = "application/x-www-form-urlencoded";

}  // namespace

Console::Console(ConsoleBackend& backend, ConsoleSystem& system, ConsoleOptions options,
                 ConsoleSessions::PasswordCheck check, WatchedItems* watched)
    : context_{backend, std::move(options), ConsoleSessions(system, std::move(check)),
               UndoShelf(backend, system), watched},
      rules_(context_.options.host_names) {}

HttpResponse Console::Handle(const HttpRequest& request) {
  HttpResponse response;
  try {
    response = Dispatch(request);
  } catch (const CommandFailure& failure) {
    response = MessagePage(500, "That did not succeed", failure.what());
  }
  response.fields.push_back({"X-Content-Type-Options", "nosniff"});
  // Posts of a page that tells nobody where they come from would have no origin.
  response.fields.push_back({"Referrer-Policy", "same-origin"});
  response.fields.push_back({"Cross-Origin-Opener-Policy", "same-origin"});
  response.fields.push_back({"Cross-Origin-Resource-Policy", "same-origin"});
  if (response.Field("Cache-Control").empty())
    response.fields.push_back({"Cache-Control", "no-store"});
  return response;
}

HttpResponse Console::Dispatch(const HttpRequest& request) {
  if (!rules_.IsHost(request.Field("Host").value_or(""))) {
    return MessagePage(421, "This is another server",
                       "The console is not known by the name that it was asked for.");
  }
  auto target = ParseTarget(request.target);
  if (!target) return NotFound();
  ConsoleVisit visit{.request = request, .query = std::move(target->query)};
  const ConsoleRoute* const route = FindRoute(target->segments, visit.words);
  if (route == nullptr) return NotFound();
  if (request.method == "POST" && route->post != nullptr) return Post(*route, visit);
  const bool reads = request.method == "GET" || request.method == "HEAD";
  if (reads && route->get != nullptr) return Get(*route, visit);
  HttpResponse response =
      MessagePage(405, "That is not done here", "This address takes other requests.");
  response.fields.push_back({"Allow", route->post == nullptr  ? "GET, HEAD"
                                      : route->get == nullptr ? "POST"
                                                              : "GET, HEAD, POST"});
  return response;
}

HttpResponse Console::Get(const ConsoleRoute& route, ConsoleVisit& visit) {
  visit.session = SessionOf(route, visit);
  if (visit.session == nullptr) {
    if (route.access == Access::kFrame) return NotFound();
    if (route.access == Access::kSession) return Redirect("/login");
  }
  // A link of a framed page leads here; the console itself is in no frame.
  if (route.access == Access::kSession && IsWithinFrame(visit.request))
    return GetStepToOverview(context_, visit);
  HttpResponse response = route.get(context_, visit);
  if (route.access == Access::kSession && !response.stream) EndUndo(context_, visit, response);
  return response;
}

HttpResponse Console::Post(const ConsoleRoute& route, ConsoleVisit& visit) {
  visit.session = SessionOf(route, visit);
  if (route.access == Access::kFrame && visit.session == nullptr) return NotFound();
  const auto type = visit.request.Field("Content-Type").value_or("");
  auto form = FormValues::Parse(visit.request.body);
  if (type.substr(0, type.find(';')) != kFormType || !form)
    return MessagePage(400, "This is no form", "What was posted cannot be read.");
  visit.form = *std::move(form);
  if (!MayPost(route, visit)) {
    return MessagePage(403, "Nothing was changed",
                       "The form is not, or no longer, one of this console's. Open its page anew.");
  }
  HttpResponse response = route.post(context_, visit);
  if (route.access == Access::kSession) EndUndo(context_, visit, response);
  return response;
}

bool Console::MayPost(const ConsoleRoute& route, const ConsoleVisit& visit) const {
  const auto origin = visit.request.Field("Origin");
  if (!origin) return false;
  // A framed page has no origin of its own, and its token stands in its path.
  if (route.access == Access::kFrame)
    return *origin == "null" || origin->empty() || rules_.IsOwnOrigin(*origin);
  if (!origin->empty() && !rules_.IsOwnOrigin(*origin)) return false;
  if (route.access == Access::kEverybody) return true;
  return visit.session != nullptr && IsSameSecret(visit.form.Get("token"), visit.session->token);
}

const ConsoleSession* Console::SessionOf(const ConsoleRoute& route, const ConsoleVisit& visit) {
  if (route.access == Access::kFrame) return context_.sessions.FindFrame(visit.words.front());
  return context_.sessions.Find(CookieOf(visit.request, kSessionCookie));
}

}  // namespace brantel::host
