#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace brantel {

using Words = std::vector<std::string>;

// What went otherwise than a dialogue says: where, what was expected, what came.
class DialogueMismatch : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The words of a line of a dialogue. A word with blanks or control characters stands in quotation
// marks, in which \r \n \t \\ \" and \xHH mean what they do in C; "x"*100 is a hundred of them.
// Throws DialogueMismatch where a line cannot be read.
Words ReadWords(std::string_view line);

// Words as a line of a dialogue has them.
std::string JoinWords(const Words& words);

}  // namespace brantel
