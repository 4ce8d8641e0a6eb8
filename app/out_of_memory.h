#pragma once

#include <cstdio>

#include "tav_error.h"

// Prints the first lines of the record, which say what happened: a whole one cannot be built without memory.
// Returns the exit status.
inline int PrintOutOfMemory() {
  std::fputs("tavError Number : 5\nOut of memory.\n", stdout);
  return tavon::tavError_OutOfMemory;
}
