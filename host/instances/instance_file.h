#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "description/instance_layout.h"
#include "instance/byte_source.h"
#include "instance/instance_codec.h"

namespace brantel::host {

// What a file turned out to hold. Texts, those of the instance too, are UTF-8.
struct InstanceFile {
  std::string name{};                      // the file's, which is also the instance's
  const InstanceLayout* layout = nullptr;  // of the class whose magic it has, if of any
  std::optional<Instance> instance{};      // what the class's notifier reads, if it reads the file
  std::optional<Instance> stored{};        // the same with the texts as they are stored
  std::string fault{};  // what is wrong with it, as "is no instance", if something is
};

// Puts a text of an instance file, which is in the system's code page, into UTF-8.
using CodePageDecoder = std::string (*)(std::string_view text);

// Finds out what a file with this name and these bytes holds, and reads no further than its class's
// notifier does. A file that the notifier reads although it is damaged has both an instance and a
// fault. What `content` throws goes through.
InstanceFile ExamineInstanceFile(std::string name, ByteSource& content, CodePageDecoder decode);

// Puts a UTF-8 text into UTF-16.
using Utf16Decoder = std::u16string (*)(std::string_view text);

// Throws CommandFailure when no instance can be kept in a file named so, since its name would lead
// elsewhere or cannot be a file's.
void CheckInstanceFileName(const std::string& file, Utf16Decoder decode);

}  // namespace brantel::host
