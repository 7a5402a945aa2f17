#pragma once

#include <string>

namespace brantel {

// Compares a file of the project with what a test has made. With the environment variable
// BRANTEL_UPDATE_TEXTS set it is written anew instead, and the test fails: it has compared nothing.
void ExpectMadeFile(const std::string& path, const std::string& made);

}  // namespace brantel
