#pragma once

#include <ctemplate/template.h>
#include <ctemplate/template_cache.h>

#include <string>
#include <string_view>
#include <vector>

#include "instance/instance_codec.h"
#include "web/html_text.h"

namespace brantel {

// An edit page of 5 KB with eight rows whose values are as long as the forms let them be, and hold
// some markup, as the ways to be measured make it.
class EditPage {
 public:
  // Ends the program if not all of the ways make the same page.
  EditPage();

  [[nodiscard]] HtmlText Build() const;

  // Copies every run of text and every value, which is escaped already, to its place.
  [[nodiscard]] std::string CopyBare() const;

  // By ctemplate, which escapes the values and has the texts around them in a template of a cache
  // that no longer changes.
  [[nodiscard]] std::string ExpandTemplate() const;

 private:
  [[nodiscard]] std::vector<std::string_view> ValuesInPageOrder() const;
  void CutUpPage();
  void MakeTemplate();

  Instance values_;
  std::vector<std::string> escaped_values_;  // in page order
  std::vector<std::string> texts_;           // around the values: one more than there are values
  std::vector<std::string> variables_;       // which stand for the values in the template
  ctemplate::TemplateCache templates_;
};

}  // namespace brantel
