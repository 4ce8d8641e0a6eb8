#pragma once

// The wall clock of the system, in milliseconds and microseconds. It jumps when the machine's time is set.
//
// All values are those of a 32-bit machine, whatever the build. There is no state, so any thread may call.
class VTime {
 public:
  // Milliseconds since 1970 modulo 2^32, which wrap about every 49.7 days. Compare two times by their
  // difference in unsigned 32-bit arithmetic, which stays correct across the wrap.
  static unsigned long Time();

  // The time in two parts: seconds since 1970 modulo 2^32, and the microseconds within that second. A pointer
  // may be null when its part is not wanted.
  static void Time(unsigned long* o_seconds, long* o_microseconds);

  // Microseconds since 1970, in full 64 bits.
  static unsigned long long TimeUS();
};
