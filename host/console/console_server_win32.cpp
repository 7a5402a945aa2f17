#include "host/console/console_server_win32.h"

#include <algorithm>
#include <chrono>
#include <stdexcept>

#include "host/console/console.h"
#include "host/console/disk_console_backend_win32.h"
#include "host/console/http_server.h"
#include "host/console/key_derivation_win32.h"
#include "host/console/password_record.h"
#include "host/outcome/command_failure.h"
#include "host/system/com_apartment_win32.h"
#include "host/system/unique_text_win32.h"
#include "host/text/letter_case.h"
#include "system/windows/handle_win32.h"
#include "system/windows/utf8_text_win32.h"

namespace brantel::host {
namespace {

class WindowsConsoleSystem final : public ConsoleSystem {
 public:
  std::string RandomText() override {
    std::string digits;
    for (const char c : ToUtf8(UniqueText())) {
      if (c != '{' && c != '}' && c != '-') digits += LowerCase(c);
    }
    return digits;
  }

  [[nodiscard]] double Now() const override {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
  }
};

ConsoleSessions::PasswordCheck CheckOf(const std::optional<std::string>& record_text) {
  if (!record_text) return nullptr;
  const auto record = PasswordRecord::Parse(*record_text);
  if (!record) {
    throw CommandFailure(ExitCode::kWrongUsage,
                         "the password file holds no password; --set-password makes one");
  }
  return [record](std::string_view password) { return record->Matches(password, DeriveKey); };
}

std::string UrlOf(const std::string& address, std::uint16_t port) {
  const bool is_ipv6 = address.find(':') != std::string::npos;
  return "http://" + (is_ipv6 ? "[" + address + "]" : address) + ":" + std::to_string(port) + "/";
}

}  // namespace

class ConsoleServer::Impl {
 public:
  explicit Impl(ConsoleSetup setup)
      : setup_(std::move(setup)),
        check_(CheckOf(setup_.password_record)),
        server_(Listen()),
        url_(UrlOf(setup_.address, server_->port())),
        thread_(CreateThread(nullptr, 0, RunThread, this, 0, nullptr)) {
    if (!thread_) throw CommandFailure(ExitCode::kFailed, "no thread can be started");
  }
  Impl(const Impl&) = delete;
  Impl& operator=(const Impl&) = delete;
  ~Impl() {
    server_->Stop();
    WaitForSingleObject(thread_.get(), INFINITE);
  }

  [[nodiscard]] const std::string& url() const { return url_; }
  [[nodiscard]] HANDLE thread() const { return thread_.get(); }
  [[nodiscard]] const std::string& failure() const { return failure_; }

 private:
  std::unique_ptr<HttpServer> Listen() {
    try {
      return std::make_unique<HttpServer>(
          setup_.address, setup_.port, ServerLimits(),
          [this](const HttpRequest& request) { return console_->Handle(request); });
    } catch (const std::runtime_error& error) {
      throw CommandFailure(ExitCode::kFailed, error.what());
    }
  }

  static DWORD WINAPI RunThread(void* server) {
    static_cast<Impl*>(server)->Run();
    return 0;
  }

  void Run() noexcept {
    try {
      const ComApartment apartment;
      WindowsConsoleSystem system;
      DiskConsoleBackend backend(setup_.sends);
      ConsoleOptions options{HostNames(setup_.address, server_->port()),
                             ToUtf8(setup_.sends.directory), setup_.shows_secrets, setup_.notice};
      std::ranges::copy(setup_.further_host_names, std::back_inserter(options.host_names));
      console_ =
          std::make_unique<Console>(backend, system, std::move(options), check_, setup_.watched);
      server_->Run();
      console_.reset();
    } catch (const std::exception& error) {
      failure_ = error.what();
    }
  }

  const ConsoleSetup setup_;
  const ConsoleSessions::PasswordCheck check_;
  std::unique_ptr<Console> console_;
  std::unique_ptr<HttpServer> server_;
  const std::string url_;
  std::string failure_;
  const Handle thread_;  // last: it uses the rest
};

ConsoleServer::ConsoleServer(ConsoleSetup setup)
    : impl_(std::make_unique<Impl>(std::move(setup))) {}

ConsoleServer::~ConsoleServer() = default;

const std::string& ConsoleServer::address() const {
  return impl_->url();
}

HANDLE ConsoleServer::ended() const {
  return impl_->thread();
}

const std::string& ConsoleServer::failure() const {
  return impl_->failure();
}

}  // namespace brantel::host
