# 32-bit Windows, cross-built with mingw-w64 in the thread model that the preset names. The module and
# the host are built in the model "win32": the other one, "posix", links a thread library whose
# thread-local slot and handles stay behind each time a host unloads the module. Tests need "posix",
# since only that one has the standard threads that GoogleTest uses.
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES BRANTEL_THREAD_MODEL)
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86)
set(CMAKE_C_COMPILER i686-w64-mingw32-gcc-${BRANTEL_THREAD_MODEL})
set(CMAKE_CXX_COMPILER i686-w64-mingw32-g++-${BRANTEL_THREAD_MODEL})
set(CMAKE_RC_COMPILER i686-w64-mingw32-windres)
set(CMAKE_FIND_ROOT_PATH /usr/i686-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
