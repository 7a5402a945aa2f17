#include "module/registry_script.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <map>

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

constexpr Result kAccessDenied = static_cast<Result>(0x80070005);

// Records what is done, and refuses the call that the test names.
class FakeRegistryShell final : public RegistryShell {
 public:
  std::vector<std::string> calls;
  std::string refused_call;

  Result CreateKey(const std::string& path) override { return Record("create " + path); }
  Result SetText(const std::string& path, const std::string& name,
                 const std::string& text) override {
    return Record("set " + path + " [" + name + "] = " + text);
  }
  Result DeleteTree(const std::string& path) override { return Record("delete tree " + path); }
  Result DeleteIfWithoutSubkeys(const std::string& path) override {
    return Record("delete key " + path);
  }

 private:
  Result Record(const std::string& call) {
    calls.push_back(call);
    return call == refused_call ? kAccessDenied : kOk;
  }
};

RegistryScript Parse(std::string_view text) {
  ScriptParse parse = ParseRegistryScript(text, "C:\\m.dll");
  EXPECT_TRUE(parse.script) << "line " << parse.error.line << ": " << parse.error.message;
  return parse.script.value_or(RegistryScript{});
}

std::vector<std::string> RegisterCalls(std::string_view text) {
  FakeRegistryShell shell;
  EXPECT_EQ(RegisterScript(Parse(text), shell), kOk);
  return shell.calls;
}

std::vector<std::string> UnregisterCalls(std::string_view text) {
  FakeRegistryShell shell;
  EXPECT_EQ(UnregisterScript(Parse(text), shell), kOk);
  return shell.calls;
}

