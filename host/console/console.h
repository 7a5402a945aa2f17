#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/console/console_backend.h"
#include "host/console/console_sessions.h"
#include "host/console/form_text.h"
#include "host/console/host_rules.h"
#include "host/console/http_message.h"
#include "host/console/page_template.h"
#include "host/console/undo_shelf.h"

namespace brantel::host {

struct ConsoleOptions {
  std::vector<std::string> host_names;  // as HostRules has them
  std::string directory;                // of the instances, as people know it
  bool shows_secrets = false;           // in the pages that the module itself makes
  std::string notice{};                 // words on the overview; empty for none
};

// The console: what it answers to requests. Whatever comes in may be hostile, and so may names,
// values and logs that it shows.
class Console {
 public:
  // What is handed over must outlive the object. `watched` is null where nothing is watched.
  Console(ConsoleBackend& backend, ConsoleSystem& system, ConsoleOptions options,
          ConsoleSessions::PasswordCheck check, WatchedItems* watched);

  HttpResponse Handle(const HttpRequest& request);

 private:
  // One request, as far as it has been understood.
  struct Visit {
    const HttpRequest& request;
    std::vector<std::string> words{};  // of the path, where the route has a "*"
    FormValues query{};
    FormValues form{};
    const ConsoleSession* session = nullptr;
  };
  using Answer = HttpResponse (Console::*)(Visit& visit);
  // Who may ask for it.
  enum class Access {
    kEverybody,
    kSession,  // who is logged in, where a password is asked for
    kFrame,    // who knows the frame token, which is the first word of the path
  };
  struct Route {
    std::string_view path;  // "*" stands for one word
    Access access;
    Answer get;   // null: there is nothing to see
    Answer post;  // null: there is nothing to change
  };
  static const std::vector<Route>& Routes();
  static const Route* FindRoute(const std::vector<std::string>& segments,
                                std::vector<std::string>& words);

  HttpResponse Dispatch(const HttpRequest& request);
  HttpResponse Get(const Route& route, Visit& visit);
  HttpResponse Post(const Route& route, Visit& visit);
  [[nodiscard]] bool MayPost(const Route& route, const Visit& visit) const;
  const ConsoleSession* SessionOf(const Route& route, const Visit& visit);
  // Deletes what could be put back as long as the page about it was not left.
  void EndUndo(const Visit& visit, HttpResponse& response);

  HttpResponse GetFile(Visit& visit);
  HttpResponse GetLogIn(Visit& visit);
  HttpResponse PostLogIn(Visit& visit);
  HttpResponse PostLogOut(Visit& visit);
  HttpResponse GetOverview(Visit& visit);
  HttpResponse GetInstances(Visit& visit);
  HttpResponse GetInstance(Visit& visit);
  HttpResponse GetAdd(Visit& visit);
  HttpResponse GetAddForm(Visit& visit);
  HttpResponse PostAddForm(Visit& visit);
  HttpResponse GetEdit(Visit& visit);
  HttpResponse GetEditForm(Visit& visit);
  HttpResponse PostEditForm(Visit& visit);
  HttpResponse PostRename(Visit& visit);
  HttpResponse PostCopy(Visit& visit);
  HttpResponse PostDelete(Visit& visit);
  HttpResponse GetDeleted(Visit& visit);
  HttpResponse PostUndo(Visit& visit);
  HttpResponse PostForget(Visit& visit);
  HttpResponse PostSend(Visit& visit);
  HttpResponse GetSend(Visit& visit);
  HttpResponse GetSendEvents(Visit& visit);
  HttpResponse GetClasses(Visit& visit);
  HttpResponse GetHelp(Visit& visit);
  HttpResponse GetJournal(Visit& visit);
  HttpResponse GetJournalEntry(Visit& visit);
  HttpResponse GetChanges(Visit& visit);
  HttpResponse GetFrameAdd(Visit& visit);
  HttpResponse GetFrameEdit(Visit& visit);
  HttpResponse PostFrame(Visit& visit);
  HttpResponse GetFrameHelp(Visit& visit);
  HttpResponse GetStepToInstances(Visit& visit);
  HttpResponse GetStepToOverview(Visit& visit);

  // The instance that the directory lists under exactly this name.
  std::optional<InstanceFile> FindInstance(std::string_view name);
  // What keeps a new file from having this name; nothing when it may.
  std::optional<std::string> FaultOfName(std::string_view name, const std::string* present_name);
  bool HoldsSecret(const ClassDescription& notifier_class, const std::string& name);
  HttpResponse ShowFormPage(const Visit& visit, const ClassDescription& notifier_class,
                            const std::optional<std::string>& edited, const FormValues* posted,
                            const std::string& complaint);
  HttpResponse SubmitFormPage(const Visit& visit, const ClassDescription& notifier_class,
                              const std::optional<std::string>& edited);
  HttpResponse ShowInstance(const Visit& visit, const InstanceFile& file,
                            const std::string& complaint);
  HttpResponse ShowFramed(const Visit& visit, const ClassDescription& notifier_class,
                          const std::optional<std::string>& edited);
  HttpResponse FramePage(const std::optional<std::string>& page) const;
  std::string FaultOfModuleForm(const ClassDescription& notifier_class, const FormValues& form,
                                std::optional<std::string>& edited);
  HttpResponse Step(unsigned status, std::string_view words, std::string_view path,
                    std::string_view link) const;

  HttpResponse Page(const Visit& visit, std::string_view name, std::string_view title,
                    PageValues values, unsigned status = 200) const;
  HttpResponse Message(unsigned status, std::string_view title, std::string_view words) const;
  static HttpResponse NotFound();
  void FillInstances(PageValues& values);

  ConsoleBackend& backend_;
  ConsoleSystem& system_;
  const ConsoleOptions options_;
  const HostRules rules_;
  ConsoleSessions sessions_;
  UndoShelf shelf_;
  WatchedItems* watched_;
};

}  // namespace brantel::host
