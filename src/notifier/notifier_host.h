#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "system/result.h"

namespace brantel {

// What the host is given for an empty text to expand.
enum class EmptyText {
  kAllocated,  // an empty text of its own
  kNull,       // none at all
};

// The host as a notifier sees it: the three callbacks of the host's own object, with text in the
// system's ANSI code page. Implementations do not throw for what the host answers, only when memory
// runs out.
class NotifierHost : public std::enable_shared_from_this<NotifierHost> {
 public:
  virtual ~NotifierHost() = default;

  // The host once more, for somebody who keeps it beside the object that is bound to it: a host
  // that counts its references has one more then, until what is returned is let go.
  virtual std::shared_ptr<NotifierHost> AddReference() { return shared_from_this(); }

  // Lets the host replace its event variables in `text`. On a failing result `text` is unchanged.
  // A host that succeeds with no text at all leaves `text` empty.
  virtual Result ExpandMessage(std::string& text, EmptyText empty_text = EmptyText::kAllocated) = 0;

  // Appends `text` unchanged to the host's log of this alert. Line breaks are part of the text.
  virtual void LogMessage(std::string_view text) = 0;

  // The same for a text that came from the host and goes back to it as it came: characters outside
  // the ANSI code page survive.
  virtual void LogMessage(std::u16string_view text) = 0;

  // Stores the trigger word of the event being notified (notifier/alert_trigger.h). A failing
  // result means that there is no event, for example when an operator tries a configuration.
  virtual Result GetAlertTrigger(std::uint32_t& word) = 0;
};

}  // namespace brantel
