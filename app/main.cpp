#include <csignal>
#include <new>

#include "application.h"
#include "out_of_memory.h"

int main(int argc, char** argv) {
  // Writing a record to a pipe that nobody reads, or to a file at its size limit, must not end the program:
  // the exit status still tells what happened.
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  try {
    Application application;
    const unsigned int status = application.Init(argc, argv);
    return static_cast<int>(status != 0 ? status : application.Execute());
  } catch (const std::bad_alloc&) {
    return PrintOutOfMemory();
  }
}
