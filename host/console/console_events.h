#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "host/console/console_backend.h"
#include "host/console/http_message.h"

namespace brantel::host {

// Server-sent events: a message of that kind with these lines.
std::string EventMessage(std::string_view kind, std::string_view text, std::string_view id = {});

HttpResponse EventResponse(std::unique_ptr<EventStream> stream);

// Tells of a send what comes behind the first `told` things, "phase" by "phase" and "log" by "log",
// and at the end "end". `backend` must outlive the stream.
std::unique_ptr<EventStream> FollowSend(ConsoleBackend& backend, std::string id,
                                        std::string_view told);

// Tells by "change" that the journal, or what is watched, is not what it was. `watched` may be
// null; both must outlive the stream.
std::unique_ptr<EventStream> FollowChanges(ConsoleBackend& backend, WatchedItems* watched);

}  // namespace brantel::host
