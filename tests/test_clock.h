#pragma once

#include <chrono>
#include <ctime>

// The wall clock of the test program beneath the libraries, for tests that need an hour to pass.
//
// While a TestClock lives, time stands still where the test set it: the C library's clock functions tell that
// time, and a thread that waits for a moment (on a condition variable of its own) sleeps until the test sets
// the clock to it. Without one it is the machine's clock. GoogleTest and <chrono> keep to the machine's.
//
//   TestClock clock(TestClock::Utc(2014, 4, 8, 10, 59, 58));
//   ...                         // an object that looks at the clock ten times a second starts its thread
//   clock.AwaitSleepers(1);     // it has looked, and waits for a tenth of a second to pass
//   clock.Advance(1s);          // wakes it
//   clock.AwaitSleepers(1);     // it has seen the new time and done what is due
class TestClock {
 public:
  using Moment = std::chrono::microseconds;  // since 1970

  static Moment Utc(int year, int month, int day, int hour, int minute, int second);

  explicit TestClock(Moment moment);
  // Threads that still sleep come out as if their time had come.
  ~TestClock();
  TestClock(const TestClock&) = delete;
  TestClock& operator=(const TestClock&) = delete;

  // Lets time pass, and returns when every thread that waited for a moment up to the new one is awake.
  void Advance(std::chrono::microseconds time);

  // Sets the clock as somebody does by hand, forward or back, and returns when every sleeping thread is
  // awake, whatever it waited for: it finds that its time has come, and the clock where it was set.
  void JumpTo(Moment moment);

  // Returns when exactly that many threads wait for a moment that is yet to come. After half a minute the
  // test fails at the line of the call.
  static void AwaitSleepers(int threads, const char* file = __builtin_FILE(), int line = __builtin_LINE());
};
