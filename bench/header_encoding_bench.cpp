// A subject of 60 bytes with three accented letters, encoded by us, by Poco and by GMime.
#include <Poco/Net/MailMessage.h>
#include <gmime/gmime.h>

#include <string>

#include "bench/groups.h"
#include "smtp_mail/message/header_encoding.h"

namespace brantel {
namespace {

// The same text in the code page and, for the libraries, in UTF-8.
constexpr const char* kSubject =
    "The system M\xFCnchen has lost its link to D\xFCsseldorf, caf\xE9 of.";
constexpr const char* kUtf8Subject =
    "The system M\xC3\xBCnchen has lost its link to D\xC3\xBCsseldorf, caf\xC3\xA9 of.";

void EncodeHeader(benchmark::State& state) {
  const std::string subject = kSubject;
  for (auto _ : state) {
    benchmark::DoNotOptimize(EncodeHeaderText(subject, 1252, 512));
  }
}

void EncodeByPoco(benchmark::State& state) {
  const std::string subject = kUtf8Subject;
  for (auto _ : state) {
    benchmark::DoNotOptimize(Poco::Net::MailMessage::encodeWord(subject));
  }
}

// Told the character set, or left to find the least one that will do.
void EncodeByGMime(benchmark::State& state, const char* charset) {
  g_mime_init();
  for (auto _ : state) {
    char* const encoded = g_mime_utils_header_encode_text(nullptr, kUtf8Subject, charset);
    benchmark::DoNotOptimize(encoded);
    g_free(encoded);
  }
}

}  // namespace

std::vector<Group> Groups() {
  return {{.title = "Encoding a subject of 60 bytes",
           .rows = {{"ours", EncodeHeader},
                    {"Poco", EncodeByPoco},
                    {"GMime, told UTF-8",
                     [](benchmark::State& state) { EncodeByGMime(state, "utf-8"); }},
                    {"GMime, which finds the set",
                     [](benchmark::State& state) { EncodeByGMime(state, nullptr); }}}}};
}

}  // namespace brantel
