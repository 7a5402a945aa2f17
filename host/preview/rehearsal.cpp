#include "host/preview/rehearsal.h"

#include "instance/instance_directory.h"

namespace brantel::host {
namespace {

Instance InstanceOf(const PreviewSources& sources, const PreviewedAlert& alert) {
  const InstanceLayout& layout = alert.notifier_class.instances;
  return LoadInstance(sources.files, layout, alert.instance.path)
      .value_or(Instance(layout.fields.size()));
}

}  // namespace

Rehearsal::Rehearsal(const PreviewSources& sources, const PreviewedAlert& alert)
    : sources_(sources),
      alert_(alert),
      instance_(InstanceOf(sources, alert)),
      host_(std::make_shared<PaperHost>(alert.event, alert.expand, sources.texts)),
      settings_(sources.settings),
      waves_(sources.waves) {}

void Rehearsal::Deliver(Notifier& notifier) {
  const auto bound = notifier.Initialize([this] { return host_; });
  preview_.result = bound ? notifier.Send(alert_.instance, bound.get()) : kFail;
  notifier.Shutdown();
}

void Rehearsal::GiveUp(std::string_view why) {
  preview_.result = kFail;
  preview_.log = why;
}

Preview Rehearsal::Finish(const DeliveryTime& time) const {
  Preview finished = preview_;
  for (PreviewPart& part : finished.parts) {
    if (part.text.empty()) part.text = sources_.texts.to_utf8(part.bytes);
  }
  finished.log = host_->log() + preview_.log;
  finished.time = time;
  return finished;
}

}  // namespace brantel::host
