// What a library exports so that "notifyhost conformance LIBRARY" can try a host's callback object.
// Put the sources of the object into the library, and these two functions beside it.
//
// The library is loaded into a process of its own, whose threads are single-threaded apartments; it
// is not unloaded. Nothing is sent.
#pragma once

#include <windows.h>
#include <oleauto.h>
#include <unknwn.h>

extern "C" {

// Stores a new object, with one reference that the caller owns, for an alert of an event with this
// trigger word (AlertTriggerBits), or of no event where the pointer is null.
__declspec(dllexport) HRESULT MakeNotifierHost(const UINT32* event, IUnknown** host);

// Stores a new BSTR with all that the object's LogMessage was given. It may be left out; then it
// cannot be said whether texts are appended unchanged.
__declspec(dllexport) HRESULT ReadNotifierLog(IUnknown* host, BSTR* log);
}
