// Loading an instance from its file.
#include <rapidjson/document.h>
#include <rapidjson/reader.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>

#include "bench/groups.h"
#include "bench/posix_file.h"
#include "bench/sample_beeper.h"
#include "bench/temporary_file.h"
#include "instance/byte_cursor.h"
#include "instance/instance_codec.h"

namespace brantel {
namespace {

using sample_beeper::kTexts;
constexpr std::string_view kProfileName = "settings profile";

using ReadBuffer = std::array<char, ByteCursor::kReadSize>;

std::string_view NameOf(std::size_t text) {
  return kBeeper.instances.fields[text].name;
}

std::string JsonFile() {
  std::ostringstream json;
  json << "{";
  for (std::size_t i = 0; i < kTexts.size(); ++i)
    json << '"' << NameOf(i) << "\":\"" << kTexts.at(i) << "\",";
  json << '"' << kProfileName << "\":2}";
  return json.str();
}

void LoadInstance(benchmark::State& state) {
  const TemporaryFile file(sample_beeper::File());
  for (auto _ : state) {
    const auto content = std::make_unique<PosixFile>(file.path());
    auto instance = DecodeInstance(kBeeper.instances, *content);
    benchmark::DoNotOptimize(instance);
  }
}

struct Fields {
  std::array<std::string, kTexts.size()> texts;
  std::int32_t profile = 0;
};

// The same three system calls, and each field copied from where it is known to stand.
void CopyBare(benchmark::State& state) {
  const TemporaryFile file(sample_beeper::File());
  for (auto _ : state) {
    const int handle = open(file.path(), O_RDONLY | O_CLOEXEC);
    ReadBuffer buffer;  // NOLINT(*-member-init): filled by read
    const ssize_t size = read(handle, buffer.data(), buffer.size());
    close(handle);
    Fields fields;
    const char* position = buffer.data() + 16;
    for (std::string& text : fields.texts) {
      std::uint32_t length = 0;
      std::memcpy(&length, position, sizeof length);
      text.assign(position + 4, length - 1);
      position += 4 + length;
    }
    std::memcpy(&fields.profile, position, sizeof fields.profile);
    benchmark::DoNotOptimize(size);
    benchmark::DoNotOptimize(fields);
  }
}

// The three system calls alone.
void ReadBare(benchmark::State& state) {
  const TemporaryFile file(sample_beeper::File());
  for (auto _ : state) {
    const int handle = open(file.path(), O_RDONLY | O_CLOEXEC);
    ReadBuffer buffer;  // NOLINT(*-member-init): filled by read
    benchmark::DoNotOptimize(read(handle, buffer.data(), buffer.size()));
    close(handle);
  }
}

// Reads the JSON file as ours is read, into a buffer that ends with a NUL.
void ReadJson(const TemporaryFile& file, ReadBuffer& buffer) {
  buffer.at(PosixFile(file.path()).Read(buffer)) = '\0';
}

// A document that is parsed where it was read, with all its memory there before, and its fields
// copied as ours are.
void LoadByRapidJson(benchmark::State& state) {
  using Pool = rapidjson::MemoryPoolAllocator<>;
  using Document = rapidjson::GenericDocument<rapidjson::UTF8<>, Pool, Pool>;
  const TemporaryFile file(JsonFile());
  ReadBuffer buffer{};
  std::array<char, 4096> values{};
  std::array<char, 4096> stack{};
  for (auto _ : state) {
    ReadJson(file, buffer);
    Pool value_pool(values.data(), values.size());
    Pool stack_pool(stack.data(), stack.size());
    Document document(&value_pool, stack.size() / 2, &stack_pool);
    document.ParseInsitu(buffer.data());
    Fields fields;
    for (std::size_t i = 0; i < kTexts.size(); ++i) {
      const rapidjson::Value name(rapidjson::StringRef(NameOf(i).data(), NameOf(i).size()));
      const auto& value = document.FindMember(name)->value;
      fields.texts.at(i).assign(value.GetString(), value.GetStringLength());
    }
    fields.profile = document.FindMember(kProfileName.data())->value.GetInt();
    benchmark::DoNotOptimize(fields);
  }
}

// Takes each value as it is read to the field of the name before it.
class FieldsHandler : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, FieldsHandler> {
 public:
  explicit FieldsHandler(Fields& fields) : fields_(fields) {}

  bool Key(const char* name, rapidjson::SizeType length, bool) {
    const std::string_view wanted(name, length);
    text_ = 0;
    while (text_ < kTexts.size() && NameOf(text_) != wanted)
      ++text_;
    return true;
  }
  bool String(const char* text, rapidjson::SizeType length, bool) {
    if (text_ < kTexts.size()) fields_.texts.at(text_).assign(text, length);
    return true;
  }
  bool Uint(unsigned number) {
    fields_.profile = static_cast<std::int32_t>(number);
    return true;
  }
  bool Default() { return true; }

 private:
  Fields& fields_;
  std::size_t text_ = 0;
};

// The same without a document.
void LoadByRapidJsonReader(benchmark::State& state) {
  const TemporaryFile file(JsonFile());
  ReadBuffer buffer{};
  rapidjson::Reader reader;
  for (auto _ : state) {
    ReadJson(file, buffer);
    Fields fields;
    FieldsHandler handler(fields);
    rapidjson::InsituStringStream text(buffer.data());
    if (!reader.Parse<rapidjson::kParseInsituFlag>(text, handler)) std::abort();
    benchmark::DoNotOptimize(fields);
  }
}

}  // namespace

std::vector<Group> Groups() {
  return {{.title = "Loading an instance of seven fields",
           .rows = {{"ours", LoadInstance},
                    {"bare floor", CopyBare},
                    {"the system calls alone", ReadBare},
                    {"RapidJSON, in place, memory kept", LoadByRapidJson},
                    {"RapidJSON, in place, no document", LoadByRapidJsonReader}}}};
}

}  // namespace brantel
