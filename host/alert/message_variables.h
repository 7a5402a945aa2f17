#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace brantel::host {

// The values that this host fills into message templates. A variable is "%" and one letter, and
// capital and small letters differ. Text is UTF-8.
class MessageVariables {
 public:
  // Takes "LETTER=VALUE"; the value may be empty. A letter that has a value already gets the new
  // one. False, and nothing set, when the text is of another form.
  bool Assign(std::string_view assignment);

  // What makes the same anew, each as Assign takes it.
  [[nodiscard]] std::vector<std::string> assignments() const;

  // The template with its variables filled in and "%%" turned into "%". Values are taken as they
  // are, percent signs and all. What is no variable with a value stays as it stands, so that one
  // sees in the alert which variables it asks for.
  [[nodiscard]] std::string Expand(std::string_view message_template) const;

 private:
  std::map<char, std::string> values_;
};

}  // namespace brantel::host
