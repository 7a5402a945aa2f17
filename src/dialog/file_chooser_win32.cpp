#include "dialog/file_chooser_win32.h"

#include <commdlg.h>
#include <shlobj.h>

#include <algorithm>
#include <array>
#include <memory>
#include <type_traits>

#include "system/windows/com_pointer_win32.h"
#include "system/windows/current_directory_win32.h"
#include "system/windows/system_library_win32.h"
#include "text/string_table.h"

namespace brantel {
namespace {

constexpr std::size_t kFileCapacity = 512;
constexpr std::size_t kDirectoryCapacity = 301;

// Label and pattern of each kind, each with its NUL, and one more NUL at the end.
std::string Filter(const FileKind& kind) {
  std::string filter = LoadText(kind.label_id) + '\0';
  filter.append(kind.pattern) += '\0';
  filter.append(LoadText(text_id::kAllFiles)) += '\0';
  filter.append("*.*") += '\0';
  return filter;
}

// Items of the shell's name space are the shell's memory.
struct ItemListDeleter {
  void operator()(LPITEMIDLIST list) const noexcept {
    ComPointer<IMalloc> allocator;
    if (SUCCEEDED(SHGetMalloc(allocator.put()))) allocator->Free(list);
  }
};
using OwnedItemList = std::unique_ptr<std::remove_pointer_t<LPITEMIDLIST>, ItemListDeleter>;

// Loaded when somebody wants to choose a file: the system's dialogs bring all with them that draws
// controls, and a process that shows none, as a host that sends an alert, starts much sooner
// without.
bool OpenFileDialog(OPENFILENAMEA& choice) {
  const SystemLibrary dialogs("comdlg32.dll");
  decltype(GetOpenFileNameA)* open = nullptr;
  if (dialogs) dialogs.Find("GetOpenFileNameA", open);
  return open != nullptr && open(&choice) != FALSE;
}

}  // namespace

std::optional<std::string> ChooseFile(HWND owner, const FileKind& kind,
                                      const std::string& current) {
  // The system's dialog moves into the folder of the chosen file, and the host with it.
  const CurrentDirectoryKeeper keeper;
  const std::string filter = Filter(kind);
  std::array<char, kFileCapacity> file{};
  std::copy_n(current.begin(), std::min(current.size(), file.size() - 1), file.begin());

  OPENFILENAMEA choice{};
  choice.lStructSize = sizeof choice;
  choice.hwndOwner = owner;
  choice.lpstrFilter = filter.c_str();
  choice.lpstrFile = file.data();
  choice.nMaxFile = static_cast<DWORD>(file.size());
  choice.Flags = OFN_FILEMUSTEXIST;
  if (!OpenFileDialog(choice)) return std::nullopt;
  return file.data();
}

std::optional<std::string> ChooseDirectory(HWND owner, const std::string& title) {
  std::array<char, MAX_PATH> display_name{};
  BROWSEINFOA choice{};
  choice.hwndOwner = owner;
  choice.pszDisplayName = display_name.data();
  choice.lpszTitle = title.c_str();
  choice.ulFlags = BIF_RETURNONLYFSDIRS;
  const OwnedItemList item(SHBrowseForFolderA(&choice));
  if (!item) return std::nullopt;

  std::array<char, kDirectoryCapacity> directory{};
  SHGetPathFromIDListA(item.get(), directory.data());
  return directory.data();
}

}  // namespace brantel
