#pragma once

#include <string>

namespace CLI {
class App;
}

namespace brantel::host {

// Arguments that several commands take: each makes `parser` fill in a text, which must outlive it.
void DeclareClass(CLI::App& parser, std::string& class_name);
void DeclareDirectory(CLI::App& parser, std::string& directory);

// A file that has to have a name.
void DeclareFile(CLI::App& parser, std::string& file, const std::string& description);

}  // namespace brantel::host
