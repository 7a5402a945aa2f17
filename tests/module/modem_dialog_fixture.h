#pragma once

#include <windows.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/module/dialog_fixture.h"
#include "tests/module/registry_tree.h"
#include "tests/module/settings_key.h"
#include "tests/module/utf8_text.h"

namespace brantel {

// Controls that the port settings of the modem classes share.
inline constexpr int kModemString = 219;
inline constexpr int k300Baud = 224;
inline constexpr int k1200Baud = 225;
inline constexpr int k2400Baud = 226;
inline constexpr int kCom1 = 227;
inline constexpr int kCom3 = 229;
inline constexpr int kCom4 = 230;
inline constexpr int k8N1 = 235;  // that of the Pager alone

// An operator before the dialog of a modem class, on a machine without settings of the class.
class ModemDialogFixture : public DialogFixture {
 protected:
  // `settings_key`: the path of the settings of profile 0; must outlive the object.
  ModemDialogFixture(const ExpectedDialog& expected, const wchar_t* settings_key,
                     int port_settings_button)
      : DialogFixture(expected),
        settings_key_(settings_key),
        port_settings_button_(port_settings_button),
        no_settings_(settings_key) {}

  void StoreSetting(const std::wstring& profile, const wchar_t* name, const std::wstring& text) {
    SetText(CreateKey(HKEY_LOCAL_MACHINE, settings_key_ + profile).get(), name, text);
  }

  // The sample instance with another profile.
  [[nodiscard]] std::string FileWith(char profile) const {
    return expected_.sample_file.substr(0, expected_.sample_file.size() - 4) + profile +
           std::string(3, '\0');
  }

  void Store(const wchar_t* name, const std::string& file) {
    ASSERT_TRUE(std::filesystem::exists(scratch_.Write(name, file)));
  }

  [[nodiscard]] std::string Stored(const wchar_t* name) const {
    std::ifstream file(scratch_.path() / name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  // The settings of a profile, by name. They are stored without a NUL.
  [[nodiscard]] std::vector<std::string> StoredSettings(const std::wstring& profile) const {
    const OwnedKey key = OpenKey(HKEY_LOCAL_MACHINE, settings_key_ + profile);
    if (!key) throw std::runtime_error("the profile has no settings");
    std::vector<std::string> settings;
    for (const StoredValue& value : ReadTree(key.get()).values) {
      EXPECT_EQ(value.type, DWORD{REG_SZ});
      std::string text = ToUtf8(value.name);
      text += " = ";
      for (std::size_t i = 0; i < value.data.size(); i += sizeof(wchar_t)) {
        text += static_cast<char>(value.data[i]);
      }
      settings.push_back(std::move(text));
    }
    return settings;
  }

  [[nodiscard]] LRESULT Selection() const {
    return SendMessageA(session_->Control(kProfiles), CB_GETCURSEL, 0, 0);
  }

  void PressInList(WORD key) {
    session_->PressAltAnd('o');
    ASSERT_EQ(session_->Focus(), kProfiles);
    session_->PressKey(key);
  }

  // Opens the port settings.
  HWND OpenSettings() {
    session_->StartClick(port_settings_button_);
    return session_->AwaitPopup();
  }
  [[nodiscard]] std::string SettingsText(int control) const {
    return WindowText(GetDlgItem(session_->popup(), control));
  }
  void EnterSetting(int control, const std::string& text) const {
    SendMessageA(GetDlgItem(session_->popup(), control), WM_SETTEXT, 0,
                 reinterpret_cast<LPARAM>(text.c_str()));
  }
  [[nodiscard]] std::vector<int> CheckedSettings() const {
    std::vector<int> checked;
    for (int button = kFirstSettingsButton; button <= kLastSettingsButton; ++button) {
      if (IsDlgButtonChecked(session_->popup(), button) == BST_CHECKED) checked.push_back(button);
    }
    return checked;
  }

  static constexpr int kProfiles = 251;
  // Of the port settings: the radio buttons, and a check box that only some have.
  static constexpr int kFirstSettingsButton = 224;
  static constexpr int kLastSettingsButton = 235;

  const std::wstring settings_key_;

 private:
  const int port_settings_button_;
  NoSettings no_settings_;
};

}  // namespace brantel
