#include "host/commands/module_commands.h"

namespace brantel::host {

const CommandSyntax ClassesCommand::kSyntax = {
    "classes", ModuleUse::kModule, "List the classes and whether they are registered",
    "  notifyhost classes\n"
    "  notifyhost classes --module C:\\Module\\Brantel_Notifications.dll"};

const CommandSyntax RegisterCommand::kSyntax = {
    "register", ModuleUse::kModule, "Register the classes with the system",
    "  notifyhost register\n"
    "  notifyhost register --module C:\\Module\\Brantel_Notifications.dll"};

const CommandSyntax UnregisterCommand::kSyntax = {
    "unregister", ModuleUse::kModule, "Undo the registration",
    "  notifyhost unregister\n"
    "  notifyhost unregister --module C:\\Module\\Brantel_Notifications.dll"};

}  // namespace brantel::host
