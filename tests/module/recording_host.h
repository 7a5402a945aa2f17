#pragma once

#include <windows.h>
#include <unknwn.h>

#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "brantel/notifier_contract.h"

namespace brantel {

// What a host fails with where a test lets it.
inline constexpr auto kHostFailure = static_cast<HRESULT>(0x80131234);

struct LogCall {
  UINT32 level;
  std::wstring text;

  friend bool operator==(const LogCall&, const LogCall&) = default;
};

struct ExpandCall {
  bool null;  // a null BSTR was passed
  std::wstring text;

  friend bool operator==(const ExpandCall&, const ExpandCall&) = default;
};

std::ostream& operator<<(std::ostream& out, const LogCall& call);
std::ostream& operator<<(std::ostream& out, const ExpandCall& call);

// What a host does with the BSTR that it is given to expand.
enum class Replacement {
  kCopy,  // replaces it by a copy of itself
  kText,  // replaces it by the text beside
  kNull,  // frees it and leaves null
  kNone,  // leaves it as it is
};

struct Expansion {
  HRESULT result = S_OK;
  Replacement replacement = Replacement::kCopy;
  std::wstring text = {};
};

// A host that answers as its settings say, records what it is asked, and counts its references. It
// lives where it is declared: the count starts with the one that the test itself holds.
class RecordingHost final : public INotifierHost {
 public:
  // Settings.
  HRESULT query_result = S_OK;
  bool query_yields_null = false;
  Expansion expansion;
  std::function<void()> during_query;
  std::function<void()> during_expansion;
  std::function<void()> during_log;
  std::function<void()> during_release;
  HRESULT log_result = S_OK;
  HRESULT trigger_result = S_OK;
  UINT32 trigger_word = 0;

  // Records.
  std::vector<IID> queries;
  std::vector<ExpandCall> expand_calls;
  std::vector<LogCall> log_calls;
  int trigger_calls = 0;

  RecordingHost() = default;
  RecordingHost(const RecordingHost&) = delete;
  RecordingHost& operator=(const RecordingHost&) = delete;
  ~RecordingHost() = default;

  [[nodiscard]] LONG references() const { return references_; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE ExpandMessage(BSTR* text) override;
  HRESULT STDMETHODCALLTYPE LogMessage(UINT32 level, BSTR text) override;
  HRESULT STDMETHODCALLTYPE GetAlertTrigger(UINT32* flags) override;

 private:
  volatile LONG references_ = 1;
};

// An object whose IUnknown is not its INotifierHost: queries for that are passed on to a
// RecordingHost. Counts its own references like that one.
class HostBehindAnotherObject final : public IUnknown {
 public:
  explicit HostBehindAnotherObject(RecordingHost& host) : host_(host) {}
  HostBehindAnotherObject(const HostBehindAnotherObject&) = delete;
  HostBehindAnotherObject& operator=(const HostBehindAnotherObject&) = delete;
  ~HostBehindAnotherObject() = default;

  [[nodiscard]] LONG references() const { return references_; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;

 private:
  RecordingHost& host_;
  volatile LONG references_ = 1;
};

}  // namespace brantel
