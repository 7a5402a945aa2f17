#include <cstdlib>

// The compiler's own handler writes the demangled name of the exception to standard error, which a
// host's process need not have, and the demangler and formatter behind it make up a third of the
// module's code. This one takes its place when the module is linked.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp): the name to replace
namespace __gnu_cxx {

void __verbose_terminate_handler();
void __verbose_terminate_handler() {
  std::abort();
}

}  // namespace __gnu_cxx
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
