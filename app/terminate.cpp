#include <cstdlib>
#include <exception>

#include "out_of_memory.h"

// Called when an exception finds no handler. The runtime's own version prints the exception's type and
// carries a demangler for that; main handles everything that can be thrown. What it cannot handle is a
// shortage so severe that there is no memory for the exception itself: the program then ends here, in the way
// main would end it.
namespace __gnu_cxx {
void __verbose_terminate_handler() {
  if (std::current_exception() != nullptr) std::abort();
  std::exit(PrintOutOfMemory());  // NOLINT(concurrency-mt-unsafe): the program has one thread
}
}  // namespace __gnu_cxx
