#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "host/preview/paper_clock.h"
#include "host/preview/paper_host.h"
#include "host/preview/preview.h"
#include "host/preview/read_only_settings.h"
#include "host/preview/wave_length.h"
#include "instance/instance_codec.h"
#include "notifier/notifier.h"

namespace brantel::host {

// One delivery to far ends on paper, and what comes of it.
class Rehearsal {
 public:
  // Both must outlive the object.
  Rehearsal(const PreviewSources& sources, const PreviewedAlert& alert);

  [[nodiscard]] const PreviewSources& sources() const { return sources_; }
  [[nodiscard]] const PreviewedAlert& alert() const { return alert_; }
  // What the notifier reads of the file; empty fields where it reads nothing.
  [[nodiscard]] const Instance& instance() const { return instance_; }

  // What a notifier is made of, beside its own far end.
  [[nodiscard]] SettingsStore& settings() { return settings_; }
  [[nodiscard]] RiffFiles& waves() { return waves_; }
  [[nodiscard]] PaperClock& clock() { return clock_; }
  [[nodiscard]] PreviewParts& parts() { return preview_.parts; }

  // As the module delivers it for a host that binds itself for one alert.
  void Deliver(Notifier& notifier);

  // Ends a delivery that does not end by itself as one that failed, and says why.
  void GiveUp(std::string_view why);

  // Says of all parts of this name what `words` makes of their bytes.
  template <typename Words>
  void Explain(std::string_view what, const Words& words) {
    for (PreviewPart& part : preview_.parts) {
      if (part.what == what) AddWords(part, words(part.bytes));
    }
  }

  // What the host made of the text that it was asked for last.
  [[nodiscard]] std::string_view message() const { return host_->last_expanded(); }

  // All that has come of it.
  [[nodiscard]] Preview Finish(const DeliveryTime& time) const;

 private:
  const PreviewSources& sources_;
  const PreviewedAlert& alert_;
  const Instance instance_;
  const std::shared_ptr<PaperHost> host_;
  ReadOnlySettings settings_;
  LocalWaves waves_;
  PaperClock clock_;
  Preview preview_;
};

}  // namespace brantel::host
