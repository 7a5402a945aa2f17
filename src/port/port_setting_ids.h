// The radio buttons that the port settings of all classes have. Read by C++ and by the resource
// compiler.
#pragma once

#define PORT_COM_1 227
#define PORT_COM_2 228
#define PORT_COM_3 229
#define PORT_COM_4 230
#define PORT_BAUD_300 224
#define PORT_BAUD_1200 225
#define PORT_BAUD_2400 226
