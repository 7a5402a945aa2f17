#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace brantel::host {

// Hides passwords in the log of an alert, which has what is sent and what comes back. A password of
// four characters or more is hidden wherever it stands, a shorter one where paging protocols put
// it: "1" by itself is not worth a log without ones. Text is UTF-8.
class LogSecrets {
 public:
  LogSecrets() = default;
  explicit LogSecrets(const std::vector<std::string>& passwords);

  // The text with what is secret in it replaced. A password that comes in two texts is not seen.
  [[nodiscard]] std::string Hide(std::string_view text) const;

 private:
  struct Place {
    std::string before;
    std::string secret;
    std::string after;
  };

  std::vector<Place> places_;
};

}  // namespace brantel::host
