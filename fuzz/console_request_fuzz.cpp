// Whatever a client asks the console for: target, fields and body. What changes something needs the
// token; a page has the marks of HTML that its template has, whatever it shows; no file is written
// beside the instances'.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "fuzz/fuzz_input.h"
#include "host/console/console.h"
#include "tests/unit/host/console/fake_console_backend.h"

namespace brantel::host {
namespace {

constexpr const char* kOwnHost = "127.0.0.1:8080";
constexpr const char* kOwnOrigin = "http://127.0.0.1:8080";

void FillWithSome(FakeConsoleBackend& backend) {
  backend.AddInstance("Sound", "Siren", "C:\\alarm.wav");
  backend.AddInstance("Beeper", "Night", "5550100");
  backend.AddInstance("Pager", "Centre", "word");
  backend.AddInstance("WinPopup", "Door", "<b>\"&'");
  backend.journal = {{.id = "{1}", .class_name = "Sound", .instance = "C:\\alerts\\Siren"}};
  backend.sends["s"] = {.instance = "Siren", .class_name = "Sound", .event = "trap"};
}

void CheckNames(const FakeConsoleBackend& backend) {
  for (const auto& [path, content] : backend.instance_files.files) {
    const bool is_aside = path.starts_with(FakeConsoleBackend::kFolder + "\\notifyhost.deleted\\");
    const std::size_t slash = path.rfind('\\');
    Require(is_aside || path.substr(0, slash) == FakeConsoleBackend::kFolder);
    Require(backend.instance_files.IsValidName(path.substr(slash + 1)));
  }
}

void CheckResponse(const HttpResponse& response) {
  Require(response.status >= 200 && response.status < 600);
  Require(response.Field("X-Content-Type-Options") == "nosniff");
  for (const HttpField& field : response.fields)
    Require(field.value.find_first_of("\r\n") == std::string::npos);
  if (response.Field("Content-Type").starts_with("text/html"))
    Require(response.Field("Content-Security-Policy").starts_with("default-src 'none'"));
  if (response.stream) Require(response.stream->Poll().has_value());
}

std::string Between(const std::string& text, std::string_view before) {
  const std::size_t begin = text.find(before);
  Require(begin != std::string::npos);
  return text.substr(begin + before.size(), 32);
}

}  // namespace
}  // namespace brantel::host

// The first byte says what the request has right: its host, origin, token and method, and whether
// it is about the module's pages. Target and body follow.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace brantel::host;
  using brantel::Require;
  brantel::FuzzInput input(std::string_view(reinterpret_cast<const char*>(data), size));
  const unsigned rights = input.Byte();
  FakeConsoleBackend backend;
  FillWithSome(backend);
  FakeConsoleSystem system;
  Console console(backend, system, {{kOwnHost}, "C:\\alerts"}, nullptr, nullptr);
  const HttpRequest ask{"GET", "/instances/Siren", {{"Host", kOwnHost}}};
  const std::string token = Between(console.Handle(ask).body, R"(name="token" value=")");
  const HttpRequest framed{"GET", "/add/Beeper", {{"Host", kOwnHost}}};
  const std::string frame = Between(console.Handle(framed).body, "src=\"/frame/");

  HttpRequest request{.method = (rights & 8U) != 0 ? "POST" : "GET",
                      .target = std::string(input.Field())};
  if ((rights & 16U) != 0) request.target = "/frame/" + frame + request.target;
  request.body = input.Field();
  if ((rights & 4U) != 0) request.body += "&token=" + token;
  request.fields = {{"Host", (rights & 1U) != 0 ? kOwnHost : std::string(input.Field())},
                    {"Origin", (rights & 2U) != 0 ? kOwnOrigin : std::string(input.Field())},
                    {"Content-Type", "application/x-www-form-urlencoded"},
                    {"Cookie", std::string(input.Field())}};
  const auto before = backend.instance_files.files;
  CheckResponse(console.Handle(request));
  CheckNames(backend);
  const bool knows_token = request.body.find(token) != std::string::npos ||
                           request.target.find(frame) != std::string::npos;
  if (!knows_token || (rights & 1U) == 0 || request.method == "GET")
    Require(backend.instance_files.files == before && backend.orders.empty());
  return 0;
}
