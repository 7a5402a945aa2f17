#include "host/console/login_answers.h"

#include <utility>

#include "host/console/console_cookies.h"
#include "host/console/console_responses.h"

namespace brantel::host {

HttpResponse GetLogIn(ConsoleContext& console, const ConsoleVisit& visit) {
  if (!console.sessions.asks_for_password()) return Redirect("/");
  PageValues values;
  values.SetFlag("is_wrong", false).SetFlag("is_too_often", false);
  return ConsolePage(console, visit, "login", "Log in", std::move(values));
}

HttpResponse PostLogIn(ConsoleContext& console, const ConsoleVisit& visit) {
  const auto log_in = console.sessions.TryLogIn(visit.request.peer, visit.form.Get("password"));
  if (log_in.result == ConsoleSessions::LogInResult::kDone) {
    HttpResponse response = Redirect("/");
    response.fields.push_back(SetCookie(kSessionCookie, log_in.session->id));
    return response;
  }
  const bool is_too_often = log_in.result == ConsoleSessions::LogInResult::kTooOften;
  PageValues values;
  values.SetFlag("is_wrong", !is_too_often).SetFlag("is_too_often", is_too_often);
  return ConsolePage(console, visit, "login", "Log in", std::move(values),
                     is_too_often ? 429 : 403);
}

HttpResponse PostLogOut(ConsoleContext& console, const ConsoleVisit& visit) {
  console.sessions.LogOut(CookieOf(visit.request, kSessionCookie));
  HttpResponse response = Redirect("/login");
  response.fields.push_back(EndCookie(kSessionCookie));
  return response;
}

}  // namespace brantel::host
