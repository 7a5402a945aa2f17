// Instance files of every class: whatever a file holds, reading it is harmless, and what was read
// and can be written again is read back the same.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "instance/instance_codec.h"
#include "module/class_descriptions.h"

// The first byte chooses the class, whose magic then stands before the rest.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size == 0) return 0;
  const brantel::InstanceLayout& layout =
      brantel::ClassDescriptions()[data[0] % brantel::ClassDescriptions().size()]->instances;
  const auto magic = brantel::GuidBytes(layout.magic);
  std::string file(magic.begin(), magic.end());
  file.append(data + 1, data + size);

  const auto instance = brantel::DecodeInstance(layout, file);
  if (!instance) return 0;
  const auto again = brantel::DecodeInstance(layout, brantel::EncodeInstance(layout, *instance));
  // A text that filled its 1023 bytes without a NUL is the one thing that cannot be written again.
  if (again && !(*again == *instance)) std::abort();
  return 0;
}
