#include "module/com_host.h"

#include "system/windows/ansi_text_win32.h"
#include "system/windows/bstr_win32.h"

namespace brantel {
namespace {

// Hosts may ignore the level; the notifiers have only ever used this one.
constexpr UINT32 kLogLevel = 1;

// UTF-16 is wchar_t here.
std::wstring Wide(std::u16string_view text) {
  return {text.begin(), text.end()};
}

}  // namespace

std::shared_ptr<NotifierHost> ComHost::AddReference() {
  return std::make_shared<ComHost>(host_);
}

Result ComHost::ExpandMessage(std::string& text, EmptyText empty_text) {
  const bool is_null = text.empty() && empty_text == EmptyText::kNull;
  Bstr message = is_null ? Bstr() : Bstr(FromAnsi(text));
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
