# 64-bit Windows.
set(MINGW_TARGET x86_64-w64-mingw32)
set(CMAKE_SYSTEM_PROCESSOR AMD64)
include("${CMAKE_CURRENT_LIST_DIR}/mingw.cmake")
