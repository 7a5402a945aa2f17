// Writes a page of the module's web forms to standard output, in UTF-8, as the module gives it to
// any host; or gives the module a form that was posted:
//   page_teller MODULE CLSID add DIRECTORY
//   page_teller MODULE CLSID edit FILE
//   page_teller MODULE CLSID submit DIRECTORY FORM
#include <windows.h>
#include <fcntl.h>
#include <io.h>
#include <objbase.h>
#include <oleauto.h>
#include <shellapi.h>

#include <cstdio>
#include <string>

#include "brantel/notifier_contract.h"

namespace brantel {
namespace {

using GetClassObject = HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**);

INotifierWebConfig* WebFormsOf(const wchar_t* module_file, const wchar_t* clsid_text) {
  CLSID clsid{};
  HMODULE module = LoadLibraryW(module_file);
  if (module == nullptr || FAILED(CLSIDFromString(clsid_text, &clsid))) return nullptr;
  const auto get_class = reinterpret_cast<GetClassObject>(
      reinterpret_cast<void*>(GetProcAddress(module, "DllGetClassObject")));
  IClassFactory* factory = nullptr;
  void* forms = nullptr;
  if (FAILED(get_class(clsid, IID_IClassFactory, reinterpret_cast<void**>(&factory))) ||
      FAILED(factory->CreateInstance(nullptr, IID_INotifierWebConfig, &forms)))
    return nullptr;
  return static_cast<INotifierWebConfig*>(forms);
}

bool Write(BSTR page) {
  const auto length = static_cast<int>(SysStringLen(page));
  const int size = WideCharToMultiByte(CP_UTF8, 0, page, length, nullptr, 0, nullptr, nullptr);
  std::string text(static_cast<std::size_t>(size), '\0');
  WideCharToMultiByte(CP_UTF8, 0, page, length, text.data(), size, nullptr, nullptr);
  _setmode(_fileno(stdout), _O_BINARY);
  return std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
}

bool Tell(INotifierWebConfig& forms, bool adds, BSTR path) {
  BSTR page = nullptr;
  const HRESULT result = adds ? forms.GetAddPage(path, &page) : forms.GetEditPage(path, &page);
  return SUCCEEDED(result) && Write(page);
}

}  // namespace
}  // namespace brantel

int main() {
  int count = 0;
  wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
  if (count < 5 || FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 1;
  brantel::INotifierWebConfig* const forms = brantel::WebFormsOf(words[1], words[2]);
  if (forms == nullptr) return 1;
  const BSTR path = SysAllocString(words[4]);
  if (count == 6) return SUCCEEDED(forms->SubmitForm(path, SysAllocString(words[5]))) ? 0 : 1;
  return brantel::Tell(*forms, std::wstring(words[3]) == L"add", path) ? 0 : 1;
}
