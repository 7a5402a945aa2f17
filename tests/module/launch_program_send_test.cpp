#include <windows.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "system/windows/bstr_win32.h"
#include "system/windows/handle_win32.h"
#include "tests/module/allocation_ledger.h"
#include "tests/module/expected_classes.h"
#include "tests/module/instance_bytes.h"
#include "tests/module/loaded_module.h"
#include "tests/module/own_bits.h"
#include "tests/module/recording_host.h"
#include "tests/module/scratch_directory.h"
#include "tests/module/started_program.h"

namespace brantel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;
using ::testing::Values;

class LaunchProgramSend : public ::testing::Test {
 protected:
  LaunchProgramSend() {
    if (notifier_->Initialize(&host_) != S_OK) throw std::runtime_error("no host can be bound");
  }

  [[nodiscard]] HRESULT Send(const std::wstring& instance) const {
    return notifier_->Send(Bstr(instance).get());
  }

  [[nodiscard]] HRESULT SendFileOf(std::string_view bytes) const {
    return Send(WriteInstance(bytes));
  }

  [[nodiscard]] HRESULT SendInstance(const LaunchProgramTexts& texts) const {
    return SendFileOf(InstanceBytes(texts));
  }

  [[nodiscard]] std::wstring WriteInstance(std::string_view bytes) const {
    return scratch_.Write(L"alert", bytes).wstring();
  }

  // A started program leaves the handle of its thread with the starter.
  void ExpectNothingStarted() const { EXPECT_THAT(handles_.NewHandles(), IsEmpty()); }

  void ExpectRefusal(HRESULT result, const std::wstring& instance) const {
    EXPECT_EQ(result, static_cast<HRESULT>(0x80004005));
    EXPECT_THAT(
        host_.log_calls,
        ElementsAre(LogCall{1, instance}, LogCall{1, L" - Failed to load notification from disk."},
                    LogCall{1, L"\r"}));
    EXPECT_THAT(host_.expand_calls, IsEmpty());
    ExpectNothingStarted();
  }

  void ExpectRefusalOfFileWith(std::string_view bytes) {
    const std::wstring instance = WriteInstance(bytes);
    host_.log_calls.clear();
    ExpectRefusal(Send(instance), instance);
  }

  ScratchDirectory scratch_;
  LoadedModule module_;
  RecordingHost host_;
  ComPointer<INotifier> notifier_ = module_.CreateNotifier(kLaunchProgram);
  ProgramWatch watch_{scratch_};
  HandleWatch handles_;  // from when all else is there
};

// Instances that start the child program, which lives until the test ends.
class LaunchedProgram : public LaunchProgramSend {
 protected:
  LaunchedProgram() { std::filesystem::create_directory(folder_); }

  [[nodiscard]] std::string program() const { return program_.string(); }
  [[nodiscard]] std::string folder() const { return folder_.string(); }

  const std::filesystem::path program_ = PlaceChildProgram(scratch_, L"child.exe");
  const std::filesystem::path folder_ = scratch_.path() / L"working folder";
};

// What is sent, and when

