#pragma once

#include <functional>

namespace brantel::host {

// Has a thread of the system's call the function, which may wait for long. What it throws is lost.
void CallInThread(std::function<void()> function);

}  // namespace brantel::host
