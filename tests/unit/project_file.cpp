#include "tests/unit/project_file.h"

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace brantel {

std::filesystem::path ProjectFile(const std::string& path) {
  return std::filesystem::path(PROJECT_DIR) / path;
}

std::string ReadProjectFile(const std::string& path) {
  std::ifstream file(ProjectFile(path), std::ios::binary);
  if (!file) throw std::runtime_error("cannot read " + path);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string GoldenFile(const std::string& name) {
  return ReadProjectFile("tests/unit/golden/" + name);
}

}  // namespace brantel
