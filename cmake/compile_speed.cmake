# What makes the sources compile in less time without a change of what they become. With BRANTEL_ALONE each
# source is compiled alone instead, as it is in the preset "native" and for the lint: that shows that it
# includes what it uses.
option(BRANTEL_ALONE "Compile each source alone, without precompiled headers" OFF)
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND NOT BRANTEL_ALONE)
  # The compiler cache needs it for them.
  add_compile_options(-fpch-preprocess)
endif()

# The standard headers that nearly every source includes.
set(standard_headers
  <algorithm> <array> <cstdint> <functional> <map> <memory> <optional> <span> <string> <string_view>
  <utility> <vector>)

# A library that has nothing but precompiled headers, for targets that are compiled with the same options.
function(add_precompiled_headers name)
  set(empty_source "${CMAKE_BINARY_DIR}/empty.cpp")
  file(CONFIGURE OUTPUT "${empty_source}" CONTENT "")
  add_library(${name} OBJECT "${empty_source}")
  target_link_libraries(${name} PRIVATE warnings)
  target_precompile_headers(${name} PRIVATE ${standard_headers} ${ARGN})
endfunction()

# Gives the standard headers to all targets of a folder and those in it that have several sources.
function(precompile_standard_headers folder)
  if(BRANTEL_ALONE)
    return()
  endif()
  if(NOT TARGET precompiled_standard_headers)
    add_precompiled_headers(precompiled_standard_headers)
  endif()
  get_property(targets DIRECTORY "${folder}" PROPERTY BUILDSYSTEM_TARGETS)
  foreach(target IN LISTS targets)
    get_target_property(sources ${target} SOURCES)
    list(FILTER sources INCLUDE REGEX "\\.cpp$")
    list(LENGTH sources source_count)
    if(source_count GREATER 1)
      target_precompile_headers(${target} REUSE_FROM precompiled_standard_headers)
    endif()
  endforeach()
  get_property(subfolders DIRECTORY "${folder}" PROPERTY SUBDIRECTORIES)
  foreach(subfolder IN LISTS subfolders)
    precompile_standard_headers("${subfolder}")
  endforeach()
endfunction()

# compile_as_tests(TARGET [HEADERS HEADER...|HEADERS_OF OTHER]): for a program or library of tests. Only what it
# tests is worth optimizing, and a line number is all that anybody needs to know of a test that failed. The
# headers are precompiled beside those of GoogleTest; or those of another such target are taken.
function(compile_as_tests target)
  cmake_parse_arguments(PARSE_ARGV 1 with "" HEADERS_OF HEADERS)
  if(WIN32)
    target_compile_options(${target} PRIVATE -O0 -fno-function-sections -fno-data-sections)
  else()
    target_compile_options(${target} PRIVATE -O0 -g1)
  endif()
  if(BRANTEL_SANITIZE)
    # Fuzzers are to look for ways through what is tested alone, and what is undefined is to be found there.
    target_compile_options(${target} PRIVATE -fno-sanitize=fuzzer-no-link,undefined)
  endif()
  if(BRANTEL_ALONE)
    return()
  endif()
  if(with_HEADERS_OF)
    target_precompile_headers(${target} REUSE_FROM ${with_HEADERS_OF})
  else()
    target_precompile_headers(${target} PRIVATE
      ${standard_headers} <gmock/gmock.h> <gtest/gtest.h> ${with_HEADERS})
  endif()
  compile_folders_at_once(${target})
endfunction()

# Compiles what lies in one folder at once, which takes most of its time for the same headers and templates. But six
# files at most, since the assembler for Windows takes four times as long for twice as much. Left alone is what has
# options of its own or is COMPILED_ALONE, what is compiled together with others already, and the main function, which
# not all programs take from a library.
function(compile_folders_at_once target)
  if(BRANTEL_ALONE)
    return()
  endif()
  get_target_property(folder ${target} SOURCE_DIR)
  get_target_property(sources ${target} SOURCES)
  set(groups "")
  foreach(source IN LISTS sources)
    cmake_path(ABSOLUTE_PATH source BASE_DIRECTORY "${folder}")
    get_source_file_property(definitions "${source}" COMPILE_DEFINITIONS)
    get_source_file_property(options "${source}" COMPILE_OPTIONS)
    get_source_file_property(is_included "${source}" HEADER_FILE_ONLY)
    get_source_file_property(is_alone "${source}" COMPILED_ALONE)
    if(NOT definitions AND NOT options AND NOT is_included AND NOT is_alone
        AND NOT source MATCHES "/main\\.cpp$|_at_once/")
      cmake_path(GET source PARENT_PATH group)
      cmake_path(RELATIVE_PATH group BASE_DIRECTORY "${CMAKE_SOURCE_DIR}")
      list(APPEND groups "${group}")
      list(APPEND "sources_of_${group}" "${source}")
    endif()
  endforeach()
  list(REMOVE_DUPLICATES groups)
  foreach(group IN LISTS groups)
    list(LENGTH "sources_of_${group}" count)
    foreach(first RANGE 1 ${count} 6)
      math(EXPR first "${first} - 1")
      list(SUBLIST "sources_of_${group}" ${first} 6 sources)
      compile_at_once(${target} "${group}/${first}" "${sources}")
    endforeach()
  endforeach()
endfunction()

# Compiles those sources of the target at once that include this header, which is of a library of templates that is
# slow to compile, or includes one of those. For the sanitizers it is not optimized: that takes half of the time.
function(compile_together target header)
  if(BRANTEL_ALONE)
    return()
  endif()
  get_target_property(folder ${target} SOURCE_DIR)
  get_target_property(sources ${target} SOURCES)
  set(including "")
  foreach(source IN LISTS sources)
    cmake_path(ABSOLUTE_PATH source BASE_DIRECTORY "${folder}")
    file(STRINGS "${source}" found REGEX "^#include [<\"](${header})[>\"]")
    if(found)
      list(APPEND including "${source}")
    endif()
  endforeach()
  compile_at_once(${target} "${header}" "${including}")
  if(BRANTEL_SANITIZE)
    # What is precompiled is optimized.
    set_source_files_properties("${together}" PROPERTIES COMPILE_OPTIONS -O0 SKIP_PRECOMPILE_HEADERS ON)
  endif()
endfunction()

# compile_at_once(TARGET GROUP SOURCES): compiles a file that includes these, and sets "together" to its path. CMake
# would do the same on request, but name the sources by the path of the checkout, so that no other one had use for
# what is compiled.
function(compile_at_once target group sources)
  set(includes "")
  foreach(source IN LISTS sources)
    cmake_path(RELATIVE_PATH source BASE_DIRECTORY "${CMAKE_SOURCE_DIR}" OUTPUT_VARIABLE name)
    string(APPEND includes "#include \"${name}\"\n")
    set_source_files_properties("${source}" PROPERTIES HEADER_FILE_ONLY ON)
  endforeach()
  string(MAKE_C_IDENTIFIER "${group}" name)
  set(together "${CMAKE_CURRENT_BINARY_DIR}/${target}_at_once/${name}.cpp")
  file(CONFIGURE OUTPUT "${together}" CONTENT "${includes}" @ONLY)
  target_sources(${target} PRIVATE "${together}")
  set_source_files_properties("${together}" PROPERTIES INCLUDE_DIRECTORIES "${CMAKE_SOURCE_DIR}")
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    # In what is included, other than in a source, g++ warns of classes with members of unnamed namespaces.
    set_source_files_properties("${together}" PROPERTIES COMPILE_OPTIONS -Wno-subobject-linkage)
  endif()
  set(together "${together}" PARENT_SCOPE)
endfunction()
