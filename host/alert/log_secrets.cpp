#include "host/alert/log_secrets.h"

#include <cstddef>

#include "host/instances/field_guide.h"
#include "host/text/utf8_characters.h"

namespace brantel::host {
namespace {

// What a TAP log-in begins with, before the password.
constexpr const char* kTapLogIn = "PG1";

// NTT's line has this many characters of a password, with zeros before a shorter one.
constexpr std::size_t kNttCharacters = 4;

std::string NttPassword(std::string_view password) {
  const std::string start(FirstCharacters(password, kNttCharacters));
  return std::string(kNttCharacters - CountCharacters(start), '0') + start;
}

}  // namespace

LogSecrets::LogSecrets(const std::vector<std::string>& passwords) {
  for (const std::string& password : passwords) {
    if (password.empty()) continue;
    if (CountCharacters(password) >= kNttCharacters) places_.push_back({"", password, ""});
    places_.push_back({kTapLogIn, password, ""});
    places_.push_back({",", NttPassword(password), ","});
  }
}

std::string LogSecrets::Hide(std::string_view text) const {
  std::string hidden(text);
  for (const Place& place : places_) {
    const std::string open = place.before + place.secret + place.after;
    const std::string closed = place.before + std::string(kHiddenSecret) + place.after;
    for (std::size_t at = 0; (at = hidden.find(open, at)) != std::string::npos; at += closed.size())
      hidden.replace(at, open.size(), closed);
  }
  return hidden;
}

}  // namespace brantel::host
