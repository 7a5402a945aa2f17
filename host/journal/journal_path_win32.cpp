#include "host/journal/journal_path_win32.h"

#include "host/instances/journal_name.h"
#include "host/system/file_path_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {

std::wstring JournalPath(const std::string& given, const std::wstring& folder) {
  if (!given.empty()) return FullPath(FromUtf8(given));
  const std::wstring name = FromUtf8(kJournalName);
  return folder.empty() ? FullPath(name) : folder + L"\\" + name;
}

}  // namespace brantel::host
