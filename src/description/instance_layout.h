#pragma once

#include <string_view>

#include "description/instance_field.h"
#include "text/guid.h"

namespace brantel {

enum class TextReader {
  kLimited,  // refuses a text whose stored length is 1024 or more
  kChunked,  // takes any length
};

enum class ShortFile {
  kTolerated,  // what is missing stays empty
  kRefused,
};

// What the instances of a class are: the magic that names the class in their files, and their
// fields.
struct InstanceLayout {
  std::string_view class_name{};
  Guid magic{};
  InstanceFields fields{};
  TextReader text_reader = TextReader::kLimited;
  ShortFile short_file = ShortFile::kTolerated;
  // What the log calls the instance "Default" when it cannot be loaded.
  unsigned default_name_id = 0;
  // The last of the three log lines of an instance that cannot be loaded.
  std::string_view load_failure_end = "\r";
};

}  // namespace brantel
