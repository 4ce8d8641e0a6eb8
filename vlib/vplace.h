#pragma once

namespace vlib {

// Where a failure is found: the line and the function that its record names.
//
// As a defaulted last argument it is the place of the call, also through helpers that hand it on:
//
//   void Report(const char* message, vlib::Place place = {});
//
// A published line is passed as {113}, and keeps the function of the call.
struct Place {
  // Of the source, or published: people search their logs for that number.
  int line = __builtin_LINE();
  // Without class and arguments.
  const char* function = __builtin_FUNCTION();
};

}  // namespace vlib
