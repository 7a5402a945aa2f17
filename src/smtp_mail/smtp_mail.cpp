#include "smtp_mail/smtp_mail.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "notifier/instance_loading.h"
#include "notifier/sockets_binding.h"
#include "smtp_mail/smtp_mail_description.h"
#include "text/leading_number.h"
#include "text/string_table.h"
#include "text/text_end.h"

namespace brantel {
namespace {

// Milliseconds for which each receive waits. Read for every alert, and put where operators find it
// when it is missing.
std::uint32_t ReadTimeout(SettingsStore& settings) {
  constexpr std::int32_t kShortest = 100;
  const std::string path = LoadText(text_id::kSmtpMailKey);
  const std::string name = LoadText(text_id::kTimeoutSetting);

  std::string timeout(kDefaultMailTimeout);
  if (const auto key = settings.Open(path, SettingsAccess::kRead)) {
    timeout = ReadSetting(*key, name);
    if (timeout.empty()) {
      timeout = kDefaultMailTimeout;
      const auto writable_key = settings.Open(path, SettingsAccess::kWrite);
      if (writable_key) WriteSetting(*writable_key, name, timeout);
    }
  }
  return static_cast<std::uint32_t>(std::max(LeadingNumber(timeout), kShortest));
}

// Lets the host fill in its variables. The gateway and the recipients are deliberately left alone.
Result Expand(Instance& instance, NotifierHost& host) {
  using namespace smtp_mail_field;
  for (const std::size_t field : {kFrom, kSubject, kMessage}) {
    std::string text = instance.text(field);
    const Result expanded = host.ExpandMessage(text);
    if (Failed(expanded)) return expanded;
    instance.set_text(field, std::move(text));
  }
  return kOk;
}

Result ToResult(int session_result) {
  constexpr int kMailboxUnavailable = 550;
  if (session_result == 0) return kOk;
  return session_result == kMailboxUnavailable ? kRecipientRefused : kFail;
}

}  // namespace

std::shared_ptr<NotifierHost> SmtpMail::Initialize(const HostQuery& query_host) {
  return BindWithSockets(sockets_, query_host);
}

void SmtpMail::Shutdown() noexcept {
  sockets_.Stop();
}

Result SmtpMail::Send(const InstanceArgument& argument, NotifierHost* host) {
  using namespace smtp_mail_field;
  auto instance = LoadInstanceForAlert(files_, kSMTPMail.instances, argument, host);
  if (!instance) return kFail;
  const std::uint32_t timeout = ReadTimeout(settings_);
  std::optional<SocketsInUse> sockets;
  if (host != nullptr) {
    sockets.emplace(sockets_);
    const Result expanded = Expand(*instance, *host);
    if (Failed(expanded)) return expanded;
  }
  const MailMessage message{.to = UpToNul(instance->text(kTo)),
                            .from = UpToNul(instance->text(kFrom)),
                            .subject = UpToNul(instance->text(kSubject)),
                            .gateway = UpToNul(instance->text(kGateway)),
                            .message = UpToNul(instance->text(kMessage))};
  return ToResult(SmtpSendMessage(system_, host, message, timeout));
}

}  // namespace brantel
