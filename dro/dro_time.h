#pragma once

#include <cstdint>
#include <ctime>

#include "dro_string.h"

namespace dro {

// The clock and calendar of the OS library. No state is kept between calls, so any thread may call at any
// time.
//
// Calendar times are local. An output pointer may be null when its value is not wanted.
class droTime {
 public:
  // A date and time in parts.
  struct droDateTime {
    std::int32_t year = 0;       // full, such as 2014
    std::int32_t dayOfYear = 0;  // 1 to 366
    std::int32_t month = 0;      // 1 to 12
    std::int32_t day = 0;        // 1 to 31
    std::int32_t dayOfWeek = 0;  // 1 to 7, Sunday is 1
    std::int32_t hour = 0;       // 0 to 23
    std::int32_t minute = 0;     // 0 to 59
    std::int32_t second = 0;     // 60 in a leap second
  };

  // The step of a clock in minutes. Other numbers may be used as well.
  enum EMinutesStep : int {
    MinutesStep_1 = 1,
    MinutesStep_5 = 5,
    MinutesStep_10 = 10,
    MinutesStep_15 = 15,
    MinutesStep_30 = 30,
    MinutesStep_60 = 60,
  };

  // Milliseconds of the wall clock, which wrap at 32 bits, about every 49.7 days.
  static std::uint32_t GetTime();

  // The same count, sign-extended from 32 bits.
  static void GetHiResTime(unsigned long long* o_milliseconds);

  // Always 1000000, although GetHiResTime counts milliseconds, which is kept for compatibility: dividing by
  // it gives a thousandth of the seconds.
  static void GetTimePerSecond(unsigned long long* o_rate);

  // Seconds of the wall clock.
  static std::time_t GetCurrentTime();

  // The instant of a local date and time, -1 when the calendar cannot express it. A year below 1900 counts as
  // 1900; month and day count from 1.
  static std::time_t GetCustomTime(int year, int month, int day, int hour, int minute, int second);

  // The current time, such as "Tue Apr  8 10:15:02 2014".
  static droString GetDateTime();

  // The current time in parts. Unlike in droDateTime, the day of the year, the month and the day of the week
  // count from 0.
  static void GetDateTime(int* o_year, int* o_dayOfYear, int* o_month, int* o_day, int* o_dayOfWeek,
                          int* o_hour, int* o_minute, int* o_second);
  static void GetDateTime(droDateTime* o_now);

  // Milliseconds until the clock next shows a whole minute that is a multiple of `step`; a whole step if it
  // shows one right now. A step below 1 counts as 1; one above 60 waits for the full hour.
  static void GetRemainingTimeWithClock(unsigned long* o_milliseconds, EMinutesStep step);

  // Splits a number of seconds into hours, minutes and seconds.
  static void FormatSeconds(unsigned int total, unsigned int* o_hours, unsigned char* o_minutes,
                            unsigned char* o_seconds);
};

}  // namespace dro
