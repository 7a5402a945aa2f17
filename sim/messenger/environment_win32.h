#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace brantel::sim {

// What an environment variable holds; the other text when there is none.
std::wstring Setting(const wchar_t* name, const wchar_t* otherwise = L"");

// The number in it; 0 when there is none.
DWORD NumberSetting(const wchar_t* name);

// The parts of a text between separators, without those that are empty.
template <typename Take>
void Split(std::wstring_view text, wchar_t separator, Take take) {
  while (!text.empty()) {
    const std::wstring_view part = text.substr(0, text.find(separator));
    if (!part.empty()) take(part);
    text.remove_prefix(part.size() < text.size() ? part.size() + 1 : part.size());
  }
}

std::string ToUtf8(std::wstring_view text);

// Writes the text at the end of the file that the environment variable names, if it names one, as a
// whole: other threads and programs may be writing to it.
void Report(const wchar_t* name, const std::string& text);

}  // namespace brantel::sim
