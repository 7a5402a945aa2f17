#include "host/console/console.h"

#include <algorithm>
#include <array>
#include <utility>

#include "host/checks/diagnosis.h"
#include "host/console/console_events.h"
#include "host/console/console_files.h"
#include "host/console/console_pages.h"
#include "host/console/form_dialog.h"
#include "host/console/module_form.h"
#include "host/instances/instance_text.h"
#include "host/instances/journal_name.h"
#include "host/outcome/command_failure.h"
#include "host/text/version.h"
#include "module/class_descriptions.h"

namespace brantel::host {
namespace {

constexpr std::string_view kSessionCookie = "console";
constexpr std::string_view kDeletedCookie = "deleted";
constexpr std::string_view kFormType = "application/x-www-form-urlencoded";

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

HttpResponse Redirect(const std::string& path) {
  return {.status = 303, .fields = {{"Location", path}}};
}

HttpResponse Html(unsigned status, std::string body, std::string_view policy) {
  return {.status = status,
          .fields = {{"Content-Type", "text/html; charset=utf-8"},
                     {"Content-Security-Policy", std::string(policy)}},
          .body = std::move(body)};
}

// The value of the cookie of that name; empty where there is none.
std::string_view CookieOf(const HttpRequest& request, std::string_view name) {
  std::string_view cookies = request.Field("Cookie").value_or("");
  while (!cookies.empty()) {
    std::string_view cookie = cookies.substr(0, cookies.find(';'));
    cookies.remove_prefix(std::min(cookies.size(), cookie.size() + 1));
    cookie.remove_prefix(std::min(cookie.size(), cookie.find_first_not_of(' ')));
    if (cookie.starts_with(name) && cookie.substr(name.size()).starts_with('='))
      return cookie.substr(name.size() + 1);
  }
  return {};
}

HttpField SetCookie(std::string_view name, std::string_view value, bool is_ended = false) {
  std::string cookie = std::string(name) + "=" + std::string(value);
  cookie += "; Path=/; HttpOnly; SameSite=Strict";
  if (is_ended) cookie += "; Max-Age=0";
  return {"Set-Cookie", std::move(cookie)};
}

bool IsWithinFrame(const HttpRequest& request) {
  const auto destination = request.Field("Sec-Fetch-Dest").value_or("");
  return destination == "iframe" || destination == "frame";
}

const ClassDescription* ClassOf(const InstanceFile& file) {
  return file.layout == nullptr ? nullptr : FindClassDescription(file.layout->class_name);
}

std::string InstancePath(std::string_view name) {
  return "/instances/" + EncodePercents(name);
}

}  // namespace

Console::Console(ConsoleBackend& backend, ConsoleSystem& system, ConsoleOptions options,
                 ConsoleSessions::PasswordCheck check, WatchedItems* watched)
    : backend_(backend),
      system_(system),
      options_(std::move(options)),
      rules_(options_.host_names),
      sessions_(system, std::move(check)),
      shelf_(backend, system),
      watched_(watched) {}

// clang-format off
const std::vector<Console::Route>& Console::Routes() {
  using enum Access;
  static const std::vector<Route> kRoutes = {
      {"", kSession, &Console::GetOverview, nullptr},
      {"files/*", kEverybody, &Console::GetFile, nullptr},
      {"login", kEverybody, &Console::GetLogIn, &Console::PostLogIn},
      {"logout", kSession, nullptr, &Console::PostLogOut},
      {"instances", kSession, &Console::GetInstances, nullptr},
      {"instances/*", kSession, &Console::GetInstance, nullptr},
      {"instances/*/edit", kSession, &Console::GetEdit, nullptr},
      {"instances/*/form", kSession, &Console::GetEditForm, &Console::PostEditForm},
      {"instances/*/rename", kSession, nullptr, &Console::PostRename},
      {"instances/*/copy", kSession, nullptr, &Console::PostCopy},
      {"instances/*/delete", kSession, nullptr, &Console::PostDelete},
      {"instances/*/send", kSession, nullptr, &Console::PostSend},
      {"add/*", kSession, &Console::GetAdd, nullptr},
      {"add/*/form", kSession, &Console::GetAddForm, &Console::PostAddForm},
      {"deleted/*", kSession, &Console::GetDeleted, nullptr},
      {"deleted/*/undo", kSession, nullptr, &Console::PostUndo},
      {"deleted/*/forget", kSession, nullptr, &Console::PostForget},
      {"sends/*", kSession, &Console::GetSend, nullptr},
      {"sends/*/events", kSession, &Console::GetSendEvents, nullptr},
      {"classes", kSession, &Console::GetClasses, nullptr},
      {"help/*", kSession, &Console::GetHelp, nullptr},
      {"journal", kSession, &Console::GetJournal, nullptr},
      {"journal/*", kSession, &Console::GetJournalEntry, nullptr},
      {"changes", kSession, &Console::GetChanges, nullptr},
      // The module's own pages, with where they lead.
      {"frame/*/*/add", kFrame, &Console::GetFrameAdd, nullptr},
      {"frame/*/*/edit", kFrame, &Console::GetFrameEdit, nullptr},
      {"frame/*/*/_maincfgret.cgi", kFrame, nullptr, &Console::PostFrame},
      {"frame/*/*/h_edtnot.htm", kFrame, &Console::GetFrameHelp, nullptr},
      {"_maincfgreg.cgi", kEverybody, &Console::GetStepToInstances, nullptr},
      {"_top.cgi", kEverybody, &Console::GetStepToOverview, nullptr},
  };
  return kRoutes;
}
// clang-format on

const Console::Route* Console::FindRoute(const std::vector<std::string>& segments,
                                         std::vector<std::string>& words) {
  for (const Route& route : Routes()) {
    std::string_view path = route.path;
    words.clear();
    std::size_t matched = 0;
    for (; matched < segments.size() && !path.empty(); ++matched) {
      const std::string_view expected = path.substr(0, path.find('/'));
      if (expected == "*") {
        words.push_back(segments[matched]);
      } else if (expected != segments[matched]) {
        break;
      }
      path.remove_prefix(std::min(path.size(), expected.size() + 1));
    }
    if (matched == segments.size() && path.empty()) return &route;
  }
  return nullptr;
}

HttpResponse Console::Handle(const HttpRequest& request) {
  HttpResponse response;
  try {
    response = Dispatch(request);
  } catch (const CommandFailure& failure) {
    response = Message(500, "That did not succeed", failure.what());
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
    return Message(421, "This is another server",
                   "The console is not known by the name that it was asked for.");
  }
  auto target = ParseTarget(request.target);
  if (!target) return NotFound();
  Visit visit{.request = request, .query = std::move(target->query)};
  const Route* const route = FindRoute(target->segments, visit.words);
  if (route == nullptr) return NotFound();
  if (request.method == "POST" && route->post != nullptr) return Post(*route, visit);
  const bool reads = request.method == "GET" || request.method == "HEAD";
  if (reads && route->get != nullptr) return Get(*route, visit);
  HttpResponse response =
      Message(405, "That is not done here", "This address takes other requests.");
  response.fields.push_back({"Allow", route->post == nullptr  ? "GET, HEAD"
                                      : route->get == nullptr ? "POST"
                                                              : "GET, HEAD, POST"});
  return response;
}

HttpResponse Console::Get(const Route& route, Visit& visit) {
  visit.session = SessionOf(route, visit);
  if (visit.session == nullptr) {
    if (route.access == Access::kFrame) return NotFound();
    if (route.access == Access::kSession) return Redirect("/login");
  }
  // A link of a framed page leads here; the console itself is in no frame.
  if (route.access == Access::kSession && IsWithinFrame(visit.request))
    return GetStepToOverview(visit);
  HttpResponse response = (this->*route.get)(visit);
  if (route.access == Access::kSession && !response.stream) EndUndo(visit, response);
  return response;
}

HttpResponse Console::Post(const Route& route, Visit& visit) {
  visit.session = SessionOf(route, visit);
  if (route.access == Access::kFrame && visit.session == nullptr) return NotFound();
  const auto type = visit.request.Field("Content-Type").value_or("");
  auto form = FormValues::Parse(visit.request.body);
  if (type.substr(0, type.find(';')) != kFormType || !form)
    return Message(400, "This is no form", "What was posted cannot be read.");
  visit.form = *std::move(form);
  if (!MayPost(route, visit)) {
    return Message(403, "Nothing was changed",
                   "The form is not, or no longer, one of this console's. Open its page anew.");
  }
  HttpResponse response = (this->*route.post)(visit);
  if (route.access == Access::kSession) EndUndo(visit, response);
  return response;
}

bool Console::MayPost(const Route& route, const Visit& visit) const {
  const auto origin = visit.request.Field("Origin");
  if (!origin) return false;
  // A framed page has no origin of its own, and its token stands in its path.
  if (route.access == Access::kFrame)
    return *origin == "null" || origin->empty() || rules_.IsOwnOrigin(*origin);
  if (!origin->empty() && !rules_.IsOwnOrigin(*origin)) return false;
  if (route.access == Access::kEverybody) return true;
  return visit.session != nullptr && IsSameSecret(visit.form.Get("token"), visit.session->token);
}

const ConsoleSession* Console::SessionOf(const Route& route, const Visit& visit) {
  if (route.access == Access::kFrame) return sessions_.FindFrame(visit.words.front());
  return sessions_.Find(CookieOf(visit.request, kSessionCookie));
}

void Console::EndUndo(const Visit& visit, HttpResponse& response) {
  const std::string_view id = CookieOf(visit.request, kDeletedCookie);
  if (id.empty() || visit.request.target == "/deleted/" + std::string(id)) return;
  shelf_.Forget(id);
  const bool has_next = std::ranges::any_of(response.fields, [](const HttpField& field) {
    return field.name == "Set-Cookie" && field.value.starts_with(kDeletedCookie);
  });
  if (!has_next) response.fields.push_back(SetCookie(kDeletedCookie, "", true));
}

HttpResponse Console::GetFile(Visit& visit) {
  const ConsoleFile* const file = FindConsoleFile(visit.words[0]);
  if (file == nullptr) return NotFound();
  return {.fields = {{"Content-Type", std::string(file->type)},
                     {"Cache-Control", "private, max-age=600"}},
          .body = std::string(file->content)};
}

HttpResponse Console::GetLogIn(Visit& visit) {
  if (!sessions_.asks_for_password()) return Redirect("/");
  PageValues values;
  values.SetFlag("is_wrong", false).SetFlag("is_too_often", false);
  return Page(visit, "login", "Log in", std::move(values));
}

HttpResponse Console::PostLogIn(Visit& visit) {
  const auto log_in = sessions_.TryLogIn(visit.request.peer, visit.form.Get("password"));
  if (log_in.result == ConsoleSessions::LogInResult::kDone) {
    HttpResponse response = Redirect("/");
    response.fields.push_back(SetCookie(kSessionCookie, log_in.session->id));
    return response;
  }
  const bool is_too_often = log_in.result == ConsoleSessions::LogInResult::kTooOften;
  PageValues values;
  values.SetFlag("is_wrong", !is_too_often).SetFlag("is_too_often", is_too_often);
  return Page(visit, "login", "Log in", std::move(values), is_too_often ? 429 : 403);
}

HttpResponse Console::PostLogOut(Visit& visit) {
  sessions_.LogOut(CookieOf(visit.request, kSessionCookie));
  HttpResponse response = Redirect("/login");
  response.fields.push_back(SetCookie(kSessionCookie, "", true));
  return response;
}

void Console::FillInstances(PageValues& values) {
  const auto& journal = backend_.Journal();
  for (const InstanceFile& file : backend_.ReadInstances())
    FillListedInstance(values.Add("instances"), file, LastAttemptOf(journal, file.name), backend_);
}

HttpResponse Console::GetOverview(Visit& visit) {
  constexpr std::size_t kRecent = 8;
  PageValues values;
  values.Set("notice", options_.notice).SetFlag("has_notice", !options_.notice.empty());
  FillInstances(values);
  const auto& journal = backend_.Journal();
  const auto runs_still = [this](const JournalEntry& entry) { return backend_.RunsStill(entry); };
  for (std::size_t i = 0; i < std::min(kRecent, journal.size()); ++i) {
    const JournalEntry& entry = journal[journal.size() - 1 - i];
    FillEntry(values.Add("entries"), entry, StateOf(entry, runs_still));
  }
  values.SetFlag("has_watched", watched_ != nullptr);
  if (watched_ != nullptr) {
    for (const WatchedRow& item : watched_->Items())
      FillWatched(values.Add("watched"), item);
  }
  return Page(visit, "overview", "Overview", std::move(values));
}

HttpResponse Console::GetInstances(Visit& visit) {
  PageValues values;
  FillInstances(values);
  for (const ClassDescription* notifier_class : ClassDescriptions())
    FillClass(values.Add("classes"), *notifier_class);
  const std::string_view id = CookieOf(visit.request, kDeletedCookie);
  for (const FileAside& file : shelf_.Files()) {
    // What this browser has deleted is gone when it has left the page about it for this one.
    if (file.id == id) continue;
    values.Add("aside").Set("name", file.name).Set("aside_path", "/deleted/" + file.id);
  }
  return Page(visit, "instances", "Instances", std::move(values));
}

std::optional<InstanceFile> Console::FindInstance(std::string_view name) {
  auto files = backend_.ReadInstances();
  const auto found = std::ranges::find(files, name, &InstanceFile::name);
  if (found == files.end()) return std::nullopt;
  return std::move(*found);
}

HttpResponse Console::GetInstance(Visit& visit) {
  const auto file = FindInstance(visit.words[0]);
  return file ? ShowInstance(visit, *file, "") : NotFound();
}

HttpResponse Console::ShowInstance(const Visit& visit, const InstanceFile& file,
                                   const std::string& complaint) {
  PageValues values;
  FillListedInstance(values, file, LastAttemptOf(backend_.Journal(), file.name), backend_);
  values.Set("complaint", complaint)
      .SetFlag("has_complaint", !complaint.empty())
      .SetFlag("is_saved", visit.query.Has("saved"))
      .SetFlag("is_restored", visit.query.Has("restored"))
      .SetFlag("is_readable", file.instance.has_value());
  FillDiagnosis(values, DiagnoseInstance(file, backend_.system(), Reach::kOffline));
  if (file.instance) FillFields(values, file);
  FillEvents(values);
  return Page(visit, "instance", file.name, std::move(values), complaint.empty() ? 200 : 409);
}

HttpResponse Console::GetAdd(Visit& visit) {
  const ClassDescription* const notifier_class = FindClassDescription(visit.words[0]);
  if (notifier_class == nullptr) return NotFound();
  if (!notifier_class->web_form) return Redirect("/add/" + visit.words[0] + "/form");
  return ShowFramed(visit, *notifier_class, std::nullopt);
}

HttpResponse Console::GetEdit(Visit& visit) {
  const auto file = FindInstance(visit.words[0]);
  if (!file || ClassOf(*file) == nullptr) return NotFound();
  const ClassDescription& notifier_class = *ClassOf(*file);
  if (!notifier_class.web_form ||
      (!options_.shows_secrets && HoldsSecret(notifier_class, file->name)))
    return Redirect(InstancePath(file->name) + "/form");
  return ShowFramed(visit, notifier_class, file->name);
}

HttpResponse Console::ShowFramed(const Visit& visit, const ClassDescription& notifier_class,
                                 const std::optional<std::string>& edited) {
  const std::string class_name(notifier_class.instances.class_name);
  const std::string frame = "/frame/" + visit.session->frame_token + "/" + class_name;
  PageValues values;
  values
      .Set("frame_path", edited ? frame + "/edit?name=" + EncodePercents(*edited) : frame + "/add")
      .Set("form_path", (edited ? InstancePath(*edited) : "/add/" + class_name) + "/form")
      .Set("class", class_name);
  const std::string title = edited ? "Edit " + *edited : "Add an instance of " + class_name;
  return Page(visit, "framed", title, std::move(values));
}

HttpResponse Console::GetAddForm(Visit& visit) {
  const ClassDescription* const notifier_class = FindClassDescription(visit.words[0]);
  if (notifier_class == nullptr) return NotFound();
  return ShowFormPage(visit, *notifier_class, std::nullopt, nullptr, "");
}

HttpResponse Console::PostAddForm(Visit& visit) {
  const ClassDescription* const notifier_class = FindClassDescription(visit.words[0]);
  if (notifier_class == nullptr) return NotFound();
  return SubmitFormPage(visit, *notifier_class, std::nullopt);
}

HttpResponse Console::GetEditForm(Visit& visit) {
  const auto file = FindInstance(visit.words[0]);
  if (!file || ClassOf(*file) == nullptr) return NotFound();
  return ShowFormPage(visit, *ClassOf(*file), file->name, nullptr, "");
}

HttpResponse Console::PostEditForm(Visit& visit) {
  const auto file = FindInstance(visit.words[0]);
  if (!file || ClassOf(*file) == nullptr) return NotFound();
  return SubmitFormPage(visit, *ClassOf(*file), file->name);
}

HttpResponse Console::ShowFormPage(const Visit& visit, const ClassDescription& notifier_class,
                                   const std::optional<std::string>& edited,
                                   const FormValues* posted, const std::string& complaint) {
  ConsoleForm form = ShowForm(notifier_class, backend_, edited);
  const std::string title = form.title;
  if (posted != nullptr) form = RefilledForm(std::move(form), *posted);
  const std::string class_name(notifier_class.instances.class_name);
  const std::string path = edited ? InstancePath(*edited) : "/add/" + class_name;
  PageValues values;
  FillForm(values, form);
  values.Set("form_path", path + "/form")
      .Set("page_path", edited ? path + "/edit" : path)
      .Set("class", class_name)
      .Set("help_path", "/help/" + class_name)
      .Set("complaint", complaint)
      .SetFlag("has_complaint", !complaint.empty())
      .SetFlag("has_pages", notifier_class.web_form.has_value());
  return Page(visit, "form", title, std::move(values), complaint.empty() ? 200 : 409);
}

HttpResponse Console::SubmitFormPage(const Visit& visit, const ClassDescription& notifier_class,
                                     const std::optional<std::string>& edited) {
  FormOutcome outcome;
  if (IsJournalName(visit.form.Get(kFormNameField))) {
    outcome.complaint = "The journal has a name like this.";
  } else {
    outcome = SubmitForm(notifier_class, backend_, edited, visit.form);
  }
  if (outcome.saved_name) return Redirect(InstancePath(*outcome.saved_name) + "?saved=1");
  return ShowFormPage(visit, notifier_class, edited, &visit.form, outcome.complaint);
}

std::optional<std::string> Console::FaultOfName(std::string_view name,
                                                const std::string* present_name) {
  if (name.empty()) return "The name is missing.";
  const auto stored = backend_.system().ToCodePage(name);
  if (!stored) return "The name has characters that the system's code page lacks.";
  if (!backend_.files().IsValidName(*stored) || IsJournalName(name))
    return "An instance cannot have this name.";
  const auto path = [&](const std::string& file) { return backend_.directory() + "\\" + file; };
  const auto taken = backend_.files().StoredName(path(*stored));
  if (!taken) return std::nullopt;
  // The file system may know the instance itself by that name, for example in other letters.
  if (present_name != nullptr && taken == backend_.files().StoredName(path(*present_name)))
    return std::nullopt;
  return "There is a file of this name already.";
}

HttpResponse Console::PostRename(Visit& visit) {
  const auto file = FindInstance(visit.words[0]);
  if (!file) return NotFound();
  const std::string new_name(visit.form.Get("name"));
  const auto old_stored = backend_.system().ToCodePage(file->name);
  if (!old_stored) return ShowInstance(visit, *file, "It cannot be renamed here.");
  if (const auto fault = FaultOfName(new_name, &*old_stored))
    return ShowInstance(visit, *file, *fault);
  const std::string folder = backend_.directory() + "\\";
  const std::string new_stored = backend_.system().ToCodePage(new_name).value_or("");
  if (!backend_.files().Rename(folder + *old_stored, folder + new_stored))
    return ShowInstance(visit, *file, "It could not be renamed; somebody may be using it.");
  return Redirect(InstancePath(new_name) + "?saved=1");
}

HttpResponse Console::PostCopy(Visit& visit) {
  const auto file = FindInstance(visit.words[0]);
  if (!file) return NotFound();
  const std::string new_name(visit.form.Get("name"));
  if (const auto fault = FaultOfName(new_name, nullptr)) return ShowInstance(visit, *file, *fault);
  if (!file->stored || !file->fault.empty())
    return ShowInstance(visit, *file, "Only an instance that can be read can be copied.");
  const std::string path =
      backend_.directory() + "\\" + backend_.system().ToCodePage(new_name).value_or("");
  if (!backend_.files().Write(path, EncodeInstance(*file->layout, *file->stored)))
    return ShowInstance(visit, *file, "The copy could not be written.");
  return Redirect(InstancePath(new_name) + "?saved=1");
}

HttpResponse Console::PostDelete(Visit& visit) {
  const auto file = FindInstance(visit.words[0]);
  if (!file) return NotFound();
  const auto id = shelf_.MoveAside(file->name);
  if (!id) return ShowInstance(visit, *file, "It could not be deleted; somebody may be using it.");
  HttpResponse response = Redirect("/deleted/" + *id);
  response.fields.push_back(SetCookie(kDeletedCookie, *id));
  return response;
}

HttpResponse Console::GetDeleted(Visit& visit) {
  const auto file = shelf_.Find(visit.words[0]);
  if (!file) return NotFound();
  PageValues values;
  values.Set("name", file->name).Set("aside_path", "/deleted/" + file->id);
  return Page(visit, "deleted", "Deleted", std::move(values));
}

HttpResponse Console::PostUndo(Visit& visit) {
  const auto file = shelf_.Find(visit.words[0]);
  if (!file) return NotFound();
  const auto name = shelf_.Restore(file->id);
  if (!name) {
    PageValues values;
    values.Set("name", file->name).Set("aside_path", "/deleted/" + file->id);
    return Page(visit, "not_restored", "Not put back", std::move(values), 409);
  }
  return Redirect(InstancePath(*name) + "?restored=1");
}

HttpResponse Console::PostForget(Visit& visit) {
  shelf_.Forget(visit.words[0]);
  return Redirect("/instances");
}

HttpResponse Console::PostSend(Visit& visit) {
  const auto file = FindInstance(visit.words[0]);
  if (!file || ClassOf(*file) == nullptr) return NotFound();
  const auto event = ParseAlertEvent(visit.form.Get("event"));
  if (!event) return ShowInstance(visit, *file, "There is no such event.");
  SendOrder order{
      .instance = file->name, .class_name = std::string(file->layout->class_name), .event = *event};
  for (const char* const letter : {"n", "C"}) {
    const auto value = visit.form.Get(std::string("variable-") + letter);
    if (!value.empty()) order.variables.Assign(std::string(letter) + "=" + std::string(value));
  }
  const auto id = backend_.BeginSend(order);
  if (!id)
    return ShowInstance(visit, *file, "Too many alerts are being sent already; wait a little.");
  return Redirect("/sends/" + *id);
}

HttpResponse Console::GetSend(Visit& visit) {
  const auto progress = backend_.ProgressOf(visit.words[0]);
  if (!progress) return NotFound();
  PageValues values;
  FillSend(values, *progress);
  values.Set("events_path", "/sends/" + EncodePercents(visit.words[0]) + "/events");
  values.SetFlag("refreshes", !progress->has_ended);
  return Page(visit, "send", "Test of " + progress->instance, std::move(values));
}

HttpResponse Console::GetSendEvents(Visit& visit) {
  if (!backend_.ProgressOf(visit.words[0])) return NotFound();
  return EventResponse(
      FollowSend(backend_, visit.words[0], visit.request.Field("Last-Event-ID").value_or("")));
}

HttpResponse Console::GetClasses(Visit& visit) {
  PageValues values;
  for (const ClassDescription* notifier_class : ClassDescriptions()) {
    PageValues& item = values.Add("classes");
    FillClass(item, *notifier_class);
    FillDiagnosis(item, DiagnoseClass(*notifier_class, backend_.system(), Reach::kOffline));
  }
  return Page(visit, "classes", "Classes", std::move(values));
}

HttpResponse Console::GetHelp(Visit& visit) {
  const ClassDescription* const notifier_class = FindClassDescription(visit.words[0]);
  if (notifier_class == nullptr) return NotFound();
  PageValues values;
  FillClass(values, *notifier_class);
  return Page(visit, "help", visit.words[0], std::move(values));
}

HttpResponse Console::GetJournal(Visit& visit) {
  constexpr std::size_t kMostShown = 200;
  const std::string_view words = visit.query.Get("words");
  const bool is_failed_only = visit.query.Get("failed") == "1";
  const auto& journal = backend_.Journal();
  const auto runs_still = [this](const JournalEntry& entry) { return backend_.RunsStill(entry); };
  PageValues values;
  std::size_t found = 0;
  for (std::size_t i = journal.size(); i > 0; --i) {
    const JournalEntry& entry = journal[i - 1];
    if (!HasWords(entry, words)) continue;
    const AttemptState state = StateOf(entry, runs_still);
    const bool has_failed = state == AttemptState::kFailed || state == AttemptState::kCutOff;
    if (is_failed_only && !has_failed) continue;
    if (++found <= kMostShown) FillEntry(values.Add("entries"), entry, state);
  }
  values.Set("words", words)
      .SetFlag("is_failed_only", is_failed_only)
      .Set("found", std::to_string(found))
      .SetFlag("has_more", found > kMostShown);
  return Page(visit, "journal", "Journal", std::move(values));
}

HttpResponse Console::GetJournalEntry(Visit& visit) {
  const auto& journal = backend_.Journal();
  const auto entry = std::ranges::find(journal, visit.words[0], &JournalEntry::id);
  if (entry == journal.end()) return NotFound();
  PageValues values;
  FillEntry(values, *entry,
            StateOf(*entry, [this](const JournalEntry& of) { return backend_.RunsStill(of); }));
  return Page(visit, "entry", "Alert", std::move(values));
}

HttpResponse Console::GetChanges(Visit& /*visit*/) {
  return EventResponse(FollowChanges(backend_, watched_));
}

HttpResponse Console::FramePage(const std::optional<std::string>& page) const {
  if (!page) {
    return Step(500, "The module makes no page here. The log of the host may say why.",
                "/instances", "To the instances");
  }
  return Html(200, *page, kFramePolicy);
}

// A password is in the module's pages as it is stored.
bool Console::HoldsSecret(const ClassDescription& notifier_class, const std::string& name) {
  const auto file = FindInstance(name);
  return file && ClassOf(*file) == &notifier_class && !SecretTexts(*file).empty();
}

HttpResponse Console::GetFrameAdd(Visit& visit) {
  const ClassDescription* const notifier_class = FindClassDescription(visit.words[1]);
  if (notifier_class == nullptr || !notifier_class->web_form) return NotFound();
  if (!options_.shows_secrets && HoldsSecret(*notifier_class, "Default")) {
    return Step(403, "This page would show the password of the instance Default.",
                "/add/" + visit.words[1] + "/form", "Use the console's form");
  }
  return FramePage(backend_.AddPage(*notifier_class));
}

HttpResponse Console::GetFrameEdit(Visit& visit) {
  const auto file = FindInstance(visit.query.Get("name"));
  if (!file || ClassOf(*file) == nullptr || visit.words[1] != file->layout->class_name ||
      !ClassOf(*file)->web_form)
    return NotFound();
  if (!options_.shows_secrets && HoldsSecret(*ClassOf(*file), file->name)) {
    return Step(403, "This page would show the password of the instance.",
                InstancePath(file->name) + "/form", "Use the console's form");
  }
  return FramePage(backend_.EditPage(*ClassOf(*file), file->name));
}

std::string Console::FaultOfModuleForm(const ClassDescription& notifier_class,
                                       const FormValues& form, std::optional<std::string>& edited) {
  const std::string original(form.Get(kOriginalNameField));
  if (original.empty()) return FaultOfName(form.Get(kInstanceNameField), nullptr).value_or("");
  const auto file = FindInstance(original);
  if (!file || ClassOf(*file) != &notifier_class) return "There is no such instance any more.";
  edited = original;
  return "";
}

HttpResponse Console::PostFrame(Visit& visit) {
  const ClassDescription* const notifier_class = FindClassDescription(visit.words[1]);
  if (notifier_class == nullptr || !notifier_class->web_form) return NotFound();
  std::optional<std::string> edited;
  std::string fault = FaultOfModuleForm(*notifier_class, visit.form, edited);
  const std::string name = edited.value_or(std::string(visit.form.Get(kInstanceNameField)));
  const std::string form_path = (edited ? InstancePath(name) : "/add/" + visit.words[1]) + "/form";
  const auto form = FormForModule(*notifier_class, visit.form);
  if (fault.empty() && !form) {
    fault =
        "This form cannot tell the module of the signs & and +, of line ends in a line, and of a "
        "value in which another field seems to begin. The console's form can.";
  }
  for (const FormValues::Pair& pair : visit.form.pairs()) {
    if (fault.empty() && !backend_.system().ToCodePage(pair.value))
      fault = "A value has characters that the system's code page lacks.";
  }
  if (!fault.empty()) return Step(409, "Not saved. " + fault, form_path, "Use the console's form");
  if (!backend_.SubmitForm(*notifier_class, edited, *form)) {
    return Step(409, "The module did not save it; a value may be too long, or the file in use.",
                form_path, "Use the console's form");
  }
  return Step(200, "The instance is saved.", InstancePath(name), "Show the instance");
}

HttpResponse Console::GetFrameHelp(Visit& visit) {
  // Without the session: a page to which the module's page leads has no forms of the console's.
  Visit help{.request = visit.request, .words = {visit.words[1]}};
  return GetHelp(help);
}

HttpResponse Console::GetStepToInstances(Visit& visit) {
  if (!IsWithinFrame(visit.request)) return Redirect("/instances");
  return Step(200, "Notifications", "/instances", "Show the instances");
}

HttpResponse Console::GetStepToOverview(Visit& visit) {
  if (!IsWithinFrame(visit.request)) return Redirect("/");
  return Step(200, "Top view", "/", "Show the overview");
}

// In a frame: leads out of it.
HttpResponse Console::Step(unsigned status, std::string_view words, std::string_view path,
                           std::string_view link) const {
  PageValues values;
  values.Set("words", words).Set("path", path).Set("link", link);
  return Html(status, FillTemplate(PageTemplate("step"), values, PageTemplate), kFramePolicy);
}

HttpResponse Console::Page(const Visit& visit, std::string_view name, std::string_view title,
                           PageValues values, unsigned status) const {
  const bool is_in = visit.session != nullptr;
  values.Set("title", title)
      .Set("directory", is_in ? options_.directory : "")
      .Set("version", ProgramVersion())
      .Set("token", is_in ? visit.session->token : "")
      .SetFlag("is_in", is_in)
      .SetFlag("can_log_out", is_in && sessions_.asks_for_password());
  for (const std::string_view place : {"overview", "instances", "classes", "journal"})
    values.SetFlag("at_" + std::string(place), place == name);
  return Html(status, FillTemplate(PageTemplate(name), values, PageTemplate), kConsolePolicy);
}

HttpResponse Console::Message(unsigned status, std::string_view title,
                              std::string_view words) const {
  PageValues values;
  values.Set("title", title).Set("words", words);
  return Html(status, FillTemplate(PageTemplate("message"), values, PageTemplate), kConsolePolicy);
}

HttpResponse Console::NotFound() {
  return Html(404,
              FillTemplate(PageTemplate("message"),
                           PageValues()
                               .Set("title", "There is nothing here")
                               .Set("words", "The console has no page at this address."),
                           PageTemplate),
              kConsolePolicy);
}

}  // namespace brantel::host
