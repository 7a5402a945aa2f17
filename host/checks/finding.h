#pragma once

#include <string>
#include <string_view>

namespace brantel::host {

// In the order of their weight.
enum class Severity {
  kOk,
  kWarning,  // an alert goes out, though maybe not as it was meant
  kFailure,  // an alert fails, or reaches nobody
};

// "ok", "warning" or "failure".
std::string_view SeverityName(Severity severity);

// What is wrong with an instance, a setting or a class, and what to do about it. Texts are UTF-8.
struct Finding {
  Severity severity = Severity::kOk;
  std::string rule{};       // its name, which stays the same from version to version
  std::string subject{};    // the field or setting; empty where it is the whole
  std::string value{};      // what that holds, as far as it may be shown
  std::string complaint{};  // what is wrong, as "is no protocol"
  std::string remedy{};     // what to do, as "take TAP"

  friend bool operator==(const Finding&, const Finding&) = default;
};

}  // namespace brantel::host
