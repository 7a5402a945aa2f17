# Every target of this project builds without a warning under g++ and clang++. Targets of others, such
# as GoogleTest, are not judged.
add_library(warnings INTERFACE)
target_compile_options(warnings INTERFACE
  -Wall -Wextra -Wpedantic -Werror -Wconversion -Wsign-conversion -Wshadow -Wold-style-cast
  -Wcast-qual -Wformat=2 -Wundef -Woverloaded-virtual -Wimplicit-fallthrough)
if(NOT WIN32)
  # COM interfaces have no virtual destructor by their nature.
  target_compile_options(warnings INTERFACE -Wnon-virtual-dtor)
endif()
