#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace brantel::host {

// What a template is filled with: texts, things that are so or not, and lists of more of the same.
// Texts are UTF-8 and may hold anything.
class PageValues {
 public:
  PageValues& Set(std::string name, std::string_view text);
  PageValues& SetFlag(std::string name, bool is_set);
  // Adds to a list and gives what was added, valid until the list grows.
  PageValues& Add(const std::string& list);

  [[nodiscard]] const std::string* FindText(std::string_view name) const;
  // The items of a list; a flag that is set has one, without values.
  [[nodiscard]] const std::vector<PageValues>* FindItems(std::string_view name) const;

 private:
  std::map<std::string, std::string, std::less<>> texts_;
  std::map<std::string, std::vector<PageValues>, std::less<>> lists_;
};

// The text with < > & and both quotation marks as entities and control characters, but for line
// ends and tabs, as pictures of themselves: it stays text between tags and in quoted attributes.
std::string EscapeHtml(std::string_view text);

// Gives the templates that others include, by their names.
using TemplateFinder = std::string_view (*)(std::string_view name);

// Fills in a template:
//   {{name}}                the text, always escaped: there is no way around that
//   {{#name}} ... {{/name}} once for each item of the list; names are looked for in the item first
//   {{^name}} ... {{/name}} once where the list is empty or the flag not set
//   {{>name}}               another template
// A template comes with the program, so one that is wrong throws std::logic_error.
std::string FillTemplate(std::string_view page_template, const PageValues& values,
                         TemplateFinder find);

}  // namespace brantel::host
