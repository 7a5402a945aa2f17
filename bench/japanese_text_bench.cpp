// EUC-JP to Shift_JIS, of a message's 100 bytes and of a large text, by us, by the C library's
// iconv with its descriptor kept, and by ICU with its converters kept.
#include <benchmark/benchmark.h>
#include <iconv.h>
#include <unicode/ucnv.h>

#include <cstdlib>
#include <random>
#include <string>
#include <string_view>

#include "text/japanese_text.h"

namespace brantel {
namespace {

constexpr std::size_t kMessage = 100;
constexpr std::size_t kLargeText = std::size_t{1} << 20U;

// Running Japanese text: hiragana, katakana and kanji, and now and then a word of ASCII.
std::string EucJpText(std::size_t size) {
  std::mt19937 random(1978);
  const auto pick = [&](unsigned first, unsigned count) {
    return static_cast<char>(first + random() % count);
  };
  std::string text;
  while (text.size() + 10 < size) {
    const auto kind = random() % 16;
    if (kind == 0) {
      text += " router7 ";
    } else if (kind < 9) {
      text += {'\xA4', pick(0xA1, 83)};
    } else if (kind < 11) {
      text += {'\xA5', pick(0xA1, 86)};
    } else {
      text += {pick(0xB0, 0x1F), pick(0xA1, 94)};
    }
  }
  text.resize(size, '.');
  return text;
}

void Convert(benchmark::State& state) {
  const std::string text = EucJpText(static_cast<std::size_t>(state.range(0)));
  for (auto _ : state) {
    benchmark::DoNotOptimize(EucJpToShiftJis(text));
  }
  state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(Convert)->Arg(kMessage)->Arg(kLargeText);

void ConvertByIconv(benchmark::State& state) {
  const std::string text = EucJpText(static_cast<std::size_t>(state.range(0)));
  const iconv_t descriptor = iconv_open("SHIFT_JIS", "EUC-JP");
  for (auto _ : state) {
    std::string converted(text.size(), '\0');
    std::string copy = text;
    char* in = copy.data();
    char* out = converted.data();
    std::size_t in_left = copy.size();
    std::size_t out_left = converted.size();
    if (iconv(descriptor, &in, &in_left, &out, &out_left) != 0) std::abort();
    converted.resize(converted.size() - out_left);
    benchmark::DoNotOptimize(converted);
  }
  iconv_close(descriptor);
  state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(ConvertByIconv)->Arg(kMessage)->Arg(kLargeText);

void ConvertByIcu(benchmark::State& state) {
  const std::string text = EucJpText(static_cast<std::size_t>(state.range(0)));
  UErrorCode error = U_ZERO_ERROR;
  UConverter* const from = ucnv_open("EUC-JP", &error);
  UConverter* const to = ucnv_open("Shift_JIS", &error);
  for (auto _ : state) {
    std::string converted(text.size() + 16, '\0');
    char* out = converted.data();
    const char* in = text.data();
    error = U_ZERO_ERROR;
    ucnv_convertEx(to, from, &out, converted.data() + converted.size(), &in,
                   text.data() + text.size(), nullptr, nullptr, nullptr, nullptr, 1, 1, &error);
    if (error > U_ZERO_ERROR) std::abort();
    converted.resize(static_cast<std::size_t>(out - converted.data()));
    benchmark::DoNotOptimize(converted);
  }
  ucnv_close(from);
  ucnv_close(to);
  state.SetBytesProcessed(state.iterations() * state.range(0));
}
BENCHMARK(ConvertByIcu)->Arg(kMessage)->Arg(kLargeText);

}  // namespace
}  // namespace brantel
