#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "framework/instance_codec.h"
#include "framework/instance_layout.h"

namespace brantel::host {

// What a file turned out to hold. Texts, those of the instance too, are UTF-8.
struct InstanceFile {
  std::string name;                        // the file's, which is also the instance's
  const InstanceLayout* layout = nullptr;  // of the class whose magic it has, if of any
  std::optional<Instance> instance;        // what the class's notifier reads, if it reads the file
  std::string fault;  // what is wrong with it, as "is no instance", if something is
};

// Puts a text of an instance file, which is in the system's code page, into UTF-8.
using CodePageDecoder = std::string (*)(std::string_view text);

// Finds out what a file with this name and these bytes holds. A file that its class's notifier
// reads although it is damaged has both an instance and a fault.
InstanceFile ExamineInstanceFile(std::string name, std::string_view content,
                                 CodePageDecoder decode);

// Throws CommandFailure when no instance can be kept in a file named so, since its name would lead
// elsewhere or cannot be a file's.
void CheckInstanceFileName(const std::string& file);

}  // namespace brantel::host
