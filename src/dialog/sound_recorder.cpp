#include "dialog/sound_recorder.h"

#include "text/string_table.h"

namespace brantel {
namespace {

std::string FindRecorder(RecorderSystem& system) {
  std::string configured = system.ConfiguredRecorder();
  return configured.empty() ? system.SystemDirectory() + "\\sndrec32.exe" : configured;
}

}  // namespace

SoundRecorder::SoundRecorder(RecorderSystem& system)
    : system_(system), path_(FindRecorder(system)) {}

void SoundRecorder::Record(DialogView& view, int edit, std::size_t limit) {
  if (system_.Run(path_ + " " + view.Text(edit, limit))) return;
  view.ShowMessage(LoadText(text_id::kRecorderFailed), "", MessageIcon::kNone);
}

}  // namespace brantel
