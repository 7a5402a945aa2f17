#pragma once

#include <string>

namespace brantel {

// The folder that this test program was started from, where the programs that it starts lie too.
std::wstring TestProgramFolder();

// The value of an environment variable; empty when it is not set.
std::wstring EnvironmentText(const wchar_t* name);

}  // namespace brantel
