#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/watch/probe_result.h"
#include "host/watch/watch_plan.h"

namespace brantel::host {

// What a look-up of a name came to.
struct NameAnswer {
  std::vector<std::string> addresses{};
  std::string failure{};  // why there are none
};

// Looks a name up, however long that takes. Any thread may call it, and several at once.
using NameLookup = std::function<NameAnswer(const std::string& name)>;

NameAnswer LookUpBySystem(const std::string& name);

// Tries to reach services, any number at once, and calls back what came of each. All of that, and
// what is posted to it, is done by the thread that runs it.
class NetworkLoop {
 public:
  using ResultTaker = std::function<void(const ProbeResult& result)>;

  explicit NetworkLoop(NameLookup look_up = LookUpBySystem);
  NetworkLoop(const NetworkLoop&) = delete;
  NetworkLoop& operator=(const NetworkLoop&) = delete;
  // What is under way is given up, and not called back. Look-ups are waited for.
  ~NetworkLoop();

  // Tries it by TCP or HTTP. The result comes when the request's time limit is over, at the latest.
  // A few names are looked up at once, so that one whose server does not answer delays no others.
  void Probe(const ProbeRequest& request, ResultTaker take_result);

  // Has the function called by the thread that runs the loop. Any thread may ask for that.
  void Post(std::function<void()> function);

  // Does what there is to do, and returns when some of it is done, or so much time has passed.
  void Run(std::chrono::milliseconds time);

 private:
  class Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace brantel::host
