#pragma once

#include "instance/instance_files.h"
#include "launch_program/process_starter.h"
#include "notifier/notifier.h"

namespace brantel {

// Starts a program, with arguments in which the host has filled in the event's details.
class LaunchProgram final : public Notifier {
 public:
  // Both must outlive the object.
  LaunchProgram(InstanceFiles& files, ProcessStarter& starter) : files_(files), starter_(starter) {}

  // S_OK (or the host's own success code) as soon as the program has been started, also when no
  // host is bound and nothing is started. E_FAIL for an empty argument, an instance that cannot be
  // loaded and a program that cannot be started; the host's result when it cannot expand the
  // arguments.
  Result Send(const InstanceArgument& argument, NotifierHost* host) override;

 private:
  InstanceFiles& files_;
  ProcessStarter& starter_;
};

}  // namespace brantel
