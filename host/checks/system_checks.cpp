#include "host/checks/system_checks.h"

#include <algorithm>
#include <cstdint>
#include <optional>

#include "beeper/beeper_description.h"
#include "host/checks/text_checks.h"
#include "host/text/letter_case.h"
#include "launch_program/launch_program_description.h"
#include "port/com_port_number.h"

namespace brantel::host {
namespace {

std::optional<std::string> ModemAnswer(const Subject& subject) {
  return subject.system.ModemAnswer(SetupOfLine(subject.notifier_class, subject.settings));
}

bool IsSeparator(char c) {
  return c == '\\' || c == '/';
}

bool HasSeparator(std::string_view path) {
  return path.find_first_of("\\/") != std::string_view::npos;
}

std::string_view LastComponent(std::string_view path) {
  return path.substr(path.find_last_of("\\/:") + 1);
}

// How the system takes a command line apart to find the program: what stands in quotation marks, or
// else what ends at the first blank, at the second, and so on.
std::vector<std::string> ProgramNames(std::string_view command_line) {
  if (command_line.starts_with('"')) {
    command_line.remove_prefix(1);
    return {std::string(command_line.substr(0, command_line.find('"')))};
  }
  std::vector<std::string> names;
  for (std::size_t i = 0; i <= command_line.size(); ++i) {
    const bool ends_here = i == command_line.size() || command_line[i] == ' ';
    if (ends_here && i > 0 && command_line[i - 1] != ' ')
      names.emplace_back(command_line.substr(0, i));
  }
  return names;
}

bool IsProgramThere(const CheckedSystem& system, const std::string& name) {
  if (LeadsToAnotherComputer(name)) return true;
  // A name without an extension is one of an ".exe".
  const bool is_whole = LastComponent(name).find('.') != std::string_view::npos;
  for (const std::string& file : {name, is_whole ? name : name + ".exe"}) {
    if (system.KindOf(file) == PathKind::kFile) return true;
  }
  return !HasSeparator(name) && system.FindsProgram(name);
}

// The place among the names of the one that is started; their number where it is none of them.
std::size_t StartedName(const CheckedValue& value, const std::vector<std::string>& names) {
  const auto there = std::ranges::find_if(
      names, [&](const std::string& name) { return IsProgramThere(value.subject.system, name); });
  return static_cast<std::size_t>(there - names.begin());
}

bool IsBatchFile(std::string_view name) {
  const std::string_view extension = name.substr(std::min(name.rfind('.'), name.size()));
  return EqualIgnoringCase(extension, ".bat") || EqualIgnoringCase(extension, ".cmd");
}

Registration RegistrationOf(const CheckedValue& value) {
  return value.subject.system.RegistrationOf(value.subject.notifier_class.clsid);
}

std::optional<std::string> NeededFile(const Registration& registration) {
  return registration.is_needed ? registration.module_file : std::nullopt;
}

}  // namespace

bool LeadsToAnotherComputer(std::string_view path) {
  return path.size() > 1 && IsSeparator(path[0]) && IsSeparator(path[1]);
}

bool IsOnAnotherComputer(const CheckedValue& value) {
  return LeadsToAnotherComputer(value.text);
}

bool IsRelative(const CheckedValue& value) {
  const bool has_drive =
      value.text.size() > 2 && value.text[1] == ':' && IsSeparator(value.text[2]);
  return !has_drive && !IsOnAnotherComputer(value);
}

bool IsNoFile(const CheckedValue& value) {
  return !IsOnAnotherComputer(value) && value.subject.system.KindOf(value.text) != PathKind::kFile;
}

bool IsNoFolder(const CheckedValue& value) {
  return !IsOnAnotherComputer(value) &&
         value.subject.system.KindOf(value.text) != PathKind::kDirectory;
}

bool IsNoWave(const CheckedValue& value) {
  if (IsOnAnotherComputer(value) || IsNoFile(value)) return false;
  const std::string beginning = value.subject.system.FirstBytes(value.text);
  return !beginning.starts_with("RIFF") || std::string_view(beginning).substr(8) != "WAVE";
}

bool StartsNothing(const CheckedValue& value) {
  const auto names = ProgramNames(value.text);
  return StartedName(value, names) == names.size();
}

bool StartsAnotherProgram(const CheckedValue& value) {
  const auto names = ProgramNames(value.text);
  const std::size_t started = StartedName(value, names);
  if (started + 1 >= names.size()) return false;
  return std::any_of(
      names.begin() + static_cast<std::ptrdiff_t>(started) + 1, names.end(),
      [&](const std::string& name) { return IsProgramThere(value.subject.system, name); });
}

bool HasBlanksWithoutQuotes(const CheckedValue& value) {
  return ProgramNames(value.text).size() > 1 && !StartsAnotherProgram(value);
}

bool HasNoFolder(const CheckedValue& value) {
  const auto names = ProgramNames(value.text);
  return !names.empty() && !HasSeparator(names.front());
}

bool FillsArgumentsOfBatchFile(const CheckedValue& value) {
  const auto names = ProgramNames(value.subject.FieldText(launch_program_field::kProgramFilename));
  return std::ranges::any_of(names, [](const std::string& name) { return IsBatchFile(name); }) &&
         HasVariable(value);
}

bool HasMissingPort(const CheckedValue& value) {
  const auto port = ComPortNumber(value.text);
  return port && *port != 0 && !value.subject.system.HasPort(*port);
}

bool IsNotRegistered(const CheckedValue& value) {
  const Registration registration = RegistrationOf(value);
  return registration.is_needed && !registration.module_file;
}

bool IsRegisteredForMissingFile(const CheckedValue& value) {
  const auto file = NeededFile(RegistrationOf(value));
  return file && value.subject.system.KindOf(*file) != PathKind::kFile;
}

bool IsRegisteredForWrongBitness(const CheckedValue& value) {
  const Registration registration = RegistrationOf(value);
  const auto file = NeededFile(registration);
  return file && value.subject.system.KindOf(*file) == PathKind::kFile &&
         !registration.has_fitting_bits;
}

bool IsRegisteredForAnotherCopy(const CheckedValue& value) {
  const Registration registration = RegistrationOf(value);
  return NeededFile(registration) && registration.has_fitting_bits && !registration.is_own_copy &&
         value.subject.system.KindOf(*registration.module_file) == PathKind::kFile;
}

bool LacksSoundDevice(const CheckedValue& value) {
  return !value.subject.system.HasSoundDevice();
}

bool LacksMessengerLibrary(const CheckedValue& value) {
  return value.subject.system.Messenger() == MessengerState::kNoLibrary;
}

bool LacksMessengerService(const CheckedValue& value) {
  return value.subject.system.Messenger() == MessengerState::kNotInstalled;
}

bool HasStoppedMessenger(const CheckedValue& value) {
  return value.subject.system.Messenger() == MessengerState::kStopped;
}

bool LacksTelephony(const CheckedValue& value) {
  return value.subject.system.VoiceLine() == VoiceLineState::kNoTelephony;
}

bool LacksVoiceLine(const CheckedValue& value) {
  return value.subject.system.VoiceLine() == VoiceLineState::kNoVoiceLine;
}

bool HasRelayThatDoesNotGreet(const CheckedValue& value) {
  return !value.subject.system.RelayGreeting(value.text).starts_with("220");
}

bool HasPortThatDoesNotOpen(const CheckedValue& value) {
  return !ModemAnswer(value.subject);
}

bool HasModemThatDoesNotAnswer(const CheckedValue& value) {
  const auto answer = ModemAnswer(value.subject);
  return answer && answer->find("OK") == std::string::npos;
}

bool HasVoiceLineThatDoesNotOpen(const CheckedValue& value) {
  return !value.subject.system.ProbeVoiceLine();
}

}  // namespace brantel::host
