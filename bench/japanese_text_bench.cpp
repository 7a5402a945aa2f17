// EUC-JP to Shift_JIS, of a message's 100 bytes and of a large text: by us, by the C library's
// iconv with its descriptor kept, and by ICU with its converters kept, both into memory that is
// there; and by programs of a process each that read a file and write what they make of it to
// nowhere.
#include <fcntl.h>
#include <iconv.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unicode/ucnv.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <string_view>

#include "bench/groups.h"
#include "bench/temporary_file.h"
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

void Convert(benchmark::State& state, std::size_t size) {
  const std::string text = EucJpText(size);
  for (auto _ : state) {
    benchmark::DoNotOptimize(EucJpToShiftJis(text));
  }
}

void ConvertByIconv(benchmark::State& state, std::size_t size) {
  std::string text = EucJpText(size);
  std::string converted(size, '\0');
  const iconv_t descriptor = iconv_open("SHIFT_JIS", "EUC-JP");
  for (auto _ : state) {
    char* in = text.data();
    char* out = converted.data();
    std::size_t in_left = text.size();
    std::size_t out_left = converted.size();
    if (iconv(descriptor, &in, &in_left, &out, &out_left) != 0) std::abort();
    benchmark::DoNotOptimize(converted);
  }
  iconv_close(descriptor);
}

void ConvertByIcu(benchmark::State& state, std::size_t size) {
  const std::string text = EucJpText(size);
  std::string converted(size + 16, '\0');
  std::vector<UChar> pivot(std::size_t{8} << 10U);
  UErrorCode error = U_ZERO_ERROR;
  UConverter* const from = ucnv_open("EUC-JP", &error);
  UConverter* const to = ucnv_open("Shift_JIS", &error);
  for (auto _ : state) {
    char* out = converted.data();
    const char* in = text.data();
    UChar* pivot_begin = pivot.data();
    UChar* pivot_end = pivot.data();
    error = U_ZERO_ERROR;
    ucnv_convertEx(to, from, &out, converted.data() + converted.size(), &in,
                   text.data() + text.size(), pivot.data(), &pivot_begin, &pivot_end,
                   pivot.data() + pivot.size(), 1, 1, &error);
    if (error > U_ZERO_ERROR) std::abort();
    benchmark::DoNotOptimize(converted);
  }
  ucnv_close(from);
  ucnv_close(to);
}

// Programs

using Command = std::vector<std::string>;

std::string OwnFilter() {
  return std::filesystem::read_symlink("/proc/self/exe").replace_filename("japanese_filter");
}

// Processor time of a process that was waited for, in seconds.
double ProcessorSeconds(const rusage& usage) {
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

// Runs a program on a file, and tells what processor time it took.
double Run(Command command, const char* in, const char* out) {
  std::vector<char*> arguments;
  for (std::string& word : command)
    arguments.push_back(word.data());
  arguments.push_back(nullptr);
  posix_spawn_file_actions_t streams;
  posix_spawn_file_actions_init(&streams);
  posix_spawn_file_actions_addopen(&streams, STDIN_FILENO, in, O_RDONLY, 0);
  posix_spawn_file_actions_addopen(&streams, STDOUT_FILENO, out, O_WRONLY | O_TRUNC, 0);
  pid_t process = 0;
  if (posix_spawnp(&process, arguments[0], &streams, nullptr, arguments.data(), environ) != 0) {
    std::abort();
  }
  posix_spawn_file_actions_destroy(&streams);
  rusage usage{};
  int status = 0;
  if (wait4(process, &status, 0, &usage) != process || status != 0) std::abort();
  return ProcessorSeconds(usage);
}

// What a program makes of a text.
std::string Filtered(const Command& command, const std::string& text) {
  const TemporaryFile in(text);
  const TemporaryFile out("");
  Run(command, in.path(), out.path());
  std::ifstream file(out.path(), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void ConvertByProgram(benchmark::State& state, const Command& command, std::size_t size) {
  const std::string text = EucJpText(size);
  if (Filtered(command, text) != EucJpToShiftJis(text)) {
    state.SkipWithError("it makes something else of the text");
    return;
  }
  const TemporaryFile file(text);
  for (auto _ : state) {
    state.SetIterationTime(Run(command, file.path(), "/dev/null"));
  }
}

// Groups

Group InProcess(const std::string& title, std::size_t size) {
  const auto of_size = [size](auto convert) {
    return [size, convert](benchmark::State& state) { convert(state, size); };
  };
  return {.title = title,
          .rows = {{"ours", of_size(Convert)},
                   {"iconv, descriptor and memory kept", of_size(ConvertByIconv)},
                   {"ICU, converters and memory kept", of_size(ConvertByIcu)}}};
}

Group ByPrograms(const std::string& title, std::size_t size) {
  const auto program = [size](const Command& command) {
    return [size, command](benchmark::State& state) { ConvertByProgram(state, command, size); };
  };
  // Told both encodings, and to leave MIME and half-width katakana alone.
  return {.title = title,
          .rows = {{"ours, in a program", program({OwnFilter()})},
                   {"nkf", program({"nkf", "-E", "-s", "-x", "-m0"})},
                   {"iconv", program({"iconv", "-f", "EUC-JP", "-t", "SHIFT_JIS"})}},
          .timing = Timing::kOwn};
}

}  // namespace

std::vector<Group> Groups() {
  return {InProcess("Converting 100 bytes of Japanese text", kMessage),
          InProcess("Converting 1 MB of Japanese text", kLargeText),
          ByPrograms("Converting a file of 1 MB of Japanese text", kLargeText),
          ByPrograms("Converting an empty file, which is starting a program", 0)};
}

}  // namespace brantel
