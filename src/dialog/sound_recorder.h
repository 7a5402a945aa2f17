#pragma once

#include <cstddef>
#include <string>

#include "dialog/dialog_view.h"

namespace brantel {

// What the machine knows of its sound recorder.
class RecorderSystem {
 public:
  virtual ~RecorderSystem() = default;

  // The recorder that the machine's settings name; empty when they name none.
  virtual std::string ConfiguredRecorder() = 0;

  virtual std::string SystemDirectory() = 0;

  // Starts a program and waits until it has ended, however long that takes. False when it cannot be
  // started.
  virtual bool Run(const std::string& command_line) = 0;
};

// The program with which an operator records a wave file from a dialog.
class SoundRecorder {
 public:
  // Finds the recorder: the configured one, else the system's. `system` must outlive the object.
  explicit SoundRecorder(RecorderSystem& system);

  // Starts the recorder with the file that an edit names. Deliberately waits for the recorder's
  // end, so that the dialog, which stands still meanwhile, goes on with the recorded file. Of the
  // edit's text the recorder gets no more than `limit` bytes.
  void Record(DialogView& view, int edit, std::size_t limit);

 private:
  RecorderSystem& system_;
  const std::string path_;
};

}  // namespace brantel
