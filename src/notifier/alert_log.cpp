#include "notifier/alert_log.h"

#include "system/exception_guard.h"
#include "text/format_inserts.h"
#include "text/string_table.h"

namespace brantel {
namespace {

template <typename Telling>
void Attempt(const Telling& tell) noexcept {
  static_cast<void>(GuardExceptions([&] {
    tell();
    return kOk;
  }));
}

}  // namespace

void AlertLog::Line(unsigned text_id) const noexcept {
  Made([&] { return LoadText(text_id); });
}

void AlertLog::Format(unsigned text_id,
                      std::initializer_list<FormatArgument> arguments) const noexcept {
  Made([&] { return FormatText(LoadText(text_id), arguments); });
}

void AlertLog::Inserts(unsigned text_id,
                       std::initializer_list<FormatArgument> arguments) const noexcept {
  Made([&] { return FormatInserts(LoadText(text_id), arguments); });
}

void AlertLog::Quoted(unsigned text_id, std::string_view quoted) const noexcept {
  Made([&] { return FormatText("%s \"%s\"\r\n", {LoadText(text_id), quoted}); });
}

void AlertLog::Failure(unsigned text_id, std::uint32_t number) const noexcept {
  Made([&] { return FormatText("%s %u\r\n", {LoadText(text_id), number}); });
}

void AlertLog::Tell(std::string_view text) const noexcept {
  Attempt([&] { host_->LogMessage(text); });
}

void AlertLog::Tell(std::u16string_view text) const noexcept {
  Attempt([&] { host_->LogMessage(text); });
}

void AlertLog::TellMade(std::string (*make)(const void* maker), const void* maker) const noexcept {
  Attempt([&] { host_->LogMessage(make(maker)); });
}

}  // namespace brantel
