# The module and the host run on any Windows of their time and import system libraries alone, so the
# compiler's own libraries are linked in. What nobody calls is left out.

# The least Windows that the sources need. The standard headers of newer compilers need more themselves.
set(least_windows 0x0501)
if(CMAKE_CXX_COMPILER_VERSION VERSION_GREATER_EQUAL 13)
  set(least_windows 0x0600)
endif()
add_compile_definitions(WINVER=${least_windows} _WIN32_WINNT=${least_windows} WIN32_LEAN_AND_MEAN NOMINMAX)
add_compile_options(-ffunction-sections -fdata-sections)
add_link_options(-static -static-libgcc -static-libstdc++ -Wl,--gc-sections)
if(BRANTEL_RELEASE)
  # Functions and lines, by which the place of a crash is found. All about variables besides takes as long again.
  add_compile_options(-g1)
  # The same commit gives the same files, wherever and whenever it is built, with the compiler cache or without: that
  # names sources by their way from the build folder, and changes the order of options.
  add_compile_options("-ffile-prefix-map=${CMAKE_SOURCE_DIR}=." "-ffile-prefix-map=../..=."
    -gno-record-gcc-switches)
  add_link_options(-Wl,--no-insert-timestamp)
else()
  # Of the tests here nobody reads debug information, and the linker that g++ knows takes long over sections.
  add_link_options(-fno-use-linker-plugin "SHELL:-wrapper \"${CMAKE_SOURCE_DIR}/tools/lib/link_with_lld\"")
endif()

if(CMAKE_SIZEOF_VOID_P EQUAL 8)
  set(RELEASE_DIR "${CMAKE_SOURCE_DIR}/out/win64")
else()
  set(RELEASE_DIR "${CMAKE_SOURCE_DIR}/out/win32")
endif()

# Puts a stripped copy of the target's file into the release folder, with its symbols beside it.
function(release_stripped target)
  # The linker's own list of what it has put in, by which the notices of others are found.
  target_link_options(${target} PRIVATE "-Wl,-Map=$<TARGET_FILE:${target}>.map")
  # The time in a program's header would be the present one.
  set(copy ${CMAKE_COMMAND} -E env SOURCE_DATE_EPOCH=0 ${CMAKE_OBJCOPY})
  add_custom_command(TARGET ${target} POST_BUILD
    COMMAND ${CMAKE_COMMAND} -E make_directory "${RELEASE_DIR}"
    COMMAND ${copy} --only-keep-debug "$<TARGET_FILE:${target}>"
            "${RELEASE_DIR}/$<TARGET_FILE_NAME:${target}>.debug"
    COMMAND ${copy} --strip-all
            "--add-gnu-debuglink=${RELEASE_DIR}/$<TARGET_FILE_NAME:${target}>.debug"
            "$<TARGET_FILE:${target}>" "${RELEASE_DIR}/$<TARGET_FILE_NAME:${target}>"
    VERBATIM)
endfunction()
