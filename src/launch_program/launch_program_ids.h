// The numbers and the identifier by which hosts and the module's resources know LaunchProgram. Read
// by C++, by the resource compiler, and by the build, which makes registry script and type library
// from the first four.
#pragma once

#define LAUNCH_PROGRAM_CLSID "313E5016-EB2E-F2DD-BDB6-184EFE00A5D3"
#define LAUNCH_PROGRAM_REGISTRY_SCRIPT 117
#define LAUNCH_PROGRAM_ICON 209
// Whether the registry key has the empty subkey "Programmable".
#define LAUNCH_PROGRAM_PROGRAMMABLE 0

#define LAUNCH_PROGRAM_DIALOG 118
#define LAUNCH_PROGRAM_NAME 218
#define LAUNCH_PROGRAM_FILENAME 219
#define LAUNCH_PROGRAM_BROWSE_FILENAME 221
#define LAUNCH_PROGRAM_WORKING_PATH 222
#define LAUNCH_PROGRAM_BROWSE_WORKING_PATH 223
#define LAUNCH_PROGRAM_ARGUMENTS 220