std::string ReadScript(const std::string& name) {
  std::ifstream file(std::string(REGISTRY_SCRIPT_DIR) + "/" + name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

TEST(RegisterScript, WritesKeysValuesAndDefaultValuesInOrder) {
  EXPECT_THAT(RegisterCalls("HKCR\n{\n  A = s 'one'\n  {\n    B = s 'two'\n"
                            "    val Name = s 'three'\n  }\n  C\n}\n"),
              ElementsAre("create A", "set A [] = one", "set A [Name] = three", "create A\\B",
                          "set A\\B [] = two", "create C"));
}

TEST(RegisterScript, RemovesAForcedKeyFirst) {
  EXPECT_THAT(RegisterCalls("HKCR { NoRemove A { ForceRemove B = s 'x' } }"),
              ElementsAre("create A", "delete tree A\\B", "create A\\B", "set A\\B [] = x"));
}

TEST(RegisterScript, FillsInTheModulePath) {
  EXPECT_THAT(RegisterCalls("HKCR { A = s '<%MODULE%> 100%%' }"),
              ElementsAre("create A", "set A [] = <C:\\m.dll> 100%"));
}

TEST(RegisterScript, StopsAtTheFirstFailure) {
  const auto script = Parse("HKCR { A = s 'x' { B } C }");
  FakeRegistryShell shell;
  shell.refused_call = "create A\\B";
  EXPECT_EQ(RegisterScript(script, shell), kAccessDenied);
  EXPECT_THAT(shell.calls, ElementsAre("create A", "set A [] = x", "create A\\B"));
}

TEST(UnregisterScript, RemovesKeysFromBelowAndKeepsThoseMarkedSo) {
  EXPECT_THAT(
      UnregisterCalls("HKCR { A { B C } NoRemove D { ForceRemove E { F } } }"),
      ElementsAre("delete key A\\B", "delete key A\\C", "delete key A", "delete tree D\\E"));
}

TEST(UnregisterScript, GoesOnAfterAFailureAndReturnsTheFirst) {
  const auto script = Parse("HKCR { A { B } C }");
  FakeRegistryShell shell;
  shell.refused_call = "delete key A\\B";
  EXPECT_EQ(UnregisterScript(script, shell), kAccessDenied);
  EXPECT_THAT(shell.calls, ElementsAre("delete key A\\B", "delete key A", "delete key C"));
}

TEST(ParseRegistryScript, TakesQuotedNamesAndDoubledQuotes) {
  EXPECT_THAT(RegisterCalls("HKCR { 'two words' = s 'it''s' { val 'a b' = s '' } }"),
              ElementsAre("create two words", "set two words [] = it's", "set two words [a b] = "));
}

TEST(ParseRegistryScript, TakesAnEmptyScriptAndSeveralRoots) {
  EXPECT_THAT(RegisterCalls(" \r\n\t"), IsEmpty());
  EXPECT_THAT(RegisterCalls("HKCR { A } HKCR { B }"), ElementsAre("create A", "create B"));
}

TEST(ParseRegistryScript, RefusesBadScriptsWithTheirLine) {
  struct Case {
    std::string_view script;
    int line;
    std::string_view message;
  };
  constexpr Case kCases[] = {
      {"HKLM { }", 1, "expected the root key HKCR instead of \"HKLM\""},
      {"\n\n{ }", 3, "expected the root key HKCR instead of \"{\""},
      {"HKCR", 1, "expected \"{\" instead of the end of the script"},
      {"HKCR\n{\n A", 3, "expected a name instead of the end of the script"},
      {"HKCR { A = s 'x'\n", 2, "expected a name instead of the end of the script"},
      {"HKCR { }\n}", 2, "expected the root key HKCR instead of \"}\""},
      {"HKCR {\n = s 'x' }", 2, "expected a name instead of \"=\""},
      {"HKCR {\n A = 'x' }", 2, "expected the type s instead of the text 'x'"},
      {"HKCR {\n A = d '1' }", 2, "expected the type s instead of \"d\""},
      {"HKCR {\n A = s x }", 2, "expected a text in quotes instead of \"x\""},
      {"HKCR {\n A = s 'x\n' }", 2, "a text lacks its closing quote"},
      {"HKCR {\n A = s 'x", 2, "a text lacks its closing quote"},
      {"HKCR {\n val A }", 2, R"(expected "=" instead of "}")"},
      {"HKCR {\n val = s 'x' }", 2, "expected a name instead of \"=\""},
      {"HKCR {\n ForceRemove }", 2, "expected a name instead of \"}\""},
      {"HKCR {\n '' }", 2, "a key's name is empty"},
      {"HKCR {\n A\\B }", 2, "a key's name holds a backslash: A\\B"},
      {"HKCR {\n A = s '%OTHER%' }", 2, "unknown substitution %OTHER%"},
      {"HKCR {\n A = s '50%' }", 2, "a percent sign stands alone; write %%"},
  };
  for (const Case& bad : kCases) {
    const ScriptParse parse = ParseRegistryScript(bad.script, "C:\\m.dll");
    EXPECT_FALSE(parse.script) << bad.script;
    EXPECT_EQ(parse.error.line, bad.line) << bad.script;
    EXPECT_EQ(parse.error.message, bad.message) << bad.script;
  }
}

TEST(ParseRegistryScript, RefusesEndlessNesting) {
  std::string script = "HKCR ";
  for (int i = 0; i < 100000; ++i)
    script += "{ A ";
  const ScriptParse parse = ParseRegistryScript(script, "");
  EXPECT_FALSE(parse.script);
  EXPECT_EQ(parse.error.message, "keys are nested too deeply");
}

TEST(ParseRegistryScript, TakesBlocksInEachOtherAsFarAs32) {
  const auto nested = [](int blocks) {
    std::string script = "HKCR ";
    for (int i = 0; i < blocks; ++i)
      script += "{ A ";
    return ParseRegistryScript(script + std::string(static_cast<std::size_t>(blocks), '}'), "");
  };
  EXPECT_TRUE(nested(32).script);
  EXPECT_EQ(nested(33).error.message, "keys are nested too deeply");
}

TEST(ClassScripts, RegisterEachClassUnderItsOwnNames) {
  EXPECT_THAT(
      RegisterCalls(ReadScript("beeper.rgs")),
      ElementsAre(
          "create Brantel_Notifications.Beeper.1",
          "set Brantel_Notifications.Beeper.1 [] = Beeper Class",
          "create Brantel_Notifications.Beeper.1\\CLSID",
          "set Brantel_Notifications.Beeper.1\\CLSID [] = {E0F08BCF-0BD9-3D64-842A-2FCEAE91F17E}",
          "create Brantel_Notifications.Beeper",
          "set Brantel_Notifications.Beeper [] = Beeper Class",
          "create Brantel_Notifications.Beeper\\CLSID",
          "set Brantel_Notifications.Beeper\\CLSID [] = {E0F08BCF-0BD9-3D64-842A-2FCEAE91F17E}",
          "create Brantel_Notifications.Beeper\\CurVer",
          "set Brantel_Notifications.Beeper\\CurVer [] = Brantel_Notifications.Beeper.1",
          "create CLSID", "delete tree CLSID\\{E0F08BCF-0BD9-3D64-842A-2FCEAE91F17E}",
          "create CLSID\\{E0F08BCF-0BD9-3D64-842A-2FCEAE91F17E}",
          "set CLSID\\{E0F08BCF-0BD9-3D64-842A-2FCEAE91F17E} [] = Beeper Class",
          "create CLSID\\{E0F08BCF-0BD9-3D64-842A-2FCEAE91F17E}\\ProgID",
          "set CLSID\\{E0F08BCF-0BD9-3D64-842A-2FCEAE91F17E}\\ProgID [] = "
          "Brantel_Notifications.Beeper.1",
          "create CLSID\\{E0F08BCF-0BD9-3D64-842A-2FCEAE91F17E}\\VersionIndependentProgID",
          "set CLSID\\{E0F08BCF-0BD9-3D64-842A-2FCEAE91F17E}\\VersionIndependentProgID [] = "
          "Brantel_Notifications.Beeper",
          "create CLSID\\{E0F08BCF-0BD9-3D64-842A-2FCEAE91F17E}\\InprocServer32",
          R"(set CLSID\{E0F08BCF-0BD9-3D64-842A-2FCEAE91F17E}\InprocServer32 [] = C:\m.dll)",
          "set CLSID\\{E0F08BCF-0BD9-3D64-842A-2FCEAE91F17E}\\InprocServer32 [ThreadingModel] = "
          "Apartment",
          "create CLSID\\{E0F08BCF-0BD9-3D64-842A-2FCEAE91F17E}\\TypeLib",
          "set CLSID\\{E0F08BCF-0BD9-3D64-842A-2FCEAE91F17E}\\TypeLib [] = "
          "{5625C924-5719-DA0E-EE98-237AC5FB0A3C}"));
}

TEST(ClassScripts, MarkOnlyTheMailClassProgrammable) {
  EXPECT_THAT(ReadScript("smtp_mail.rgs"), HasSubstr("ForceRemove Programmable"));
  for (const char* name : {"sound.rgs", "win_popup.rgs", "launch_program.rgs", "beeper.rgs",
                           "pager.rgs", "voice.rgs"}) {
    EXPECT_FALSE(ReadScript(name).empty()) << name;
    EXPECT_EQ(ReadScript(name).find("Programmable"), std::string::npos) << name;
  }
}

TEST(ClassScripts, UnregisterAllButTheSharedKey) {
  EXPECT_THAT(UnregisterCalls(ReadScript("sound.rgs")),
              ElementsAre("delete key Brantel_Notifications.Sound.1\\CLSID",
                          "delete key Brantel_Notifications.Sound.1",
                          "delete key Brantel_Notifications.Sound\\CLSID",
                          "delete key Brantel_Notifications.Sound\\CurVer",
                          "delete key Brantel_Notifications.Sound",
                          "delete tree CLSID\\{A93D5106-D415-9AE1-2956-2D685A03A67B}"));
}

}  // namespace
}  // namespace brantel
