#include "tests/far_ends/deliveries.h"

#include <utility>

namespace brantel {
namespace {

thread_local Deliveries* threads_deliveries = nullptr;

}  // namespace

Deliveries::Deliveries() : before_(std::exchange(threads_deliveries, this)) {}

Deliveries::~Deliveries() {
  threads_deliveries = before_;
}

void NoteDelivery(std::string text) {
  if (threads_deliveries != nullptr) threads_deliveries->texts.push_back(std::move(text));
}

void NoteThreadHandle(HANDLE thread) {
  if (threads_deliveries != nullptr) threads_deliveries->thread_handles.push_back(thread);
}

}  // namespace brantel
