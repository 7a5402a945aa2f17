#pragma once

#include <string_view>

#include "host/checks/rule.h"

namespace brantel::host {

// Whether a path is one of another computer. Even the question whether a file is there would offer
// that computer the account's credentials, so it is not asked.
bool LeadsToAnotherComputer(std::string_view path);

// Checks of what a value names on this computer: each says whether the value breaks its rule.

bool IsOnAnotherComputer(const CheckedValue& value);
bool IsRelative(const CheckedValue& value);
bool IsNoFile(const CheckedValue& value);
bool IsNoFolder(const CheckedValue& value);
bool IsNoWave(const CheckedValue& value);

// Of the command line of LaunchProgram, which begins with the value.
bool StartsNothing(const CheckedValue& value);
bool StartsAnotherProgram(const CheckedValue& value);
bool HasBlanksWithoutQuotes(const CheckedValue& value);
bool HasNoFolder(const CheckedValue& value);
bool FillsArgumentsOfBatchFile(const CheckedValue& value);

bool HasMissingPort(const CheckedValue& value);

// Of a class. The value is the class's name.
bool IsNotRegistered(const CheckedValue& value);
bool IsRegisteredForMissingFile(const CheckedValue& value);
bool IsRegisteredForWrongBitness(const CheckedValue& value);
bool IsRegisteredForAnotherCopy(const CheckedValue& value);
bool LacksSoundDevice(const CheckedValue& value);
bool LacksMessengerLibrary(const CheckedValue& value);
bool LacksMessengerService(const CheckedValue& value);
bool HasStoppedMessenger(const CheckedValue& value);
bool LacksTelephony(const CheckedValue& value);
bool LacksVoiceLine(const CheckedValue& value);

// Online.
bool HasRelayThatDoesNotGreet(const CheckedValue& value);
bool HasPortThatDoesNotOpen(const CheckedValue& value);
bool HasModemThatDoesNotAnswer(const CheckedValue& value);
bool HasVoiceLineThatDoesNotOpen(const CheckedValue& value);

}  // namespace brantel::host
