#pragma once

namespace brantel {

// The system's sockets library, which each user of it in the process starts and stops for itself.
class SocketsLibrary {
 public:
  virtual ~SocketsLibrary() = default;

  virtual bool Start() = 0;

  // Takes back one successful Start.
  virtual void Stop() noexcept = 0;
};

}  // namespace brantel
