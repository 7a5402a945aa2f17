#pragma once

#include <filesystem>
#include <string>

namespace brantel {

// A file or folder of the project, by its path from the project's root.
std::filesystem::path ProjectFile(const std::string& path);

// The whole text of such a file. Throws std::runtime_error when it cannot be read.
std::string ReadProjectFile(const std::string& path);

// The bytes of a file in tests/unit/golden, where expected texts stand that are too long for a
// test.
std::string GoldenFile(const std::string& name);

}  // namespace brantel
