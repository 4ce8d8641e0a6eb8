#include <nss.h>

#include <csignal>
#include <new>

#include "application.h"
#include "out_of_memory.h"

namespace {

// Has host names looked up in /etc/hosts and then at name servers, whatever /etc/nsswitch.conf says: these
// two services are part of the C library. Any other is a shared object, which a statically linked program
// cannot reliably load. This holds for the whole process, so it is not for the application to do.
void LookUpWithinTheCLibrary() {
  if (__nss_configure_lookup("hosts", "files dns") != 0) throw std::bad_alloc();  // it fails for nothing else
}

}  // namespace

int main(int argc, char** argv) {
  // Writing a record to a pipe that nobody reads, or to a file at its size limit, must not end the program:
  // the exit status still tells what happened.
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  try {
    Application application;
    const unsigned int status = application.Init(argc, argv);
    if (status != 0) return static_cast<int>(status);
    LookUpWithinTheCLibrary();
    return static_cast<int>(application.Execute());
  } catch (const std::bad_alloc&) {
    return PrintOutOfMemory();
  }
}
