// The numbers and the identifier by which hosts and the module's resources know Sound. Read by C++,
// by the resource compiler, and by the build, which makes registry script and type library from the
// first four.
#pragma once

#define SOUND_CLSID "A93D5106-D415-9AE1-2956-2D685A03A67B"
#define SOUND_REGISTRY_SCRIPT 113
#define SOUND_ICON 205
// Whether the registry key has the empty subkey "Programmable".
#define SOUND_PROGRAMMABLE 0

#define SOUND_DIALOG 206
#define SOUND_NAME 203
#define SOUND_FILENAME 212
#define SOUND_BROWSE 210
#define SOUND_RECORD 211
#define SOUND_CONTINUOUS_PLAY 213
