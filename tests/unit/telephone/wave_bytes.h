#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <ostream>
#include <span>
#include <string>
#include <vector>

namespace brantel {

// Words in this machine's order, which is that of RIFF files too.
inline void StoreWord(std::span<std::byte> block, std::size_t offset, std::uint32_t word) {
  std::memcpy(block.subspan(offset, sizeof word).data(), &word, sizeof word);
}

inline std::uint32_t LoadWord(std::span<const std::byte> block, std::size_t offset) {
  std::uint32_t word = 0;
  std::memcpy(&word, block.subspan(offset, sizeof word).data(), sizeof word);
  return word;
}

inline std::string RiffNumber(std::size_t value) {
  std::string bytes(4, '\0');
  StoreWord(std::as_writable_bytes(std::span<char>(bytes)), 0, static_cast<std::uint32_t>(value));
  return bytes;
}

inline std::string RiffChunk(const std::string& name, const std::string& content) {
  return name + RiffNumber(content.size()) + content + std::string(content.size() % 2, '\0');
}

inline std::string RiffForm(const std::string& chunks) {
  return RiffChunk("RIFF", "WAVE" + chunks);
}

// PCM, one channel, 8000 samples a second, 8 bits each.
inline const std::string kWaveFormat("\1\0\1\0\x40\x1F\0\0\x40\x1F\0\0\1\0\x08\0", 16);

inline std::string WaveBytes(const std::string& samples, const std::string& format = kWaveFormat) {
  return RiffForm(RiffChunk("fmt ", format) + RiffChunk("data", samples));
}

// A file that is no playable wave, and what the log says of it.
struct MalformedWave {
  std::string name;
  std::string bytes;
  std::string text;
};

inline std::ostream& operator<<(std::ostream& out, const MalformedWave& wave) {
  return out << wave.name;
}

inline std::vector<MalformedWave> MalformedWaves() {
  const std::string no_form = "Failed descend type\r\n";
  const std::string no_format = "Failed descend chkid fmt\r\n";
  const std::string no_memory_for_format = "Failed allocate\r\n";
  const std::string format_cut = "Failed read\r\n";
  const std::string no_data = "Failed descend chkid data\r\n";
  const std::string data_empty = "Failed size subchunk\r\n";
  const std::string no_memory_for_data = "Failed alloc memory data\r\n";
  const std::string data_cut = "Failed read data subchunk\r\n";
  const std::string bad_format = "The format is not supported.\r\n";

  const std::string format = RiffChunk("fmt ", kWaveFormat);
  const std::string data = RiffChunk("data", "abcdefgh");
  const std::string good = RiffForm(format + data);
  // A chunk whose header has another size than its content.
  const auto lying = [](const std::string& name, std::size_t size, const std::string& content) {
    return name + RiffNumber(size) + content;
  };
  // A form whose size does not come to light, since it is larger than the file.
  const auto endless = [](const std::string& chunks) {
    return "RIFF" + RiffNumber(0x00FFFFFF) + "WAVE" + chunks;
  };

  return {
      {"empty", "", no_form},
      {"four_bytes", good.substr(0, 4), no_form},
      {"eleven_bytes", good.substr(0, 11), no_form},
      {"text", "this is no wave file, but it is long enough for one", no_form},
      {"big_endian", "RIFX" + good.substr(4), no_form},
      {"other_form", good.substr(0, 8) + "AVI " + good.substr(12), no_form},
      {"form_in_lower_case", good.substr(0, 8) + "wave" + good.substr(12), no_form},
      {"list_instead_of_form", "LIST" + good.substr(4), no_form},
      {"form_behind_a_chunk_that_leads_back", lying("junk", 0xFFFFFFF8, good), no_form},
      {"form_behind_a_chunk_of_2_gigabytes", lying("junk", 0x7FFFFFFF, good), no_form},
      {"nothing_in_the_form", RiffForm(""), no_format},
      {"form_of_size_0", "RIFF" + RiffNumber(0) + good.substr(8), no_format},
      {"form_of_size_4", "RIFF" + RiffNumber(4) + good.substr(8), no_format},
      {"format_header_cut", good.substr(0, 19), no_format},
      {"format_missing", RiffForm(data), no_format},
      {"format_in_upper_case", RiffForm(RiffChunk("FMT ", kWaveFormat) + data), no_format},
      {"format_inside_a_list", RiffForm(RiffChunk("LIST", "INFO" + format) + data), no_format},
      {"format_behind_a_chunk_too_long", endless(lying("junk", 0x1000, "") + format + data),
       no_format},
      {"format_behind_a_chunk_that_leads_back",
       endless(lying("junk", 0xFFFFFFF8, "") + format + data), no_format},
      {"format_behind_a_chunk_that_leads_to_the_beginning",
       endless(lying("junk", 0xFFFFFFEC, "") + format + data), no_format},
      {"format_behind_a_chunk_of_negative_size",
       endless(lying("junk", 0x80000000, "") + format + data), no_format},
      {"format_behind_the_end_of_the_form",
       "RIFF" + RiffNumber(12) + "WAVE" + RiffChunk("junk", "") + format + data, no_format},
      {"format_without_content", good.substr(0, 20), format_cut},
      {"format_cut", good.substr(0, 35), format_cut},
      {"format_longer_than_the_file", endless(lying("fmt ", 1000, kWaveFormat) + data), format_cut},
      {"format_of_64_kilobytes", endless(lying("fmt ", 0x10000, kWaveFormat) + data), format_cut},
      {"format_of_2_gigabytes", endless(lying("fmt ", 0x7FFFFFFF, kWaveFormat) + data),
       no_memory_for_format},
      {"format_of_negative_size", endless(lying("fmt ", 0x80000000, kWaveFormat) + data),
       no_memory_for_format},
      {"format_of_4_gigabytes", endless(lying("fmt ", 0xFFFFFFFF, kWaveFormat) + data),
       no_memory_for_format},
      {"format_of_size_0", endless(lying("fmt ", 0, "") + data), bad_format},
      {"format_of_size_1", endless(lying("fmt ", 1, std::string("\1\0", 2)) + data), bad_format},
      {"format_without_a_rate", RiffForm(RiffChunk("fmt ", kWaveFormat.substr(0, 4)) + data),
       bad_format},
      {"format_of_odd_size_without_padding",
       endless(lying("fmt ", 15, kWaveFormat.substr(0, 15)) + data), no_data},
      {"format_that_swallows_the_data", endless(lying("fmt ", 32, kWaveFormat) + data), no_data},
      {"data_missing", RiffForm(format), no_data},
      {"data_in_upper_case", RiffForm(format + RiffChunk("DATA", "abcd")), no_data},
      {"data_before_the_format", RiffForm(data + format), no_data},
      {"data_inside_a_list", RiffForm(format + RiffChunk("LIST", "wavl" + data)), no_data},
      {"data_header_cut", good.substr(0, 42), no_data},
      {"data_behind_the_end_of_the_form", "RIFF" + RiffNumber(28) + "WAVE" + format + data,
       no_data},
      {"data_behind_a_chunk_too_long", endless(format + lying("LIST", 0x1000, "INFO") + data),
       no_data},
      {"data_behind_a_chunk_that_leads_back",
       endless(format + lying("LIST", 0xFFFFFFF8, "INFO") + data), no_data},
      {"data_behind_an_odd_chunk_without_padding", endless(format + lying("junk", 3, "abc") + data),
       no_data},
      {"data_of_size_0", RiffForm(format + RiffChunk("data", "")), data_empty},
      {"data_of_size_0_with_samples", endless(format + lying("data", 0, "abcdefgh")), data_empty},
      {"data_of_size_0_before_other_data", RiffForm(format + RiffChunk("data", "") + data),
       data_empty},
      {"data_without_content", good.substr(0, 44), data_cut},
      {"data_cut", good.substr(0, 51), data_cut},
      {"data_one_longer_than_the_file", endless(format + lying("data", 9, "abcdefgh")), data_cut},
      {"data_of_a_megabyte", endless(format + lying("data", 0x100000, "abcdefgh")), data_cut},
      {"data_of_2_gigabytes", endless(format + lying("data", 0x7FFFFFFF, "abcdefgh")),
       no_memory_for_data},
      {"data_of_negative_size", endless(format + lying("data", 0x80000000, "abcdefgh")),
       no_memory_for_data},
      {"data_of_4_gigabytes", endless(format + lying("data", 0xFFFFFFFF, "abcdefgh")),
       no_memory_for_data},
  };
}

}  // namespace brantel
