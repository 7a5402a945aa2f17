// The numbers and the identifier by which hosts and the module's resources know Voice. Read by C++,
// by the resource compiler, and by the build, which makes registry script and type library from the
// first four.
#pragma once

#define VOICE_CLSID "DEE8A963-837B-D33C-C75D-B637B7CCFCA2"
#define VOICE_REGISTRY_SCRIPT 139
#define VOICE_ICON 217
// Whether the registry key has the empty subkey "Programmable".
#define VOICE_PROGRAMMABLE 0

#define VOICE_DIALOG 140
#define VOICE_NAME 223
#define VOICE_PHONE_NUMBER 219
#define VOICE_REPEAT_MESSAGE 220
#define VOICE_BROWSE_REPEAT_MESSAGE 221
#define VOICE_RECORD_REPEAT_MESSAGE 235
#define VOICE_COUNT 229
#define VOICE_BUTTON 230
#define VOICE_ITEM_DOWN 231
#define VOICE_BROWSE_ITEM_DOWN 222
#define VOICE_RECORD_ITEM_DOWN 236
#define VOICE_ITEM_UP 232
#define VOICE_BROWSE_ITEM_UP 225
#define VOICE_RECORD_ITEM_UP 237
#define VOICE_SERVICE_DOWN 233
#define VOICE_BROWSE_SERVICE_DOWN 224
#define VOICE_RECORD_SERVICE_DOWN 238
#define VOICE_SERVICE_UP 234
#define VOICE_BROWSE_SERVICE_UP 226
#define VOICE_RECORD_SERVICE_UP 239
