// Controls that mean the same in every dialog. The first two numbers are the system's own: it turns
// the Enter and Escape keys into presses of them. Read by C++ and by the resource compiler.
#pragma once

#define STANDARD_OK 1
#define STANDARD_CANCEL 2
#define STANDARD_HELP 9
