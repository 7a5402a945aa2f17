#pragma once

#include <cstdint>
#include <optional>

#include "telephone/line_constants.h"

namespace brantel {

// The numbers of the texts that the log shows for what telephony answers and tells.

// A format for the text that says what failed.
unsigned InitializeFailureFormat(LineCode error);

// These take device, low and high word of the API version as inserts.
unsigned NegotiationFailureText(LineCode error);
unsigned OpenFailureText(LineCode error);

// Nothing for an error that the log does not name.
std::optional<unsigned> MonitorDigitsFailureText(LineCode error);

unsigned CallStateText(std::uint32_t state);
unsigned DeviceStateText(std::uint32_t state);

// For the messages of which nothing but their coming is told. Nothing for all others.
std::optional<unsigned> MessageText(std::uint32_t message);

}  // namespace brantel
