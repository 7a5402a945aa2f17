#include "host/preview/paper_host.h"

#include "text/text_end.h"

namespace brantel::host {

Result PaperHost::ExpandMessage(std::string& text, EmptyText /*empty_text*/) {
  text = texts_.to_code_page(expand_(texts_.to_utf8(text)));
  last_expanded_ = text;
  return kOk;
}

void PaperHost::LogMessage(std::string_view text) {
  log_ += texts_.to_utf8(text);
}

void PaperHost::LogMessage(std::u16string_view text) {
  log_ += texts_.utf16_to_utf8(text);
}

Result PaperHost::GetAlertTrigger(std::uint32_t& word) {
  if (!event_.trigger_word) return kFail;
  word = *event_.trigger_word;
  return kOk;
}

std::string_view PaperHost::last_expanded() const {
  return UpToNul(last_expanded_);
}

}  // namespace brantel::host
