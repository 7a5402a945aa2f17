# The module and the host run on any 32-bit Windows of their time and import system libraries alone, so
# the compiler's own libraries are linked in. What nobody calls is left out.
add_compile_definitions(WINVER=0x0501 _WIN32_WINNT=0x0501 WIN32_LEAN_AND_MEAN NOMINMAX)
add_compile_options(-g -ffunction-sections -fdata-sections)
add_link_options(-static -static-libgcc -static-libstdc++ -Wl,--gc-sections)

set(RELEASE_DIR "${CMAKE_SOURCE_DIR}/out/win32")

# Puts a stripped copy of the target's file into the release folder, with its symbols beside it.
function(release_stripped target)
  add_custom_command(TARGET ${target} POST_BUILD
    COMMAND ${CMAKE_COMMAND} -E make_directory "${RELEASE_DIR}"
    COMMAND ${CMAKE_OBJCOPY} --only-keep-debug "$<TARGET_FILE:${target}>"
            "${RELEASE_DIR}/$<TARGET_FILE_NAME:${target}>.debug"
    COMMAND ${CMAKE_OBJCOPY} --strip-all
            "--add-gnu-debuglink=${RELEASE_DIR}/$<TARGET_FILE_NAME:${target}>.debug"
            "$<TARGET_FILE:${target}>" "${RELEASE_DIR}/$<TARGET_FILE_NAME:${target}>"
    VERBATIM)
endfunction()
