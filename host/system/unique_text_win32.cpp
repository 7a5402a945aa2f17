#include "host/system/unique_text_win32.h"

#include <windows.h>
#include <objbase.h>

#include <array>

#include "host/outcome/command_failure.h"
#include "host/outcome/result_text.h"

namespace brantel::host {

std::wstring UniqueText() {
  GUID guid{};
  const HRESULT result = CoCreateGuid(&guid);
  if (FAILED(result))
    throw CommandFailure(ExitCode::kFailed, "the system makes no GUID: " + ResultText(result));
  std::array<wchar_t, 40> text{};
  StringFromGUID2(guid, text.data(), text.size());
  return text.data();
}

}  // namespace brantel::host
