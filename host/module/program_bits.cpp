#include "host/module/program_bits.h"

#include <cstdint>

namespace brantel::host {
namespace {

// Of the headers of Windows programs (PE): where the number stands that says where the second one
// begins, and with what that begins before the machine's number.
constexpr std::size_t kHeaderPlace = 0x3C;
constexpr std::string_view kSignature{"PE\0\0", 4};
constexpr std::uint32_t kMachineX86 = 0x014C;
constexpr std::uint32_t kMachineX64 = 0x8664;

// The little-endian number of so many bytes; 0 where the bytes end before.
std::uint32_t NumberAt(std::string_view bytes, std::size_t place, unsigned size) {
  if (place > bytes.size() || bytes.size() - place < size) return 0;
  std::uint32_t number = 0;
  for (unsigned i = size; i > 0; --i)
    number = number << 8U | static_cast<std::uint8_t>(bytes[place + i - 1]);
  return number;
}

}  // namespace

int ProgramBits(std::string_view start) {
  if (!start.starts_with("MZ")) return 0;
  const std::size_t header = NumberAt(start, kHeaderPlace, 4);
  if (header >= start.size() || !start.substr(header).starts_with(kSignature)) return 0;
  const std::uint32_t machine = NumberAt(start, header + kSignature.size(), 2);
  if (machine == kMachineX86) return 32;
  return machine == kMachineX64 ? 64 : 0;
}

}  // namespace brantel::host
