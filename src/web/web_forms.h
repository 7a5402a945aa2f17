#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "description/class_description.h"
#include "instance/instance_argument.h"
#include "instance/instance_codec.h"
#include "instance/instance_files.h"
#include "notifier/notifier_host.h"
#include "system/result.h"
#include "text/code_page.h"
#include "web/html_text.h"

namespace brantel {

// The web side of one notifier object: shows instances as HTML forms and saves what comes back.
// Pages, forms and paths are in the system's ANSI code page. `host` is null when none is bound.
class WebForms {
 public:
  // All three must outlive the object.
  WebForms(InstanceFiles& files, const ClassDescription& description, const CodePage& code_page)
      : files_(files), description_(description), code_page_(code_page) {}

  // The form for a new instance, prefilled from the directory's instance "Default", or empty when
  // that cannot be loaded; the host is told then.
  HtmlText AddPage(const std::string& directory, NotifierHost* host);

  // The form for an instance; `name` is the file name in the argument. Nothing when the instance
  // cannot be loaded; the host is told.
  std::optional<HtmlText> EditPage(const InstanceArgument& argument, std::string_view name,
                                   NotifierHost* host);

  // Saves what a posted form says, under the settings profile of the page shown last. A form with
  // an empty "origname" adds the instance "instancename"; any other saves the instance "origname",
  // which may also be two names with "/" between: the new one, and the old one, whose file is
  // deleted first. What the form has no field for keeps its stored value, that of "Default" in a
  // new instance. E_FAIL when the file cannot be written, and with nothing touched when one of the
  // names is none that a file in the directory may have or the class could not load a text again.
  // Nothing is touched either when memory runs out, which it does before the first file is.
  Result SubmitForm(const std::string& directory, std::string_view form);

 private:
  void RememberProfile(const Instance& shown);

  InstanceFiles& files_;
  const ClassDescription& description_;
  const CodePage& code_page_;
  std::int32_t profile_ = 0;  // of the page shown last
};

}  // namespace brantel
