// The contract between Brantel_Notifications and its host: the one header that a host compiles
// against. It needs C++17 or later and the Windows headers, nothing else of this project.
//
// A host creates a notifier object by ProgID ("Brantel_Notifications.LaunchProgram.1") or CLSID,
// binds it to a callback object of its own by Initialize, lets it deliver alerts for stored
// configurations by Send, as many as it likes, and lets go of it by Shutdown and Release. After
// Shutdown it may bind the object again.
//
// Strings are BSTRs in UTF-16; inside, the module works in the system's ANSI code page, and
// characters outside it become "?" in alerts or their nearest likeness, which is no sign of ASCII.
//
// Rules for hosts
//
//  1. The host MUST call an object from the thread that created it ("Apartment" threading), in a
//     single-threaded apartment (COINIT_APARTMENTTHREADED). In a multithreaded one CoCreateInstance
//     answers E_NOINTERFACE: nothing carries the interfaces from one apartment to another. A host
//     that nevertheless ends or renews a binding while another thread is in Send loses no more than
//     the delivery: Send keeps the host with which it began until it returns.
//
//  2. The host MUST call Initialize, with an object that offers INotifierHost, before it calls
//     Send. The notifier then holds exactly one reference to INotifierHost until Shutdown or its
//     last Release. A second Initialize changes nothing and succeeds. Voice holds one more to the
//     host of the process's first binding, which is told of the steps of all calls, until any bound
//     Voice object's Shutdown or last Release.
//
//  3. The host MUST treat every result that is not negative as an alert that went out or needed no
//     delivery; Sound answers 2 for a sound that goes on looping.
//
//  4. Send blocks until delivery has ended, which takes up to minutes for modems and telephones;
//     the host SHOULD call it from a worker apartment.
//
//  5. Send MUST be given the full path of an instance file. AddInstance, EditInstance, GetAddPage
//     and SubmitForm are given the directory of the instance files, which the host owns and makes.
//
//  6. The host MUST free every BSTR that it is given through an out pointer, and keeps ownership of
//     every BSTR that it passes in. An in/out BSTR is replaced: who replaces it frees the old one.
//
//  7. A failing call leaves out pointers as they were, except QueryInterface and the factory's
//     CreateInstance, which set theirs to null.
//
//  8. The host MUST NOT unload the module while it holds any of its objects or class factories; it
//     keeps the module loaded over a time without objects by IClassFactory::LockServer(TRUE).
//     DllCanUnloadNow counts objects and server locks, not class factories.
//
// Rules for the host's INotifierHost
//
//  9. ExpandMessage MUST replace the BSTR on success and MUST leave a valid BSTR (or null) in any
//     case. An empty text is passed as an empty BSTR, by LaunchProgram as a null one.
//
// 10. LogMessage MUST append the text unchanged: line breaks are part of it, and one line of the
//     log may come in several calls. The level is always 1. A line for which there is no memory is
//     left out, and the alert goes on.
//
// 11. GetAlertTrigger MUST fail when there is no event, for example while a configuration is tried.
//
// 12. The host MUST NOT let exceptions out of its callbacks; the module lets none out of its own
//     methods.
//
// 13. A callback MAY release the notifier, also its last reference, and MAY call its Shutdown. The
//     notifier and the host stay until the method that called has returned, and DllCanUnloadNow
//     answers S_FALSE so long.
#pragma once

#include <windows.h>
#include <unknwn.h>

