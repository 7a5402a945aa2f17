#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "framework/html_text.h"
#include "framework/instance_codec.h"
#include "framework/instance_files.h"
#include "framework/notifier.h"
#include "framework/notifier_host.h"
#include "framework/result.h"
#include "framework/web_form_spec.h"

namespace brantel {

// The web side of one notifier object: shows instances as HTML forms and saves what comes back.
// Pages, forms and paths are in the system's ANSI code page. `host` is null when none is bound.
class WebForms {
 public:
  // `files` and `spec` must outlive the object. `is_lead_byte` tells the first bytes of the code
  // page's double-byte characters.
  WebForms(InstanceFiles& files, const WebFormSpec& spec, bool (*is_lead_byte)(char))
      : files_(files), spec_(spec), is_lead_byte_(is_lead_byte) {}

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
  Result SubmitForm(const std::string& directory, std::string_view form);

 private:
  void RememberProfile(const Instance& shown);

  InstanceFiles& files_;
  const WebFormSpec& spec_;
  bool (*const is_lead_byte_)(char);
  std::int32_t profile_ = 0;  // of the page shown last
};

}  // namespace brantel
