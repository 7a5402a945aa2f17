# add_room(NAME [USES ROOM...] [SYSTEM LIBRARY...] [APART FILE...])
#
# A library of all sources in the current folder, so that a new file is built without being listed. Those
# named *_win32.cpp are built for Windows alone, with the system's libraries. Files that stand APART belong
# to targets of their own.
function(add_room name)
  cmake_parse_arguments(PARSE_ARGV 1 room "" "" "USES;SYSTEM;APART")
  file(GLOB sources RELATIVE "${CMAKE_CURRENT_SOURCE_DIR}" CONFIGURE_DEPENDS *.cpp)
  if(room_APART)
    list(REMOVE_ITEM sources ${room_APART})
  endif()
  if(NOT WIN32)
    list(FILTER sources EXCLUDE REGEX "_win32\\.cpp$")
  endif()
  add_library(${name} STATIC ${sources})
  target_include_directories(${name} PUBLIC "${CMAKE_SOURCE_DIR}/src")
  target_link_libraries(${name} PUBLIC ${room_USES} PRIVATE warnings)
  if(WIN32)
    target_link_libraries(${name} PRIVATE ${room_SYSTEM})
  endif()
endfunction()
