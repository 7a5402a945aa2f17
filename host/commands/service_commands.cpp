#include "host/commands/service_commands.h"

#include <CLI/CLI.hpp>

#include "host/commands/shared_arguments.h"

namespace brantel::host {
namespace {

constexpr const char* kPlan = "What is watched, how, and who is told: a TOML file";

}  // namespace

const CommandSyntax ServiceInstallCommand::kSyntax = {
    "service install", ModuleUse::kModule, ReportUse::kReport, "Have Windows run a watch",
    "  notifyhost service install C:\\Watch\\night.toml\n"
    "  notifyhost service start"};

const CommandSyntax ServiceRemoveCommand::kSyntax = {
    "service remove", ModuleUse::kNone, ReportUse::kReport, "Have Windows run it no more",
    "  notifyhost service remove"};

const CommandSyntax ServiceStartCommand::kSyntax = {"service start", ModuleUse::kNone,
                                                    ReportUse::kReport, "Start the service now",
                                                    "  notifyhost service start"};

const CommandSyntax ServiceStopCommand::kSyntax = {"service stop", ModuleUse::kNone,
                                                   ReportUse::kReport, "Stop the service",
                                                   "  notifyhost service stop"};

const CommandSyntax ServiceRunCommand::kSyntax = {
    "service run", ModuleUse::kModule, ReportUse::kReport,
    "Be the service, when Windows asks for it", "  notifyhost service run C:\\Watch\\night.toml"};

void DeclareArguments(CLI::App& parser, ServiceInstallCommand& command) {
  DeclareFile(parser, command.file, kPlan);
}
void DeclareArguments(CLI::App&, ServiceRemoveCommand&) {}
void DeclareArguments(CLI::App&, ServiceStartCommand&) {}
void DeclareArguments(CLI::App&, ServiceStopCommand&) {}
void DeclareArguments(CLI::App& parser, ServiceRunCommand& command) {
  DeclareFile(parser, command.file, kPlan);
}

}  // namespace brantel::host
