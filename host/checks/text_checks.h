#pragma once

#include "host/checks/rule.h"

namespace brantel::host {

// Checks of texts by themselves: each says whether the value breaks its rule.

bool IsOutsideTheCodePage(const CheckedValue& value);
bool HasUnknownVariable(const CheckedValue& value);
bool HasVariableThatStays(const CheckedValue& value);
bool HasVariable(const CheckedValue& value);
bool HasLineEnd(const CheckedValue& value);

template <std::size_t kMost>
bool IsLongerThan(const CheckedValue& value) {
  return value.bytes.size() > kMost;
}
template <std::size_t kLeast>
bool IsShorterThan(const CheckedValue& value) {
  return value.bytes.size() < kLeast;
}

// Of mail.
bool IsNoAddress(const CheckedValue& value);
bool IsOddAddress(const CheckedValue& value);
bool HasNoAtSign(const CheckedValue& value);
bool HasRecipientWithoutAtSign(const CheckedValue& value);
bool HasEmptyRecipient(const CheckedValue& value);
bool HasSemicolon(const CheckedValue& value);
bool HasLoneFullStop(const CheckedValue& value);
bool HasBareLineEnd(const CheckedValue& value);
bool HasLongLine(const CheckedValue& value);

// Of telephone numbers and codes.
bool HasNoDigit(const CheckedValue& value);
bool HasUndialableCharacter(const CheckedValue& value);

// Of pages.
bool IsNoProtocol(const CheckedValue& value);
bool IsTooLongAPage(const CheckedValue& value);
bool LosesCharactersOfPage(const CheckedValue& value);
bool IsTooLongAPassword(const CheckedValue& value);
bool IsUnusedPassword(const CheckedValue& value);

// Of calls.
bool IsNoKey(const CheckedValue& value);
bool IsNegative(const CheckedValue& value);

// Of settings.
bool IsStoredAsNumber(const CheckedValue& value);
bool NamesNoPort(const CheckedValue& value);
bool IsNoRate(const CheckedValue& value);
bool IsUnusualRate(const CheckedValue& value);
bool IsNoCommand(const CheckedValue& value);
bool DialsNoNumber(const CheckedValue& value);
bool DialsNoMessage(const CheckedValue& value);
bool HasOtherDirective(const CheckedValue& value);
bool SilencesResults(const CheckedValue& value);
bool LeavesEchoOn(const CheckedValue& value);
bool IsNoNumber(const CheckedValue& value);
bool IsAboveAMinute(const CheckedValue& value);
bool IsBelowATenthOfASecond(const CheckedValue& value);
bool IsNoYesOrNo(const CheckedValue& value);
bool IsSevenBitsForJapanese(const CheckedValue& value);

}  // namespace brantel::host
