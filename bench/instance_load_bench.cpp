// Loading an instance from its file.
#include <benchmark/benchmark.h>
#include <rapidjson/document.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include "beeper/beeper_description.h"
#include "bench/posix_file.h"
#include "instance/byte_cursor.h"
#include "instance/instance_codec.h"

namespace brantel {
namespace {

constexpr std::array<const char*, 6> kTexts = {
    "+1 202 555 0123",
    "ATDT%s,,,,%s#",
    "1001",
    "1002",
    "1003",
    "%n went down at %t, last seen answering at %l; see the operator's handbook, page 12"};

using ReadBuffer = std::array<char, ByteCursor::kReadSize>;

std::string WriteTemporaryFile(const std::string& content) {
  std::string path = "/tmp/instance_load_bench_XXXXXX";
  const int file = mkstemp(path.data());
  if (file < 0) std::abort();
  close(file);
  std::ofstream(path, std::ios::binary) << content;
  return path;
}

// A file that lives as long as the benchmark.
class TemporaryFile {
 public:
  explicit TemporaryFile(const std::string& content) : path_(WriteTemporaryFile(content)) {}
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;
  ~TemporaryFile() { unlink(path_.c_str()); }

  [[nodiscard]] const char* path() const { return path_.c_str(); }

 private:
  std::string path_;
};

std::string InstanceFile() {
  Instance instance(kBeeper.instances.fields.size());
  for (std::size_t i = 0; i < kTexts.size(); ++i)
    instance.set_text(i, kTexts.at(i));
  instance.set_integer(beeper_field::kSettingsProfile, 2);
  return EncodeInstance(kBeeper.instances, instance);
}

std::string JsonFile() {
  std::ostringstream json;
  json << "{";
  for (std::size_t i = 0; i < kTexts.size(); ++i) {
    json << '"' << kBeeper.instances.fields[i].name << "\":\"" << kTexts.at(i) << "\",";
  }
  json << "\"settings profile\":2}";
  return json.str();
}

void LoadInstance(benchmark::State& state) {
  const TemporaryFile file(InstanceFile());
  for (auto _ : state) {
    const auto content = std::make_unique<PosixFile>(file.path());
    auto instance = DecodeInstance(kBeeper.instances, *content);
    benchmark::DoNotOptimize(instance);
  }
}
BENCHMARK(LoadInstance);

// The same three system calls, and each field copied from where it is known to stand.
void BareFloor(benchmark::State& state) {
  const TemporaryFile file(InstanceFile());
  struct Fields {
    std::array<std::string, kTexts.size()> texts;
    std::int32_t profile;
  };
  for (auto _ : state) {
    const int handle = open(file.path(), O_RDONLY | O_CLOEXEC);
    ReadBuffer buffer;  // NOLINT(*-member-init): filled by read
    const ssize_t size = read(handle, buffer.data(), buffer.size());
    close(handle);
    Fields fields;
    const char* position = buffer.data() + 16;
    for (std::size_t i = 0; i < kTexts.size(); ++i) {
      std::uint32_t length = 0;
      std::memcpy(&length, position, sizeof length);
      fields.texts.at(i).assign(position + 4, length - 1);
      position += 4 + length;
    }
    std::memcpy(&fields.profile, position, sizeof fields.profile);
    benchmark::DoNotOptimize(size);
    benchmark::DoNotOptimize(fields);
  }
}
BENCHMARK(BareFloor);

// The same fields from a JSON file by RapidJSON, read with the same three system calls.
void LoadByRapidJson(benchmark::State& state) {
  const TemporaryFile file(JsonFile());
  for (auto _ : state) {
    PosixFile content(file.path());
    ReadBuffer buffer;  // NOLINT(*-member-init): filled by Read
    const std::size_t size = content.Read(buffer);
    rapidjson::Document document;
    document.Parse(buffer.data(), size);
    std::array<std::string, kTexts.size()> texts;
    for (std::size_t i = 0; i < kTexts.size(); ++i) {
      const std::string_view name = kBeeper.instances.fields[i].name;
      const auto& value = document[name.data()];
      texts.at(i).assign(value.GetString(), value.GetStringLength());
    }
    int profile = document["settings profile"].GetInt();
    benchmark::DoNotOptimize(texts);
    benchmark::DoNotOptimize(profile);
  }
}
BENCHMARK(LoadByRapidJson);

}  // namespace
}  // namespace brantel
