#pragma once

#include <ostream>
#include <string>
#include <string_view>

#include "sim/timeline.h"

namespace brantel::sim {

// What happens, a line for each event: the time in seconds, who, what.
class Transcript {
 public:
  // Both must outlive the object.
  Transcript(std::ostream& stream, const Timeline& timeline)
      : stream_(stream), timeline_(timeline) {}

  void Note(std::string_view who, std::string_view what);

  // The same with bytes in quotation marks behind it, control characters as \r, \n or \xHH.
  void NoteBytes(std::string_view who, std::string_view bytes);

 private:
  std::ostream& stream_;
  const Timeline& timeline_;
};

// Bytes in quotation marks, as a transcript has them.
std::string Quoted(std::string_view bytes);

}  // namespace brantel::sim
