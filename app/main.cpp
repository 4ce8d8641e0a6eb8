#include <cstdio>
#include <new>

#include "application.h"

int main(int argc, char** argv) {
  try {
    Application application;
    const unsigned int status = application.Init(argc, argv);
    return static_cast<int>(status != 0 ? status : application.Execute());
  } catch (const std::bad_alloc&) {
    // Without memory there is no building a full record; its first lines still say what happened.
    std::fputs("tavError Number : 5\nOut of memory.\n", stdout);
    return tavon::tavError_OutOfMemory;
  }
}
