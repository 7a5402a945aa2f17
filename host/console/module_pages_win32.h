#pragma once

#include <optional>
#include <string>
#include <utility>

#include "description/class_description.h"

namespace brantel::host {

// The pages of the module's own web forms, and what is posted from them, through the exported
// interfaces as any host has them. Texts and paths are UTF-8; paths are full.
class ModulePages {
 public:
  // Through this module file (UTF-8), or through the registered classes. `directory` is that of the
  // instances.
  ModulePages(std::optional<std::string> module_file, std::string directory)
      : module_file_(std::move(module_file)), directory_(std::move(directory)) {}

  // Nothing when the class makes none. Throws CommandFailure when there is no such class.
  std::optional<std::string> AddPage(const ClassDescription& notifier_class) const;
  std::optional<std::string> EditPage(const ClassDescription& notifier_class,
                                      const std::string& name) const;

  // Shows the page again before it submits the form to the same object: what the form has no field
  // for is taken from the page that the object has shown last.
  [[nodiscard]] bool SubmitForm(const ClassDescription& notifier_class,
                                const std::optional<std::string>& edited,
                                const std::string& form) const;

 private:
  [[nodiscard]] std::string PathOf(const std::string& name) const {
    return directory_ + "\\" + name;
  }

  const std::optional<std::string> module_file_;
  const std::string directory_;
};

}  // namespace brantel::host
