#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "host/preview/paper_clock.h"
#include "host/preview/preview_part.h"
#include "port/serial_device.h"

namespace brantel::host {

// What one write to a modem is, and what modem and far end answer to it when all goes well.
struct PaperStep {
  std::string_view what;
  std::string_view answer;
};

// Serial ports that are all there, with a modem that gets through to whom it calls. Each write
// becomes a part. No port is opened.
class PaperLine final : public SerialPorts {
 public:
  // The course of the call, a step a write. All must outlive the object.
  PaperLine(std::span<const PaperStep> steps, PaperClock& clock, PreviewParts& parts)
      : steps_(steps), clock_(clock), parts_(parts) {}

  Outcome<std::unique_ptr<SerialDevice>> Open(std::uint32_t port_number) override;

 private:
  class Device;

  // The step of the next write; behind the last one nothing answers any more.
  PaperStep NextStep();

  std::span<const PaperStep> steps_;
  PaperClock& clock_;
  PreviewParts& parts_;
};

}  // namespace brantel::host
