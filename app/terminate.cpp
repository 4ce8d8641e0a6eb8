#include <cstdio>
#include <cstdlib>
#include <exception>

#include "out_of_memory.h"

// What the runtime does when an exception finds no handler. Its own version prints the exception's type, for
// which it carries a demangler: a third of the program, in memory at every event and called at none, since
// main handles what can be thrown. What it cannot handle is memory so short that there is none for the
// exception itself: that ends here, without one, and as main would end it.
namespace __gnu_cxx {
void __verbose_terminate_handler() {
  if (std::current_exception() != nullptr) std::abort();
  const int status = PrintOutOfMemory();
  std::fflush(stdout);
  std::_Exit(status);
}
}  // namespace __gnu_cxx
