// The numbers and the identifier by which hosts and the module's resources know Beeper. Read by
// C++, by the resource compiler, and by the build, which makes registry script and type library
// from the first four.
#pragma once

#define BEEPER_CLSID "E0F08BCF-0BD9-3D64-842A-2FCEAE91F17E"
#define BEEPER_REGISTRY_SCRIPT 119
#define BEEPER_ICON 210
// Whether the registry key has the empty subkey "Programmable".
#define BEEPER_PROGRAMMABLE 0

#define BEEPER_DIALOG 120
#define BEEPER_NAME 223
#define BEEPER_NUMBER 218
#define BEEPER_DIALING_OPTIONS 219
#define BEEPER_MODEM_SETUP 251
#define BEEPER_PORT_SETTINGS 228
#define BEEPER_UP_CODE 220
#define BEEPER_DOWN_CODE 221
#define BEEPER_TRAP_CODE 222

#define BEEPER_SETTINGS_DIALOG 125
#define BEEPER_SETTING_DIAL_STRING 218
#define BEEPER_SETTING_MODEM_STRING 219
#define BEEPER_SETTING_TIMEOUT 220
