#include <windows.h>
#include <gtest/gtest.h>

#include <exception>
#include <iostream>
#include <string>

#include "tests/module/allocation_ledger.h"
#include "tests/module/loaded_module.h"
#include "tests/module/portable_executable.h"
#include "tests/module/runtime_events.h"
#include "tests/module/utf8_text.h"

namespace {

// A crash ends the program with an exit code that nobody takes for a success, and without a
// debugger that would wait for somebody.
LONG WINAPI EndAfterCrash(EXCEPTION_POINTERS* crash) {
  std::cerr << "These tests crashed: exception " << std::hex
            << crash->ExceptionRecord->ExceptionCode << " at "
            << crash->ExceptionRecord->ExceptionAddress << std::endl;
  TerminateProcess(GetCurrentProcess(), 3);
  return EXCEPTION_CONTINUE_SEARCH;
}

// Nearly every test loads the module and lets go of it. The system's libraries around it stay,
// which take most of the time of both.
void LoadLibrariesAround() {
  for (const std::string& name :
       brantel::PortableExecutable(brantel::ModuleFile()).ImportedLibraries())
    LoadLibraryA(name.c_str());
}

}  // namespace

int main(int argument_count, char** arguments) {
  SetUnhandledExceptionFilter(EndAfterCrash);
  testing::InitGoogleTest(&argument_count, arguments);
  try {
    brantel::OpenAllocationLedger();
    brantel::WatchRuntimeEvents();
    LoadLibrariesAround();
    std::cout << "Module under test: " << brantel::ToUtf8(brantel::ModuleFile()) << '\n';
  } catch (const std::exception& reason) {
    std::cerr << "These tests cannot begin: " << reason.what() << '\n';
    return 2;
  }
  {
    // At a thread's first trace the test framework starts a watcher for that thread and keeps the
    // handles of both; here, so that no test finds them among its own.
    SCOPED_TRACE("none yet");
  }
  return RUN_ALL_TESTS();
}
