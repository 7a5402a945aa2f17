#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "notifier/notifier_host.h"
#include "text/format_text.h"

namespace brantel {

// The host's log of an alert. No line of it is worth the alert: one for which there is no memory is
// left out. Without a host nothing is told, and no text is made.
class AlertLog {
 public:
  // The host, which may be null, must outlive the log.
  explicit AlertLog(NotifierHost* host) noexcept : host_(std::shared_ptr<NotifierHost>(), host) {}
  // Keeps the host, if there is one, while the log lives.
  explicit AlertLog(std::shared_ptr<NotifierHost> host) noexcept : host_(std::move(host)) {}

  // A text as it is.
  void Text(std::string_view text) const noexcept {
    if (host_) Tell(text);
  }
  void Text(std::u16string_view text) const noexcept {
    if (host_) Tell(text);
  }

  // The text of the string table with this number.
  void Line(unsigned text_id) const noexcept;

  // That text with arguments, by FormatText or by FormatInserts.
  void Format(unsigned text_id, std::initializer_list<FormatArgument> arguments) const noexcept;
  void Inserts(unsigned text_id, std::initializer_list<FormatArgument> arguments) const noexcept;

  // That text and behind it, in the same line, `quoted` in quotation marks or the number of what
  // went wrong.
  void Quoted(unsigned text_id, std::string_view quoted) const noexcept;
  void Failure(unsigned text_id, std::uint32_t number) const noexcept;

  // The text that `make` returns. For texts that take memory before they can be formatted.
  template <typename Make>
  void Made(const Make& make) const noexcept {
    if (host_)
      TellMade([](const void* maker) { return (*static_cast<const Make*>(maker))(); }, &make);
  }

 private:
  void Tell(std::string_view text) const noexcept;
  void Tell(std::u16string_view text) const noexcept;
  void TellMade(std::string (*make)(const void* maker), const void* maker) const noexcept;

  std::shared_ptr<NotifierHost> host_;
};

}  // namespace brantel
