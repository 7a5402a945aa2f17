#pragma once

#include <string_view>
#include <vector>

namespace brantel {

// A recipient list with commas, taken apart.
struct RecipientList {
  // The addresses behind a comma, in the order in which they are served: from last to first. One is
  // empty where commas stand at the end of the list or side by side.
  std::vector<std::string_view> behind_commas;
  // What stands before the first comma, with the blanks before that.
  std::string_view first;
  // Addresses at the list's end for which it has no room, as they stand there.
  std::string_view left_out;
};

// Takes a list apart, of which the first 511 characters are served as far as they hold whole
// addresses. The result refers to the list.
RecipientList SplitRecipients(std::string_view list);

}  // namespace brantel
