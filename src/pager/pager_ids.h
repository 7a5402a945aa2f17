// The numbers and the identifier by which hosts and the module's resources know Pager. Read by C++,
// by the resource compiler, and by the build, which makes registry script and type library from the
// first four.
#pragma once

#define PAGER_CLSID "2669D42E-142D-8B34-EAC1-28B07EB3EABA"
#define PAGER_REGISTRY_SCRIPT 136
#define PAGER_ICON 211
// Whether the registry key has the empty subkey "Programmable".
#define PAGER_PROGRAMMABLE 0

#define PAGER_DIALOG 137
#define PAGER_NAME 222
#define PAGER_NUMBER 218
#define PAGER_PASSWORD 219
#define PAGER_ID 220
#define PAGER_MESSAGE 221
#define PAGER_MODEM_SETUP 251
#define PAGER_PORT_SETTINGS 234
#define PAGER_TAP 231
#define PAGER_SMS_TAP 232
#define PAGER_NTT 233
#define PAGER_UCP_SMS 235

#define PAGER_SETTINGS_DIALOG 138
#define PAGER_SETTING_MODEM_STRING 219
#define PAGER_SETTING_8N1 235
