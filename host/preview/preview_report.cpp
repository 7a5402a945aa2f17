#include "host/preview/preview_report.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>

#include "host/alert/log_secrets.h"
#include "host/preview/wave_length.h"
#include "host/text/control_characters.h"
#include "host/text/log_text.h"

namespace brantel::host {
namespace {

std::string Hexadecimal(std::string_view bytes) {
  constexpr std::string_view kHexDigits = "0123456789ABCDEF";
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<std::uint8_t>(c);
    text += kHexDigits[byte >> 4U];
    text += kHexDigits[byte & 0x0FU];
  }
  return text;
}

std::string IndentedLines(std::string_view text) {
  std::string lines;
  while (!text.empty()) {
    const std::size_t line_feed = text.find('\n');
    const std::string_view line =
        text.substr(0, line_feed == std::string_view::npos ? line_feed : line_feed + 1);
    lines += "    " + ShowControlCharacters(line) + "\n";
    text.remove_prefix(line.size());
  }
  return lines;
}

// The bytes with each of them as a character (UTF-8), and back again. Where a protocol takes a few
// bytes of a password these need be no characters of the code page.
std::string AsCharacters(std::string_view bytes) {
  constexpr std::uint8_t kContinuation = 0x80;
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<std::uint8_t>(c);
    if (byte < kContinuation) {
      text += c;
    } else {
      text += static_cast<char>(0xC0U | (byte >> 6U));
      text += static_cast<char>(kContinuation | (byte & 0x3FU));
    }
  }
  return text;
}
std::string AsBytes(std::string_view characters) {
  std::string bytes;
  for (std::size_t i = 0; i < characters.size(); ++i) {
    const auto first = static_cast<std::uint8_t>(characters[i]);
    if (first < 0x80) {
      bytes += characters[i];
    } else {
      const auto second = static_cast<std::uint8_t>(characters[++i]);
      bytes += static_cast<char>(((first & 0x03U) << 6U) | (second & 0x3FU));
    }
  }
  return bytes;
}

template <typename Shown>
LogSecrets SecretsAs(const std::vector<std::string>& stored_passwords, const Shown& shown) {
  std::vector<std::string> passwords;
  passwords.reserve(stored_passwords.size());
  for (const std::string& password : stored_passwords)
    passwords.push_back(shown(password));
  return LogSecrets(passwords);
}

std::string PartText(const PreviewPart& part) {
  const std::string words = part.words.empty() ? "" : ": " + ShowControlCharacters(part.words);
  return part.what + words + "\n" + IndentedLines(part.text);
}

Record PartRecord(const PreviewPart& part) {
  return {{"part", part.what},
          {"words", part.words},
          {"bytes", Hexadecimal(part.bytes)},
          {"hidden", part.hides_secret}};
}

std::string TimeText(const DeliveryTime& time) {
  const std::string beside = time.beside_least.empty() ? "" : " and " + time.beside_least;
  const std::string least = time.least == 0 ? "a few ms" : SecondsText(time.least);
  return "time\n    least  " + least + beside +
         ", when every station answers at once\n    usual  " + time.usual + "\n    most   " +
         time.most + "\n";
}

Record TimeRecord(const DeliveryTime& time) {
  return {{"part", "time"},
          {"least_milliseconds", time.least},
          {"beside_least", time.beside_least},
          {"usual", time.usual},
          {"most", time.most}};
}

}  // namespace

void HideSecrets(Preview& preview, const std::vector<std::string>& stored_passwords,
                 const TextConversions& texts) {
  const LogSecrets in_bytes = SecretsAs(stored_passwords, AsCharacters);
  const LogSecrets in_text = SecretsAs(stored_passwords, texts.to_utf8);
  for (PreviewPart& part : preview.parts) {
    part.words = in_text.Hide(part.words);
    std::string hidden = AsBytes(in_bytes.Hide(AsCharacters(part.bytes)));
    if (hidden == part.bytes) continue;
    part.bytes = std::move(hidden);
    part.text = texts.to_utf8(part.bytes);
    part.hides_secret = true;
    AddWords(part, "the password is hidden");
  }
  preview.log = in_text.Hide(preview.log);
}

void WritePreview(const ReportWriter& report, const Preview& preview) {
  for (const PreviewPart& part : preview.parts)
    report.Entry(PartText(part), PartRecord(part));
  if (Failed(preview.result)) return;
  if (preview.parts.empty()) {
    const std::string words = "it is no failure, and the log says: " + LogWords(preview);
    report.Entry("Nothing goes out: " + words + "\n", {{"part", "nothing"}, {"words", words}});
    return;
  }
  report.Entry(TimeText(preview.time), TimeRecord(preview.time));
}

std::string LogWords(const Preview& preview) {
  std::string words = LogText().Render(preview.log);
  words.erase(words.find_last_not_of(" \n") + 1);
  return words;
}

}  // namespace brantel::host
