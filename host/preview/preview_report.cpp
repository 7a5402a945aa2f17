#include "host/preview/preview_report.h"

#include <cstdint>
#include <string>
#include <string_view>

#include "host/preview/wave_length.h"
#include "host/text/control_characters.h"
#include "host/text/log_text.h"

namespace brantel::host {
namespace {

std::string Hexadecimal(std::string_view bytes) {
  constexpr std::string_view kDigits = "0123456789ABCDEF";
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<std::uint8_t>(c);
    text += kDigits[byte >> 4U];
    text += kDigits[byte & 0x0FU];
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

void HideIn(PreviewPart& part, const LogSecrets& as_stored, const LogSecrets& as_text) {
  std::string bytes = as_stored.Hide(part.bytes);
  part.text = as_text.Hide(part.text);
  part.words = as_text.Hide(part.words);
  if (bytes == part.bytes) return;
  part.bytes = std::move(bytes);
  part.hides_secret = true;
  AddWords(part, "the password is hidden");
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
  return "time\n    least  " + SecondsText(time.least) + beside +
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

void HideSecrets(Preview& preview, const LogSecrets& as_stored, const LogSecrets& as_text) {
  for (PreviewPart& part : preview.parts)
    HideIn(part, as_stored, as_text);
  preview.log = as_text.Hide(preview.log);
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
