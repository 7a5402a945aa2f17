#include "framework/sound_recorder.h"

#include "framework/string_table.h"

namespace brantel {
namespace {

constexpr std::size_t kLongestFile = 512;

std::string FindRecorder(RecorderSystem& system) {
  std::string configured = system.ConfiguredRecorder();
  return configured.empty() ? system.SystemDirectory() + "\\sndrec32.exe" : configured;
}

}  // namespace

SoundRecorder::SoundRecorder(RecorderSystem& system)
    : system_(system), path_(FindRecorder(system)) {}

void SoundRecorder::Record(DialogView& view, int edit) {
  if (system_.Run(path_ + " " + view.Text(edit, kLongestFile))) return;
  view.ShowMessage(LoadText(text_id::kRecorderFailed), "", MessageIcon::kNone);
}

}  // namespace brantel
