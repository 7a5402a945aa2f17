// Alerts and dialogs by the thousand, and threads for minutes, with stand-ins for all that they go
// to; nothing may grow with the count, and no success may be false. The environment may say how
// much:
//   SOAK_SENDS     alerts of each class and protocol, 10000
//   SOAK_OPENINGS  openings of each dialog, 1000
//   SOAK_SECONDS   for which 16 threads send, 600
#include <windows.h>
#include <gtest/gtest.h>

#include <exception>
#include <iostream>

#include "tests/module/allocation_ledger.h"
#include "tests/module/loaded_module.h"

namespace {

LONG WINAPI EndAfterCrash(EXCEPTION_POINTERS* crash) {
  std::cerr << "soak_tests: exception " << std::hex << crash->ExceptionRecord->ExceptionCode
            << " at " << crash->ExceptionRecord->ExceptionAddress << std::endl;
  TerminateProcess(GetCurrentProcess(), 3);
  return EXCEPTION_CONTINUE_SEARCH;
}

}  // namespace

int main(int argument_count, char** arguments) {
  SetUnhandledExceptionFilter(EndAfterCrash);
  testing::InitGoogleTest(&argument_count, arguments);
  try {
    brantel::OpenAllocationLedger();
    brantel::ModuleFile();
  } catch (const std::exception& reason) {
    std::cerr << "soak_tests: " << reason.what() << '\n';
    return 2;
  }
  {
    // At a thread's first trace the test framework keeps handles: here, so that no test finds them.
    SCOPED_TRACE("none yet");
  }
  return RUN_ALL_TESTS();
}
