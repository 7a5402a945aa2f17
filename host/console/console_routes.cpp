#include "host/console/console_routes.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "host/console/deleted_answers.h"
#include "host/console/form_answers.h"
#include "host/console/frame_answers.h"
#include "host/console/instance_answers.h"
#include "host/console/journal_answers.h"
#include "host/console/login_answers.h"
#include "host/console/overview_answers.h"
#include "host/console/send_answers.h"
#include "host/console/watched_answers.h"

namespace brantel::host {
namespace {

using enum Access;

// clang-format off
constexpr auto kRoutes = std::to_array<ConsoleRoute>({
    {"", kSession, GetOverview, nullptr},
    {"files/*", kEverybody, GetConsoleFile, nullptr},
    {"login", kEverybody, GetLogIn, PostLogIn},
    {"logout", kSession, nullptr, PostLogOut},
    {"instances", kSession, GetInstances, nullptr},
    {"instances/*", kSession, GetInstance, nullptr},
    {"instances/*/edit", kSession, GetEdit, nullptr},
    {"instances/*/form", kSession, GetEditForm, PostEditForm},
    {"instances/*/rename", kSession, nullptr, PostRename},
    {"instances/*/copy", kSession, nullptr, PostCopy},
    {"instances/*/delete", kSession, nullptr, PostDelete},
    {"instances/*/send", kSession, nullptr, PostSend},
    {"add/*", kSession, GetAdd, nullptr},
    {"add/*/form", kSession, GetAddForm, PostAddForm},
    {"deleted/*", kSession, GetDeleted, nullptr},
    {"deleted/*/undo", kSession, nullptr, PostUndo},
    {"deleted/*/forget", kSession, nullptr, PostForget},
    {"sends/*", kSession, GetSend, nullptr},
    {"sends/*/events", kSession, GetSendEvents, nullptr},
    {"classes", kSession, GetClasses, nullptr},
    {"help/*", kSession, GetHelp, nullptr},
    {"journal", kSession, GetJournal, nullptr},
    {"journal/*", kSession, GetJournalEntry, nullptr},
    {"acknowledge", kSession, GetAcknowledge, PostAcknowledge},
    {"changes", kSession, GetChanges, nullptr},
    // The module's own pages, with where they lead.
    {"frame/*/*/add", kFrame, GetFrameAdd, nullptr},
    {"frame/*/*/edit", kFrame, GetFrameEdit, nullptr},
    {"frame/*/*/_maincfgret.cgi", kFrame, nullptr, PostFrame},
    {"frame/*/*/h_edtnot.htm", kFrame, GetFrameHelp, nullptr},
    {"_maincfgreg.cgi", kEverybody, GetStepToInstances, nullptr},
    {"_top.cgi", kEverybody, GetStepToOverview, nullptr},
});
// clang-format on

}  // namespace

const ConsoleRoute* FindRoute(const std::vector<std::string>& segments,
                              std::vector<std::string>& words) {
  for (const ConsoleRoute& route : kRoutes) {
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

}  // namespace brantel::host
