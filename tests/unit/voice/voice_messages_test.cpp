#include "voice/voice_messages.h"

#include <gtest/gtest.h>

#include "tests/unit/text/few_code_pages.h"
#include "voice/voice_description.h"

namespace brantel {
namespace {

using namespace voice_field;

TEST(EventField, IsThatOfTheFirstBitsThatAreSet) {
  struct Choice {
    std::uint32_t word;
    std::size_t field;
  };
  constexpr Choice kChoices[] = {
      {0, kItemDown},           {1, kItemUp},     {2, kItemDown},     {3, kItemUp},
      {4, kItemDown},           {5, kServiceUp},  {6, kItemDown},     {7, kServiceUp},
      {8, kServiceDown},        {9, kItemUp},     {10, kServiceDown}, {11, kItemUp},
      {12, kServiceDown},       {13, kServiceUp}, {14, kServiceDown}, {15, kServiceUp},
      {16, kItemDown},          {17, kItemDown},  {21, kItemDown},    {24, kItemDown},
      {31, kItemDown},          {32, kItemDown},  {33, kItemUp},      {0xFFFFFFFF, kItemDown},
      {0xFFFFFFEF, kServiceUp},
  };
  for (const auto& [word, field] : kChoices) {
    EXPECT_EQ(EventField(word), field) << word;
  }
}

TEST(EventComesFirst, ForBit8Alone) {
  for (unsigned bit = 0; bit < 32; ++bit) {
    EXPECT_EQ(EventComesFirst(1U << bit), bit == 3) << bit;
  }
  EXPECT_FALSE(EventComesFirst(0));
  EXPECT_FALSE(EventComesFirst(0xFFFFFFF7));
  EXPECT_TRUE(EventComesFirst(0xFFFFFFFF));
}

// The files that are asked for, and whether they exist.
std::string Wave(const std::string& text, const std::string& name, const std::string& existing,
                 std::string* asked = nullptr) {
  return DeviceWave(text, name, kCodePage932, [&](const std::string& path) {
    if (asked != nullptr) *asked = path;
    return path == existing;
  });
}

// Whether the file system is asked for the wave file of a device with this name.
bool IsAskedFor(const std::string& name) {
  bool asked = false;
  const std::string wave = DeviceWave("", name, kCodePage932, [&](const std::string&) {
    asked = true;
    return true;
  });
  EXPECT_EQ(wave == "ahost.wav", !asked) << name;
  return asked;
}

TEST(DeviceWave, IsTheTextOfTheHost) {
  std::string asked = "nothing";
  EXPECT_EQ(Wave("C:\\sounds\\router.wav", "router7", "", &asked), "C:\\sounds\\router.wav");
  EXPECT_EQ(Wave("[AUTO]", "router7", "", &asked), "[AUTO]");
  EXPECT_EQ(Wave("%c", "router7", "", &asked), "%c");
  EXPECT_EQ(Wave("%C.wav", "router7", "", &asked), "%C.wav");
  EXPECT_EQ(Wave(" ", "router7", "", &asked), " ");
  EXPECT_EQ(asked, "nothing");
}

TEST(DeviceWave, IsDerivedFromTheNameWhereTheHostNamesNone) {
  for (const char* text : {"", "[auto]", "%p", "%C"}) {
    EXPECT_EQ(Wave(text, "router7", "router7.wav"), "router7.wav") << text;
  }
}

TEST(DeviceWave, HasTheExtensionInPlaceOfTheNamesLast) {
  EXPECT_EQ(Wave("", "router7.example.org", "router7.example.wav"), "router7.example.wav");
  EXPECT_EQ(Wave("", "router7.", "router7.wav"), "router7.wav");
  EXPECT_EQ(Wave("", ".profile", ".wav"), ".wav");
  EXPECT_EQ(Wave("", "", ".wav"), ".wav");
  EXPECT_EQ(Wave("", "C:\\s.d\\router7", "C:\\s.wav"), "C:\\s.wav");
}

TEST(DeviceWave, IsTheCommonOneWhereTheDerivedDoesNotExist) {
  std::string asked;
  EXPECT_EQ(Wave("[auto]", "router7.example.org", "router7.wav", &asked), "ahost.wav");
  EXPECT_EQ(asked, "router7.example.wav");
}

TEST(DeviceWave, OfAnotherComputerIsNotAskedFor) {
  for (const char* name :
       {R"(\\server\share\x)", "//server/share/x", "\\/server/x", "/\\server\\x", "\\\\", "//.",
        R"(\\.\PhysicalDrive0)", R"(\\?\C:\x)", R"(\\?\UNC\server\x)", R"(\??\UNC\server\x)",
        R"(\??\C:\x)", R"(\\\x)", "///x", "\\\\.x"}) {
    EXPECT_FALSE(IsAskedFor(name)) << name;
  }
}

TEST(DeviceWave, OfADeviceOfThisComputersIsNotAskedFor) {
  for (const char* name : {"NUL",
                           "nul",
                           "con.x",
                           "Con.x.y",
                           "COM1",
                           "com9.example.org",
                           "LPT1",
                           "lpt9.",
                           "AUX",
                           "prn",
                           "CONIN$",
                           "conout$",
                           "NUL.",
                           "nul .x",
                           "NUL:",
                           "COM1:9600",
                           "nul:stream.x",
                           "C:NUL",
                           "c:con.x",
                           "C:\\NUL",
                           "C:\\sounds\\com1",
                           "sounds/aux.x",
                           "sounds\\PRN",
                           "\\con",
                           "/con",
                           "..\\nul.x",
                           "x/\\lpt1",
                           "C:\\s.d\\nul.x",
                           "\x83\x5C\\nul",
                           "\x83\x5C/con"}) {
    EXPECT_FALSE(IsAskedFor(name)) << name;
  }
}

TEST(DeviceWave, OfAnyOtherNameIsAskedFor) {
  for (const char* name :
       {"router7", "router7.example.org", "", ".", ".profile", "C:router7", "C:\\sounds\\router7",
        "\\sounds\\router7", "/sounds/router7", "..\\router7", "sounds//router7", "C:\\\\router7",
        "x\\\\server", "nul\\router7", "con/router7", "C:\\com1\\x", "COM", "COM10", "LPT", "nulls",
        "NU", "icon", "xcon", "router:nul", "CON1",
        // Second bytes that look like backslashes, in front of what looks like a device.
        "\x83\\nul", "\x95\\con.x", "sounds\\\x83\\aux", "\x83\\\x83\\com1"}) {
    EXPECT_TRUE(IsAskedFor(name)) << name;
  }
}

TEST(DeviceWave, TakesNoMoreThan255BytesOfTheName) {
  const std::string name(300, 'x');
  const std::string file = std::string(255, 'x') + ".wav";
  EXPECT_EQ(Wave("", name, file), file);
  EXPECT_EQ(Wave("", std::string(253, 'x') + ".ab.cd", std::string(253, 'x') + ".wav"),
            std::string(253, 'x') + ".wav");
}

}  // namespace
}  // namespace brantel
