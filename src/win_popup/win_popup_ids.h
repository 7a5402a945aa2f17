// The numbers and the identifier by which hosts and the module's resources know WinPopup. Read by
// C++, by the resource compiler, and by the build, which makes registry script and type library
// from the first four.
#pragma once

#define WIN_POPUP_CLSID "B28A7D4D-B389-C787-CCC0-A0F773C8FC73"
#define WIN_POPUP_REGISTRY_SCRIPT 115
#define WIN_POPUP_ICON 207
// Whether the registry key has the empty subkey "Programmable".
#define WIN_POPUP_PROGRAMMABLE 0

#define WIN_POPUP_DIALOG 116
#define WIN_POPUP_NAME 203
#define WIN_POPUP_DESTINATION 215
#define WIN_POPUP_MESSAGE 201
