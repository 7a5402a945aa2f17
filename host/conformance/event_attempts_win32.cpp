#include "host/conformance/event_attempts_win32.h"

#include <windows.h>

#include <optional>
#include <string>

#include "brantel/notifier_contract.h"
#include "host/outcome/result_text.h"

namespace brantel::host {

Seen TryEvent(const TriedLibrary& library) {
  for (const UINT32 word : {1U, 2U, 4U, 8U, 16U, 3U, 20U, 0U, 32U}) {
    UINT32 stored = ~word;
    const HRESULT result = library.MakeHost(word)->GetAlertTrigger(&stored);
    const std::string of_word = "of the word " + std::to_string(word) + " ";
    if (FAILED(result)) return Broken(of_word + "it answers " + ResultText(result));
    if (stored != word) return Broken(of_word + "it stores " + std::to_string(stored));
  }
  return Kept();
}

Seen TryNoEvent(const TriedLibrary& library) {
  UINT32 stored = 0;
  const HRESULT result = library.MakeHost(std::nullopt)->GetAlertTrigger(&stored);
  return FAILED(result) ? Kept() : Broken("it answers " + ResultText(result));
}

}  // namespace brantel::host
