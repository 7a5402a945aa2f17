#pragma once

namespace brantel::host {

// "classes": lists the module's notifier classes.
struct ClassesCommand {};

// "register": enters the module's classes into the registry.
struct RegisterCommand {};

// "unregister": takes them out again.
struct UnregisterCommand {};

}  // namespace brantel::host
