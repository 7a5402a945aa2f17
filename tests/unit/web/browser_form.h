#pragma once

#include <map>
#include <string>
#include <string_view>

namespace brantel {

// What a browser posts for the first form of a page, as application/x-www-form-urlencoded in the
// page's own bytes: its fields in their order, without those that are disabled or have no name, and
// of radio buttons the checked one. `typed` is what the operator types into inputs that the page
// left without a value. Throws std::runtime_error where the page has no form.
std::string PostedForm(std::string_view page, const std::map<std::string, std::string>& typed = {});

}  // namespace brantel
