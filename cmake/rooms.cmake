# add_room(NAME [PARTS FOLDER...] [USES ROOM...] [SYSTEM LIBRARY...] [APART FILE...])
#
# A library of all sources in the current folder and in those that are its parts, so that a new file is built
# without being listed. Parts are listed from the ground up: each sees those before it, and the room's own
# folder sees them all. Sources named *_win32.cpp are built for Windows alone, with the system's libraries.
# Files that stand APART belong to targets of their own.
function(add_room name)
  cmake_parse_arguments(PARSE_ARGV 1 room "" "" "PARTS;USES;SYSTEM;APART")
  set(patterns *.cpp)
  foreach(part IN LISTS room_PARTS)
    list(APPEND patterns ${part}/*.cpp)
  endforeach()
  file(GLOB sources RELATIVE "${CMAKE_CURRENT_SOURCE_DIR}" CONFIGURE_DEPENDS ${patterns})
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
  compile_folders_at_once(${name})
endfunction()
