#pragma once

#include <windows.h>
#include <objbase.h>

#include "host/outcome/command_failure.h"
#include "host/outcome/result_text.h"

namespace brantel::host {

// The module's classes belong into a single-threaded apartment: makes the calling thread one. It
// has a window, and with that a desktop, so what does not call the module does without.
class ComApartment {
 public:
  ComApartment() {
    const HRESULT result = CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    if (FAILED(result)) {
      throw CommandFailure(ExitCode::kFailed, "COM does not start: " + ResultText(result));
    }
  }
  ComApartment(const ComApartment&) = delete;
  ComApartment& operator=(const ComApartment&) = delete;
  ~ComApartment() { CoUninitialize(); }
};

}  // namespace brantel::host