// Nothing is read of the file but its beginning.
TEST_F(LaunchProgramSend, RefusesAForeignFileOfAnySize) {
  const std::wstring instance = WriteInstance("of nobody's");
  std::filesystem::resize_file(instance, 1'300'000'000);
  ExpectRefusal(Send(instance), instance);
}

TEST_F(LaunchProgramSend, FailsForAnEmptyArgumentAndLogsNothing) {
  EXPECT_EQ(Send(L""), E_FAIL);
  EXPECT_EQ(notifier_->Send(nullptr), E_FAIL);
  EXPECT_THAT(host_.log_calls, IsEmpty());
  EXPECT_THAT(host_.expand_calls, IsEmpty());
}

TEST_F(LaunchProgramSend, JudgesAnArgumentEmptyByItsFirstCharacter) {
  EXPECT_EQ(Send(std::wstring(L"\0Z:\\file", 8)), E_FAIL);
  EXPECT_THAT(host_.log_calls, IsEmpty());
}

TEST_F(LaunchProgramSend, FailsForAnEmptyArgumentAlsoWithoutAHost) {
  ASSERT_EQ(notifier_->Shutdown(), S_OK);

  EXPECT_EQ(Send(L""), E_FAIL);
  EXPECT_EQ(notifier_->Send(nullptr), E_FAIL);
}

TEST_F(LaunchedProgram, IsNotStartedBeforeInitialize) {
  const std::wstring instance = WriteInstance(InstanceBytes({program(), folder(), ""}));
  const auto fresh = module_.CreateNotifier(kLaunchProgram);

  EXPECT_EQ(fresh->Send(Bstr(instance).get()), S_OK);
  ExpectNothingStarted();
}

TEST_F(LaunchedProgram, IsNotStartedAfterShutdown) {
  ASSERT_EQ(notifier_->Shutdown(), S_OK);

  EXPECT_EQ(SendInstance({program(), folder(), ""}), S_OK);
  ExpectNothingStarted();
  EXPECT_THAT(host_.expand_calls, IsEmpty());
  EXPECT_THAT(host_.log_calls, IsEmpty());
}

TEST_F(LaunchProgramSend, SucceedsForAMissingFileWithoutAHost) {
  const auto fresh = module_.CreateNotifier(kLaunchProgram);

  EXPECT_EQ(fresh->Send(Bstr((scratch_.path() / L"missing").wstring()).get()), S_OK);
  EXPECT_THAT(host_.log_calls, IsEmpty());
}

// Files that cannot be loaded

TEST_F(LaunchProgramSend, LogsThreeTextsForAMissingFile) {
  const std::wstring missing = (scratch_.path() / L"missing").wstring();

  ExpectRefusal(Send(missing), missing);
}

TEST_F(LaunchProgramSend, LogsThePathUnchangedWhateverItsCharacters) {
  // Of several scripts and beyond the basic plane, so that no ANSI code page has them all.
  const std::wstring missing =
      (scratch_.path() / L"caf\u00E9 \u0416 \u4E2D\u6587 \uC911 \U0001F514 ? * \r\n end ")
          .wstring();

  ExpectRefusal(Send(missing), missing);
}

TEST_F(LaunchProgramSend, LogsALongPathUnchanged) {
  const std::wstring missing = scratch_.path().wstring() + L"\\" + std::wstring(5000, L'x');

  ExpectRefusal(Send(missing), missing);
}

TEST_F(LaunchProgramSend, RefusesAFolder) {
  const std::wstring folder = scratch_.path().wstring();

  ExpectRefusal(Send(folder), folder);
}

TEST_F(LaunchProgramSend, RefusesAFileThatEndsWithinTheMagic) {
  for (std::size_t length = 0; length < 16; ++length) {
    SCOPED_TRACE(length);
    ExpectRefusalOfFileWith(kLaunchProgramMagic.substr(0, length));
  }
}

TEST_F(LaunchProgramSend, RefusesTheFilesOfOtherClasses) {
  for (const ExpectedClass& other : kExpectedClasses) {
    if (std::string_view(other.name) == "LaunchProgram") continue;
    SCOPED_TRACE(other.name);
    ExpectRefusalOfFileWith(MagicBytes(other) + TextField("program") + TextField("folder") +
                            TextField(""));
  }
}

TEST_F(LaunchProgramSend, RefusesAMagicThatIsWrongInAnyByte) {
  const std::string right = InstanceBytes({"program", "folder", ""});
  for (std::size_t i = 0; i < 16; ++i) {
    SCOPED_TRACE(i);
    std::string wrong = right;
    wrong[i] = static_cast<char>(wrong[i] ^ 1);
    ExpectRefusalOfFileWith(wrong);
  }
}

TEST_F(LaunchProgramSend, RefusesTheMagicInTheOrderOfItsText) {
  ExpectRefusalOfFileWith(
      std::string("\xEC\xEC\x7E\x6C\x8E\x18\x4C\xA2\xC5\x6F\x53\x34\xC2\xBD\x79\x45", 16) +
      TextField("program") + TextField("folder") + TextField(""));
}

TEST_F(LaunchProgramSend, RefusesTextsStoredWithALengthOf1024OrMore) {
  for (const std::uint32_t length : {1024U, 1025U, 65536U, 0x7FFFFFFFU, 0x80000000U, 0xFFFFFFFFU}) {
    for (std::size_t field = 0; field < 3; ++field) {
      SCOPED_TRACE(testing::Message() << "length " << length << " of field " << field);
      std::string bytes(kLaunchProgramMagic);
      for (std::size_t i = 0; i < 3; ++i) {
        bytes += i == field ? LengthBytes(length) + std::string(1024, '\0') : TextField("text");
      }
      ExpectRefusalOfFileWith(bytes);
    }
  }
}

TEST_F(LaunchProgramSend, RefusesAFileThatSomebodyWrites) {
  const std::wstring instance = WriteInstance(InstanceBytes({"program", "folder", ""}));
  const Handle writer(CreateFileW(instance.c_str(), GENERIC_WRITE,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0,
                                  nullptr));
  ASSERT_TRUE(writer);
  const HandleWatch handles;

  EXPECT_EQ(Send(instance), E_FAIL);
  EXPECT_THAT(host_.log_calls, SizeIs(3));
  EXPECT_THAT(handles.NewHandles(), IsEmpty());
}

TEST_F(LaunchProgramSend, RefusesAFileWhoseReaderLetsNobodyIn) {
  const std::wstring instance = WriteInstance(InstanceBytes({"program", "folder", ""}));
  const Handle reader(
      CreateFileW(instance.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
  ASSERT_TRUE(reader);

  EXPECT_EQ(Send(instance), E_FAIL);
  EXPECT_THAT(host_.log_calls, SizeIs(3));
}

TEST_F(LaunchProgramSend, ReturnsTheLoadFailureAlsoWhenTheHostCannotLogIt) {
  const std::wstring missing = (scratch_.path() / L"missing").wstring();
  host_.log_result = kHostFailure;

  ExpectRefusal(Send(missing), missing);
}

TEST_F(LaunchProgramSend, NeitherKeepsTheFileOpenNorChangesIt) {
  const std::string bytes = InstanceBytes({"no such program.exe", "", ""});
  const std::wstring instance = WriteInstance(bytes);
  EXPECT_EQ(Send(instance), E_FAIL);

  const Handle sole_user(CreateFileW(instance.c_str(), GENERIC_READ | DELETE, 0, nullptr,
                                     OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  ASSERT_TRUE(sole_user);
  std::string kept(bytes.size() + 1, '\0');
  DWORD count = 0;
  ReadFile(sole_user.get(), kept.data(), static_cast<DWORD>(kept.size()), &count, nullptr);
  kept.resize(count);
  EXPECT_EQ(kept, bytes);
}

// Files that can be loaded. The expansion shows which arguments were read.

TEST_F(LaunchProgramSend, LoadsTextsStoredWithALengthOf1023) {
  const std::string longest(1022, 'x');
  const std::array<LaunchProgramTexts, 3> instances = {{
      {longest, "folder", "arguments"},
      {"no such program.exe", longest, "arguments"},
      {"no such program.exe", "folder", longest},
  }};
  for (const LaunchProgramTexts& texts : instances) {
    host_.expand_calls.clear();
    EXPECT_EQ(SendInstance(texts), E_FAIL);
    EXPECT_THAT(host_.expand_calls,
                ElementsAre(ExpandCall{false, std::wstring(texts.program_arguments.begin(),
                                                           texts.program_arguments.end())}));
  }
  EXPECT_THAT(host_.log_calls, IsEmpty());
}

TEST_F(LaunchProgramSend, TakesATextUpToItsFirstNul) {
  const std::string bytes = std::string(kLaunchProgramMagic) +
                            TextField(std::string("no such.exe\0rest", 16)) + TextField("folder") +
                            TextField(std::string("first\0second", 12));

  EXPECT_EQ(SendFileOf(bytes), E_FAIL);
  EXPECT_THAT(host_.expand_calls, ElementsAre(ExpandCall{false, L"first"}));
  EXPECT_THAT(host_.log_calls, IsEmpty());
}

TEST_F(LaunchProgramSend, TakesATextOfLengthZeroForEmpty) {
  const std::string bytes = std::string(kLaunchProgramMagic) + TextField("no such program.exe") +
                            TextField("folder") + LengthBytes(0);

  EXPECT_EQ(SendFileOf(bytes), E_FAIL);
  EXPECT_THAT(host_.expand_calls, ElementsAre(ExpandCall{true, L""}));
  EXPECT_THAT(host_.log_calls, IsEmpty());
}

TEST_F(LaunchProgramSend, LoadsTheBareMagicAndStartsNothing) {
  EXPECT_EQ(SendFileOf(kLaunchProgramMagic), E_FAIL);
  EXPECT_THAT(host_.expand_calls, ElementsAre(ExpandCall{true, L""}));
  EXPECT_THAT(host_.log_calls, IsEmpty());
  ExpectNothingStarted();
}

// Ends that a file may have after its program filename; what is missing is empty.
class TruncatedInstance : public LaunchedProgram,
                          public ::testing::WithParamInterface<std::string> {};

INSTANTIATE_TEST_SUITE_P(Ends, TruncatedInstance,
                         Values(std::string(), std::string("\x01\x00", 2),
                                std::string("\x01\x00\x00\x00", 4),
                                std::string("\x01\x00\x00\x00\x00", 5),
                                std::string("\x01\x00\x00\x00\x00\x03", 6),
                                std::string("\x01\x00\x00\x00\x00\x03\x00\x00\x00", 9)));

TEST_P(TruncatedInstance, StartsTheProgramWithEmptyTextsForTheMissingOnes) {
  const std::string bytes = std::string(kLaunchProgramMagic) + TextField(program()) + GetParam();

  EXPECT_EQ(SendFileOf(bytes), S_OK);
  const ProgramReport& report = watch_.AwaitReport();
  EXPECT_EQ(report.command_line, program() + " ");
  EXPECT_EQ(report.directory, std::filesystem::current_path().string());
  EXPECT_THAT(host_.expand_calls, ElementsAre(ExpandCall{true, L""}));
  EXPECT_THAT(host_.log_calls, IsEmpty());
}

TEST_F(LaunchedProgram, IsReadFromAFileThatAnotherReads) {
  const std::wstring instance = WriteInstance(InstanceBytes({program(), folder(), ""}));
  const Handle reader(CreateFileW(instance.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                  OPEN_EXISTING, 0, nullptr));
  ASSERT_TRUE(reader);

  EXPECT_EQ(Send(instance), S_OK);
  EXPECT_EQ(watch_.AwaitReport().command_line, program() + " ");
}

TEST_F(LaunchedProgram, IsReadFromAFileWithBytesBehindItsTexts) {
  EXPECT_EQ(SendFileOf(InstanceBytes({program(), folder(), "a"}) + "bytes of a later version"),
            S_OK);
  EXPECT_EQ(watch_.AwaitReport().command_line, program() + " a");
}

// The host's part

TEST_F(LaunchedProgram, HasItsArgumentsExpandedOnceAndNothingLogged) {
  EXPECT_EQ(SendInstance({program(), folder(), "%D is %S"}), S_OK);
  watch_.AwaitReport();

  EXPECT_THAT(host_.expand_calls, ElementsAre(ExpandCall{false, L"%D is %S"}));
  EXPECT_THAT(host_.log_calls, IsEmpty());
  EXPECT_EQ(host_.trigger_calls, 0);
}

TEST_F(LaunchedProgram, HasEmptyArgumentsExpandedAsANullText) {
  EXPECT_EQ(SendInstance({program(), folder(), ""}), S_OK);
  watch_.AwaitReport();

  EXPECT_THAT(host_.expand_calls, ElementsAre(ExpandCall{true, L""}));
}

TEST_F(LaunchedProgram, IsNotStartedWhenTheHostCannotExpand) {
  for (const HRESULT failure : {kHostFailure, E_FAIL, E_OUTOFMEMORY, static_cast<HRESULT>(-1),
                                static_cast<HRESULT>(0x80140001)}) {
    host_.expansion = {.result = failure};
    EXPECT_EQ(SendInstance({program(), folder(), "text"}), failure);
  }
  ExpectNothingStarted();
  EXPECT_THAT(host_.log_calls, IsEmpty());
}

TEST_F(LaunchedProgram, IsStartedWithAnySuccessOfTheHostAndPassesItOn) {
  host_.expansion = {.result = S_FALSE, .replacement = Replacement::kText, .text = L"expanded"};

  EXPECT_EQ(SendInstance({program(), folder(), "text"}), S_FALSE);
  EXPECT_EQ(watch_.AwaitReport().command_line, program() + " expanded");
}

TEST_F(LaunchedProgram, HasNoArgumentsWhenTheHostHandsBackNull) {
  host_.expansion = {.replacement = Replacement::kNull};

  EXPECT_EQ(SendInstance({program(), folder(), "text"}), S_OK);
  EXPECT_EQ(watch_.AwaitReport().command_line, program() + " ");
}

TEST_F(LaunchedProgram, HasItsOwnArgumentsWhenTheHostLeavesThem) {
  host_.expansion = {.replacement = Replacement::kNone};

  EXPECT_EQ(SendInstance({program(), folder(), "as they are"}), S_OK);
  EXPECT_EQ(watch_.AwaitReport().command_line, program() + " as they are");
}

TEST_F(LaunchedProgram, IsStartedThoughTheHostEndsTheBindingMeanwhile) {
  host_.during_expansion = [&] { notifier_->Shutdown(); };

  EXPECT_EQ(SendInstance({program(), folder(), "text"}), S_OK);
  EXPECT_EQ(watch_.AwaitReport().command_line, program() + " text");
  EXPECT_EQ(host_.references(), 1);
}

// The command line

TEST_F(LaunchedProgram, HasTheFilenameABlankAndTheExpandedArguments) {
  host_.expansion = {.replacement = Replacement::kText,
                     .text = L"\"router 7\" is  down\t100%  'now'  "};

  EXPECT_EQ(SendInstance({program(), folder(), "%D"}), S_OK);
  EXPECT_EQ(watch_.AwaitReport().command_line, program() + " \"router 7\" is  down\t100%  'now'  ");
}

TEST_F(LaunchedProgram, HasTheFilenameAsItIsWritten) {
  const std::string filename = "\"" + program() + "\" /first";

  EXPECT_EQ(SendInstance({filename, folder(), "second"}), S_OK);
  EXPECT_EQ(watch_.AwaitReport().command_line, filename + " second");
}

TEST_F(LaunchedProgram, IsFoundByTheFirstBlankSeparatedPrefixOfAnUnquotedFilename) {
  PlaceChildProgram(scratch_, L"one.exe");
  PlaceChildProgram(scratch_, L"one two.exe");
  const std::string filename = (scratch_.path() / L"one two.exe").string();

  EXPECT_EQ(SendInstance({filename, folder(), "three"}), S_OK);
  const ProgramReport& report = watch_.AwaitReport();
  EXPECT_EQ(report.program, (scratch_.path() / L"one.exe").string());
  EXPECT_EQ(report.command_line, filename + " three");
}

TEST_F(LaunchedProgram, IsFoundByALaterPrefixWhereThereIsNoFirst) {
  PlaceChildProgram(scratch_, L"one two.exe");
  const std::string filename = (scratch_.path() / L"one two.exe").string();

  EXPECT_EQ(SendInstance({filename, folder(), ""}), S_OK);
  EXPECT_EQ(watch_.AwaitReport().program, filename);
}

TEST_F(LaunchedProgram, HasLongArgumentsWhole) {
  std::wstring expanded;
  for (int i = 0; i < 600; ++i)
    expanded += L"word" + std::to_wstring(i) + L" ";
  host_.expansion = {.replacement = Replacement::kText, .text = expanded};

  EXPECT_EQ(SendInstance({program(), folder(), "%L"}), S_OK);
  EXPECT_EQ(watch_.AwaitReport().command_line,
            program() + " " + std::string(expanded.begin(), expanded.end()));
}

// The characters beyond ASCII that are one byte each in the system's code page, whatever that is.
std::string BytesBeyondAscii() {
  std::string bytes;
  for (int value = 0x80; value <= 0xFF; ++value) {
    const char byte = static_cast<char>(value);
    std::array<wchar_t, 2> wide{};
    if (MultiByteToWideChar(CP_ACP, MB_ERR_INVALID_CHARS, &byte, 1, wide.data(), 2) != 1) continue;
    std::array<char, 4> back{};
    const int length =
        WideCharToMultiByte(CP_ACP, 0, wide.data(), 1, back.data(), 4, nullptr, nullptr);
    if (length == 1 && back.front() == byte) bytes.push_back(byte);
  }
  return bytes;
}

TEST_F(LaunchedProgram, HasItsArgumentsByteForByteInTheSystemsCodePage) {
  const std::string bytes = BytesBeyondAscii();
  ASSERT_FALSE(bytes.empty());

  EXPECT_EQ(SendInstance({program(), folder(), bytes}), S_OK);
  EXPECT_EQ(watch_.AwaitReport().command_line, program() + " " + bytes);
  ASSERT_THAT(host_.expand_calls, SizeIs(1));
  EXPECT_EQ(host_.expand_calls.front().text.size(), bytes.size());
}

// In full width: quotation mark, ampersand, backslash. Code pages that hold them keep them.
TEST_F(LaunchedProgram, HasNoSignInItsArgumentsThatTheHostDidNotPutThere) {
  host_.expansion = {S_OK, Replacement::kText, L"\"a\uFF02\uFF06\uFF3C\""};

  EXPECT_EQ(SendInstance({program(), folder(), "%n"}), S_OK);
  const std::string arguments = watch_.AwaitReport().command_line.substr(program().size() + 1);
  EXPECT_EQ(arguments.substr(0, 2), "\"a");
  EXPECT_EQ(arguments.back(), '"');
  EXPECT_EQ(arguments.substr(2, arguments.size() - 3).find_first_of("\"&\\"), std::string::npos);
}

// The start

TEST_F(LaunchedProgram, StartsInTheWorkingPath) {
  EXPECT_EQ(SendInstance({program(), folder(), ""}), S_OK);
  EXPECT_EQ(watch_.AwaitReport().directory, folder());
}

TEST_F(LaunchedProgram, StartsInTheHostsOwnFolderForAnEmptyWorkingPath) {
  const std::filesystem::path own_folder = std::filesystem::current_path();
  std::filesystem::current_path(folder_);
  const HRESULT result = SendInstance({program(), "", ""});
  std::filesystem::current_path(own_folder);

  EXPECT_EQ(result, S_OK);
  EXPECT_EQ(watch_.AwaitReport().directory, folder());
}

TEST_F(LaunchedProgram, StartsWithoutAnInstructionHowToShowItself) {
  EXPECT_EQ(SendInstance({program(), folder(), ""}), S_OK);
  const ProgramReport& report = watch_.AwaitReport();
  EXPECT_EQ(report.startup_size, kStartupSize);
  EXPECT_EQ(report.startup_flags, 0U);
  EXPECT_EQ(report.show_window, 1U);
}

TEST_F(LaunchedProgram, StartsWithNormalPriorityWhateverTheHosts) {
  const DWORD own = GetPriorityClass(GetCurrentProcess());
  SetPriorityClass(GetCurrentProcess(), BELOW_NORMAL_PRIORITY_CLASS);
  const HRESULT result = SendInstance({program(), folder(), ""});
  SetPriorityClass(GetCurrentProcess(), own);

  EXPECT_EQ(result, S_OK);
  EXPECT_EQ(watch_.AwaitReport().priority_class, 0x20U);
}

TEST_F(LaunchedProgram, RunsOnAfterSendHasReturned) {
  constexpr DWORD kNoWait = 15000;  // ms, half of the child's life and far more than its start
  const DWORD start = GetTickCount();
  EXPECT_EQ(SendInstance({program(), folder(), ""}), S_OK);
  EXPECT_LT(GetTickCount() - start, kNoWait);
  watch_.AwaitReport();

  EXPECT_TRUE(watch_.IsRunning());
  watch_.LetItEnd();
  EXPECT_FALSE(watch_.IsRunning());
}

TEST_F(LaunchedProgram, RunsOnAfterTheNotifierIsGone) {
  EXPECT_EQ(SendInstance({program(), folder(), ""}), S_OK);
  watch_.AwaitReport();
  EXPECT_EQ(notifier_->Shutdown(), S_OK);
  notifier_ = {};

  EXPECT_EQ(module_.CanUnloadNow(), S_OK);
  EXPECT_TRUE(watch_.IsRunning());
}

TEST_F(LaunchedProgram, LeavesTheHandleOfItsThreadAndNoOther) {
  const HandleWatch handles;

  EXPECT_EQ(SendInstance({program(), folder(), ""}), S_OK);
  const std::vector<HANDLE> left = handles.NewHandles();
  ASSERT_THAT(left, SizeIs(1));
  EXPECT_EQ(GetProcessIdOfThread(left.front()), watch_.AwaitReport().process_id);
}

TEST_F(LaunchedProgram, InheritsNoHandles) {
  SECURITY_ATTRIBUTES inheritable{sizeof inheritable, nullptr, TRUE};
  const std::wstring locked = scratch_.Write(L"locked", "").wstring();
  {
    const Handle sole_user(CreateFileW(locked.c_str(), GENERIC_READ, 0, &inheritable, OPEN_EXISTING,
                                       FILE_ATTRIBUTE_NORMAL, nullptr));
    ASSERT_TRUE(sole_user);
    EXPECT_EQ(SendInstance({program(), folder(), ""}), S_OK);
  }
  watch_.AwaitReport();

  // The child would hold the file's only use.
  EXPECT_TRUE(watch_.IsRunning());
  EXPECT_TRUE(Handle(CreateFileW(locked.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                 FILE_ATTRIBUTE_NORMAL, nullptr)));
}

TEST_F(LaunchProgramSend, FailsForAProgramThatDoesNotExistAndLogsNothing) {
  const std::string missing = (scratch_.path() / L"missing.exe").string();

  EXPECT_EQ(SendInstance({missing, "", "text"}), E_FAIL);
  EXPECT_THAT(host_.log_calls, IsEmpty());
  EXPECT_THAT(host_.expand_calls, SizeIs(1));
  ExpectNothingStarted();
}

TEST_F(LaunchProgramSend, FailsForAFileThatIsNoProgramAndLogsNothing) {
  const std::string no_program = scratch_.Write(L"text.exe", "no program").string();

  EXPECT_EQ(SendInstance({no_program, "", ""}), E_FAIL);
  EXPECT_THAT(host_.log_calls, IsEmpty());
  ExpectNothingStarted();
}

TEST_F(LaunchedProgram, IsNotStartedInAFolderThatDoesNotExist) {
  EXPECT_EQ(SendInstance({program(), (scratch_.path() / L"missing").string(), ""}), E_FAIL);
  EXPECT_THAT(host_.log_calls, IsEmpty());
  ExpectNothingStarted();
}

// A failing start gives E_FAIL even where the expansion gave another success.
TEST_F(LaunchProgramSend, FailsForAFailingStartWhateverSuccessTheHostGave) {
  host_.expansion = {.result = S_FALSE};

  EXPECT_EQ(SendInstance({"no such program.exe", "", ""}), E_FAIL);
}

// What is owed to the host: no BSTR is lost or freed twice and no reference kept, however it
// answers.

struct Answer {
  const char* name;
  Expansion expansion;
  HRESULT log_result;
};

class LaunchProgramOwnership : public LaunchProgramSend,
                               public ::testing::WithParamInterface<Answer> {
 protected:
  LaunchProgramOwnership() {
    host_.expansion = GetParam().expansion;
    host_.log_result = GetParam().log_result;
  }

  // Twice, since what the system keeps after a first call is not owed.
  void ExpectBalanced(const LaunchProgramTexts& texts) const {
    ExpectBalancedFile(InstanceBytes(texts));
  }
  void ExpectBalancedFile(std::string_view bytes) const {
    const Bstr instance(WriteInstance(bytes));
    notifier_->Send(instance.get());
    const AllocationBalance balance;
    notifier_->Send(instance.get());
    EXPECT_EQ(balance.Outstanding(), 0);
    EXPECT_EQ(balance.StrayFrees(), 0);
    EXPECT_EQ(host_.references(), 2);
  }
};

INSTANTIATE_TEST_SUITE_P(
    Answers, LaunchProgramOwnership,
    Values(Answer{"Copy", {}, S_OK},
           Answer{"Text", {.replacement = Replacement::kText, .text = L"expanded"}, S_OK},
           Answer{"EmptyText", {.replacement = Replacement::kText, .text = L""}, S_OK},
           Answer{"Null", {.replacement = Replacement::kNull}, S_OK},
           Answer{"Untouched", {.replacement = Replacement::kNone}, S_OK},
           Answer{"OtherSuccess", {.result = S_FALSE, .replacement = Replacement::kText}, S_OK},
           Answer{"FailureUntouched",
                  {.result = kHostFailure, .replacement = Replacement::kNone},
                  S_OK},
           Answer{"FailureWithText",
                  {.result = kHostFailure, .replacement = Replacement::kText, .text = L"why"},
                  S_OK},
           Answer{"FailureWithNull",
                  {.result = kHostFailure, .replacement = Replacement::kNull},
                  S_OK},
           Answer{"LogFailure", {}, kHostFailure}),
    [](const ::testing::TestParamInfo<Answer>& answer) { return answer.param.name; });

TEST_P(LaunchProgramOwnership, IsBalancedForAnInstanceWithArguments) {
  ExpectBalanced({"no such program.exe", "folder", "%D"});
}

TEST_P(LaunchProgramOwnership, IsBalancedForAnInstanceWithoutArguments) {
  ExpectBalanced({"no such program.exe", "folder", ""});
}

TEST_P(LaunchProgramOwnership, IsBalancedForAFileThatCannotBeLoaded) {
  ExpectBalancedFile("no instance");
}

TEST_F(LaunchedProgram, LeavesNoTextBehindAndOneReference) {
  const Bstr instance(WriteInstance(InstanceBytes({program(), folder(), "%D"})));
  const AllocationBalance balance;

  EXPECT_EQ(notifier_->Send(instance.get()), S_OK);
  EXPECT_EQ(balance.Outstanding(), 0);
  EXPECT_EQ(balance.StrayFrees(), 0);
  EXPECT_EQ(host_.references(), 2);
  watch_.AwaitReport();
}

}  // namespace
}  // namespace brantel
