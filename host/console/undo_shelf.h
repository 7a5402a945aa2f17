#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "host/console/console_backend.h"

namespace brantel::host {

// Where deleted instances wait for somebody to think better of it: a folder in their directory. A
// file there is whole at any moment, so that nothing is lost when the host is ended meanwhile.
class UndoShelf {
 public:
  // Both must outlive the object.
  UndoShelf(ConsoleBackend& backend, ConsoleSystem& system);

  // Takes the instance of this name out of the directory and gives the id by which it is put back.
  // Nothing when that does not succeed; it then is where it was.
  std::optional<std::string> MoveAside(const std::string& name);

  // Puts it back and gives its name. Nothing when it is not there, or when another one has its name
  // now.
  std::optional<std::string> Restore(std::string_view id);

  // Ends the chance: the file is deleted.
  void Forget(std::string_view id);

  // All that can be put back.
  std::vector<FileAside> Files();
  std::optional<FileAside> Find(std::string_view id);

 private:
  [[nodiscard]] std::string Folder() const;
  // In the code page; nothing for a name that this has no room for.
  std::optional<std::string> PathOf(const FileAside& file);

  ConsoleBackend& backend_;
  ConsoleSystem& system_;
};

}  // namespace brantel::host
