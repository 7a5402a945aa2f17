#include "module/com_host.h"

#include "framework/ansi_text_win32.h"
#include "framework/bstr_win32.h"

namespace brantel {
namespace {

// Hosts may ignore the level; the notifiers have only ever used this one.
constexpr UINT32 kLogLevel = 1;

// UTF-16 is wchar_t here.
std::wstring Wide(std::u16string_view text) {
  return {text.begin(), text.end()};
}

}  // namespace

Result ComHost::ExpandMessage(std::string& text) {
  // An empty text goes out as a null BSTR, which every BSTR function takes for one.
  Bstr message = text.empty() ? Bstr() : Bstr(FromAnsi(text));
  const Result result = host_->ExpandMessage(message.in_out());
  if (!Failed(result)) text = ToAnsi(message.view());
  return result;
}

void ComHost::LogMessage(std::string_view text) {
  Log(FromAnsi(text));
}

void ComHost::LogMessage(std::u16string_view text) {
  Log(Wide(text));
}

Result ComHost::GetAlertTrigger(std::uint32_t& word) {
  UINT32 flags = 0;
  const Result result = host_->GetAlertTrigger(&flags);
  if (!Failed(result)) word = flags;
  return result;
}

void ComHost::Log(std::wstring_view text) {
  // A host that cannot log is no reason to lose the alert.
  const Bstr message(text);
  host_->LogMessage(kLogLevel, message.get());
}

}  // namespace brantel
