#pragma once

#include <functional>

#include "host/watch/network_loop.h"
#include "host/watch/watch.h"

namespace brantel::host {

// What a watch needs of the computer that it runs on, beside the network.
class WatchSurroundings {
 public:
  virtual ~WatchSurroundings() = default;

  virtual Moment Now() = 0;

  // Both may call back in any thread, and do it once.
  virtual void Ping(const ProbeRequest& request, NetworkLoop::ResultTaker take_result) = 0;
  virtual void Deliver(const AttemptOrder& order,
                       std::function<void(const AttemptResult& result)> take_result) = 0;
};

// Does what a watch says is to be done, and tells it what became of that. All of it is done by the
// thread that turns it.
class WatchLoop {
 public:
  // They must outlive the object, and `surroundings` calls back no more when the loop is gone.
  WatchLoop(Watch& watch, NetworkLoop& network, WatchSurroundings& surroundings)
      : watch_(watch), network_(network), surroundings_(surroundings) {}

  // Does what is due, and waits for what comes of what has been begun, a second at most.
  void Turn();

  // Begins nothing any more, and waits for the ends of alerts that are under way, so long at most.
  void WaitForAttempts(SteadyTime time);

  // By how much a try to reach an item was later than it was due, at most.
  [[nodiscard]] SteadyTime latest_probe() const { return latest_probe_; }

 private:
  void Begin(const ProbeOrder& order, SteadyTime now);
  void Begin(const AttemptOrder& order);

  Watch& watch_;
  NetworkLoop& network_;
  WatchSurroundings& surroundings_;
  SteadyTime latest_probe_{};
};

}  // namespace brantel::host