namespace brantel {

inline constexpr IID IID_INotifier = {
    0xBDD2F740, 0x89AB, 0xDBDB, {0x1F, 0xB0, 0xE2, 0x02, 0x3C, 0x40, 0x2B, 0x02}};
inline constexpr IID IID_INotifierConfig = {
    0x1CEB361B, 0x1CD4, 0x4F37, {0xEB, 0x24, 0x40, 0xBF, 0x9E, 0x6C, 0x3D, 0x47}};
inline constexpr IID IID_INotifierWebConfig = {
    0xCD3A9309, 0x9C55, 0x59A2, {0xA6, 0xFB, 0x05, 0x95, 0x00, 0x41, 0x45, 0x23}};
inline constexpr IID IID_INotifierHost = {
    0x4354FC74, 0x2212, 0x4FF7, {0xE4, 0xEA, 0x4A, 0x22, 0xAD, 0x0B, 0xA3, 0xE0}};

// The module's type library; it describes the seven classes.
inline constexpr GUID LIBID_BRANTEL_NOTIFICATIONSLib = {
    0x5625C924, 0x5719, 0xDA0E, {0xEE, 0x98, 0x23, 0x7A, 0xC5, 0xFB, 0x0A, 0x3C}};

// Bits of the word that GetAlertTrigger stores. A word with several is judged in the order item up,
// item down, trap, service up, service down by the classes that word their alerts by it.
enum AlertTriggerBits : UINT32 {
  kAlertItemUp = 1,
  kAlertItemDown = 2,
  kAlertServiceUp = 4,
  kAlertServiceDown = 8,
  kAlertTrap = 16,
};

// Run time: bind to the host, deliver alerts. Offered by every class.
struct INotifier : IUnknown {
  // S_OK, also when already initialised. E_FAIL for a null host and for one without INotifierHost.
  virtual HRESULT STDMETHODCALLTYPE Initialize(IUnknown* host) = 0;
  // Releases the host. Always S_OK.
  virtual HRESULT STDMETHODCALLTYPE Shutdown() = 0;
  // Delivers one alert for the instance file. S_OK (or another success code) when it went out or
  // the event is of no kind that the class tells of; E_FAIL, or the failing result of a host
  // callback, otherwise. Progress and reasons are written through INotifierHost::LogMessage.
  virtual HRESULT STDMETHODCALLTYPE Send(BSTR instance) = 0;
};

// Modal configuration dialogs, owned by the calling thread's active window. Offered by every class.
struct INotifierConfig : IUnknown {
  // Stores a new BSTR with the new instance's name. E_FAIL when the operator cancels.
  virtual HRESULT STDMETHODCALLTYPE AddInstance(BSTR directory, BSTR* name) = 0;
  // Edits the instance named by *name and replaces it by the name it has then. E_FAIL on Cancel.
  virtual HRESULT STDMETHODCALLTYPE EditInstance(BSTR directory, BSTR* name) = 0;
  // Stores the module's handle and the id of the class's icon group in it. S_OK.
  virtual HRESULT STDMETHODCALLTYPE GetImageResource(HMODULE* module, UINT32* id) = 0;
};

// HTML forms for the host's web server. Offered by Beeper, Pager, SMTPMail and WinPopup.
struct INotifierWebConfig : IUnknown {
  // Stores a new BSTR with the page of the add form, prefilled from the instance "Default".
  virtual HRESULT STDMETHODCALLTYPE GetAddPage(BSTR directory, BSTR* page) = 0;
  // Stores a new BSTR with the page of the edit form of the instance file (full path).
  virtual HRESULT STDMETHODCALLTYPE GetEditPage(BSTR instance, BSTR* page) = 0;
  // Saves the instance that a posted add or edit form describes ("name=value&name=value...").
  virtual HRESULT STDMETHODCALLTYPE SubmitForm(BSTR directory, BSTR form) = 0;
};

// What the host implements. Slots of the host's own may follow; the module calls none of them.
struct INotifierHost : IUnknown {
  // Replaces *text by a new BSTR in which the event's variables are filled in, and frees the old
  // one.
  virtual HRESULT STDMETHODCALLTYPE ExpandMessage(BSTR* text) = 0;
  // Appends text to the log of this alert. The caller keeps ownership of text.
  virtual HRESULT STDMETHODCALLTYPE LogMessage(UINT32 level, BSTR text) = 0;
  // Stores the AlertTriggerBits of the event. A failing result means that there is no event.
  virtual HRESULT STDMETHODCALLTYPE GetAlertTrigger(UINT32* flags) = 0;
};

}  // namespace brantel
