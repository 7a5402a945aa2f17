#pragma once

#include <string>
#include <vector>

#include "host/module/class_catalogue_win32.h"

namespace brantel::host {

// What is known of a module file.
struct ModuleFileState {
  std::wstring file;
  bool is_there = false;
  int bits = 0;         // of the program in it; 0 where it holds none
  std::string version;  // such as "1.0.0.0"; empty where it has none
};

ModuleFileState ExamineModuleFile(const std::wstring& file);

// A file for which classes are registered, and their names.
struct RegisteredCopy {
  std::wstring file;
  HostBits host_bits;
  std::vector<std::string> class_names;
};

// The copies of the module that are registered, each once: for hosts such as this one, and on a
// 64-bit system for those of the other kind too.
std::vector<RegisteredCopy> RegisteredCopies();

}  // namespace brantel::host
