#pragma once

#include <windows.h>
#include <gtest/gtest.h>

#include <array>
#include <ostream>
#include <string>
#include <vector>

namespace brantel {

// What hosts know a notifier class by. Written out here once more, since a test that took these
// from the module's own sources could not tell when one of them changes.
struct ExpectedClass {
  const char* name;
  const wchar_t* clsid;
  const wchar_t* prog_id;
  const wchar_t* version_independent_prog_id;
  const wchar_t* description;
  const wchar_t* file_magic;
  WORD registry_script_id;
  WORD icon_id;
  bool has_web_forms;
  // False for the class that binds to a host only where a telephone line takes automated voice.
  bool binds_everywhere;
};

inline constexpr std::array<ExpectedClass, 7> kExpectedClasses = {{
    {.name = "SMTPMail",
     .clsid = L"{4D03ADA6-067C-79C7-B3CD-B7D9C4293BF5}",
     .prog_id = L"Brantel_Notifications.SMTPMail.1",
     .version_independent_prog_id = L"Brantel_Notifications.SMTPMail",
     .description = L"SMTPMail Class",
     .file_magic = L"{D6DD268C-A32B-EF86-2683-A7DA9410F949}",
     .registry_script_id = 101,
     .icon_id = 203,
     .has_web_forms = true,
     .binds_everywhere = true},
    {.name = "Sound",
     .clsid = L"{A93D5106-D415-9AE1-2956-2D685A03A67B}",
     .prog_id = L"Brantel_Notifications.Sound.1",
     .version_independent_prog_id = L"Brantel_Notifications.Sound",
     .description = L"Sound Class",
     .file_magic = L"{5D6A4051-7608-5DD6-F1D3-2CFEA0F80A9F}",
     .registry_script_id = 113,
     .icon_id = 205,
     .has_web_forms = false,
     .binds_everywhere = true},
    {.name = "WinPopup",
     .clsid = L"{B28A7D4D-B389-C787-CCC0-A0F773C8FC73}",
     .prog_id = L"Brantel_Notifications.WinPopup.1",
     .version_independent_prog_id = L"Brantel_Notifications.WinPopup",
     .description = L"WinPopup Class",
     .file_magic = L"{8B762C29-0B2E-9C58-6C92-5C2A021AFB08}",
     .registry_script_id = 115,
     .icon_id = 207,
     .has_web_forms = true,
     .binds_everywhere = true},
    {.name = "LaunchProgram",
     .clsid = L"{313E5016-EB2E-F2DD-BDB6-184EFE00A5D3}",
     .prog_id = L"Brantel_Notifications.LaunchProgram.1",
     .version_independent_prog_id = L"Brantel_Notifications.LaunchProgram",
     .description = L"LaunchProgram Class",
     .file_magic = L"{ECEC7E6C-8E18-4CA2-C56F-5334C2BD7945}",
     .registry_script_id = 117,
     .icon_id = 209,
     .has_web_forms = false,
     .binds_everywhere = true},
    {.name = "Beeper",
     .clsid = L"{E0F08BCF-0BD9-3D64-842A-2FCEAE91F17E}",
     .prog_id = L"Brantel_Notifications.Beeper.1",
     .version_independent_prog_id = L"Brantel_Notifications.Beeper",
     .description = L"Beeper Class",
     .file_magic = L"{E546F481-983D-5A7E-610B-E80BF158F22E}",
     .registry_script_id = 119,
     .icon_id = 210,
     .has_web_forms = true,
     .binds_everywhere = true},
    {.name = "Pager",
     .clsid = L"{2669D42E-142D-8B34-EAC1-28B07EB3EABA}",
     .prog_id = L"Brantel_Notifications.Pager.1",
     .version_independent_prog_id = L"Brantel_Notifications.Pager",
     .description = L"Pager Class",
     .file_magic = L"{CF05540D-534F-164B-BD02-D12A35BF0840}",
     .registry_script_id = 136,
     .icon_id = 211,
     .has_web_forms = true,
     .binds_everywhere = true},
    {.name = "Voice",
     .clsid = L"{DEE8A963-837B-D33C-C75D-B637B7CCFCA2}",
     .prog_id = L"Brantel_Notifications.Voice.1",
     .version_independent_prog_id = L"Brantel_Notifications.Voice",
     .description = L"Voice Class",
     .file_magic = L"{C4F822F8-1890-08CD-6842-1838A3A78A26}",
     .registry_script_id = 139,
     .icon_id = 217,
     .has_web_forms = false,
     .binds_everywhere = false},
}};

inline constexpr const ExpectedClass& kSMTPMail = kExpectedClasses[0];
inline constexpr const ExpectedClass& kSound = kExpectedClasses[1];
inline constexpr const ExpectedClass& kWinPopup = kExpectedClasses[2];
inline constexpr const ExpectedClass& kLaunchProgram = kExpectedClasses[3];
inline constexpr const ExpectedClass& kBeeper = kExpectedClasses[4];
inline constexpr const ExpectedClass& kPager = kExpectedClasses[5];
inline constexpr const ExpectedClass& kVoice = kExpectedClasses[6];

inline constexpr const wchar_t* kExpectedLibraryId = L"{5625C924-5719-DA0E-EE98-237AC5FB0A3C}";

inline constexpr const wchar_t* kNotifierIid = L"{BDD2F740-89AB-DBDB-1FB0-E2023C402B02}";
inline constexpr const wchar_t* kNotifierConfigIid = L"{1CEB361B-1CD4-4F37-EB24-40BF9E6C3D47}";
inline constexpr const wchar_t* kNotifierWebConfigIid = L"{CD3A9309-9C55-59A2-A6FB-059500414523}";
inline constexpr const wchar_t* kNotifierHostIid = L"{4354FC74-2212-4FF7-E4EA-4A22AD0BA3E0}";
inline constexpr const wchar_t* kUnknownIid = L"{00000000-0000-0000-C000-000000000046}";
inline constexpr const wchar_t* kClassFactoryIid = L"{00000001-0000-0000-C000-000000000046}";
inline constexpr const wchar_t* kSupportErrorInfoIid = L"{DF0B3D60-548F-101B-8E65-08002B2BD119}";
inline constexpr const wchar_t* kDispatchIid = L"{00020400-0000-0000-C000-000000000046}";
inline constexpr const wchar_t* kMarshalIid = L"{00000003-0000-0000-C000-000000000046}";
// Belongs to nobody.
inline constexpr const wchar_t* kStrangerId = L"{9B0C2F51-6A4E-4D7B-8C1D-0E5F3A2B7C96}";

std::vector<ExpectedClass> ClassesThatBindEverywhere();
std::vector<ExpectedClass> ClassesWithWebForms();

// The interfaces of a class's own by their IIDs, and all interfaces that its objects offer.
std::vector<const wchar_t*> CustomInterfaces(const ExpectedClass& expected);
std::vector<const wchar_t*> OfferedInterfaces(const ExpectedClass& expected);

// What an out pointer holds before a call that must clear it.
inline void* const kLeftover = reinterpret_cast<void*>(0x5A5A5A5A);

// The GUID that stands in the text, in braces. Throws std::runtime_error for a text that is none.
GUID ToGuid(const wchar_t* text);

// For failure messages and test names.
inline std::ostream& operator<<(std::ostream& out, const ExpectedClass& expected) {
  return out << expected.name;
}
inline std::string NameOfClass(const ::testing::TestParamInfo<ExpectedClass>& info) {
  return info.param.name;
}

}  // namespace brantel
