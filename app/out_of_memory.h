#pragma once

#include <cstdio>

#include "tav_error.h"

// Without memory there is no building a full record; its first lines still say what happened. The exit
// status.
inline int PrintOutOfMemory() {
  std::fputs("tavError Number : 5\nOut of memory.\n", stdout);
  return tavon::tavError_OutOfMemory;
}
