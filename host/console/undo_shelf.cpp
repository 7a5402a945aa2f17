#include "host/console/undo_shelf.h"

#include <algorithm>
#include <cstddef>

namespace brantel::host {
namespace {

constexpr const char* kFolderName = "notifyhost.deleted";
constexpr std::size_t kIdSize = 16;
// A file on the shelf is named by its id, a blank and the instance's name.
constexpr std::size_t kPrefixSize = kIdSize + 1;

bool IsShelfId(std::string_view text) {
  return text.size() == kIdSize &&
         text.find_first_not_of("0123456789abcdef") == std::string_view::npos;
}

}  // namespace

UndoShelf::UndoShelf(ConsoleBackend& backend, ConsoleSystem& system)
    : backend_(backend), system_(system) {}

std::optional<std::string> UndoShelf::MoveAside(const std::string& name) {
  const FileAside file{system_.RandomText().substr(0, kIdSize), name};
  const auto stored = backend_.system().ToCodePage(name);
  const auto path = PathOf(file);
  if (!stored || !path || !backend_.MakeFolder(Folder())) return std::nullopt;
  if (!backend_.files().Rename(backend_.directory() + "\\" + *stored, *path)) return std::nullopt;
  return file.id;
}

std::optional<std::string> UndoShelf::Restore(std::string_view id) {
  const auto file = Find(id);
  if (!file) return std::nullopt;
  const auto stored = backend_.system().ToCodePage(file->name);
  const auto path = PathOf(*file);
  if (!stored || !path || !backend_.files().IsValidName(*stored)) return std::nullopt;
  if (!backend_.files().Rename(*path, backend_.directory() + "\\" + *stored)) return std::nullopt;
  return file->name;
}

void UndoShelf::Forget(std::string_view id) {
  const auto file = Find(id);
  if (!file) return;
  if (const auto path = PathOf(*file)) backend_.files().Delete(*path);
}

std::vector<FileAside> UndoShelf::Files() {
  std::vector<FileAside> files;
  for (const std::string& name : backend_.FilesIn(Folder())) {
    if (name.size() <= kPrefixSize || !IsShelfId(name.substr(0, kIdSize))) continue;
    files.push_back({name.substr(0, kIdSize), name.substr(kPrefixSize)});
  }
  return files;
}

std::optional<FileAside> UndoShelf::Find(std::string_view id) {
  for (FileAside& file : Files()) {
    if (file.id == id) return std::move(file);
  }
  return std::nullopt;
}

std::string UndoShelf::Folder() const {
  return backend_.directory() + "\\" + kFolderName;
}

std::optional<std::string> UndoShelf::PathOf(const FileAside& file) {
  const auto name = backend_.system().ToCodePage(file.id + " " + file.name);
  if (!name || !backend_.files().IsValidName(*name)) return std::nullopt;
  return Folder() + "\\" + *name;
}

}  // namespace brantel::host
