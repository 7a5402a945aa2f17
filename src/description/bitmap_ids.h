// The pictures of bitmap buttons, by their numbers in the module's resources. Read by the resource
// compiler too, which knows no other constants.
#pragma once

#define BITMAP_BROWSE 301
#define BITMAP_RECORD 302
