# Windows, cross-built with mingw-w64 for the computers that MINGW_TARGET names, in the thread model that the
# preset names. The module and the host are built in the model "win32": the other one, "posix", links a thread
# library whose thread-local slot and handles stay behind each time a host unloads the module. Tests need
# "posix", since only that one has the standard threads that GoogleTest uses.
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES BRANTEL_THREAD_MODEL)
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_C_COMPILER ${MINGW_TARGET}-gcc-${BRANTEL_THREAD_MODEL})
set(CMAKE_CXX_COMPILER ${MINGW_TARGET}-g++-${BRANTEL_THREAD_MODEL})
set(CMAKE_RC_COMPILER ${MINGW_TARGET}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${MINGW_TARGET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
