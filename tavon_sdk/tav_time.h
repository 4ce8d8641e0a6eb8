#pragma once

#include <ctime>

#include "tav_string.h"

namespace tavon {

// The SDK's clock and calendar, all static. Every operation may be called from any thread.
class tavTime {
 public:
  // The local date and time as text, such as "Tue Apr  8 10:15:02 2014", followed by a line feed.
  static tavString GetDateTime();

  // The parts of the local date and time, all of the same instant. Null pointers are skipped. The year has
  // four digits. Day of the year (0 to 365), month (0 to 11) and day of the week (0 is Sunday) count from 0,
  // the day of the month counts from 1.
  static void GetDateTime(int* o_year, int* o_yearDay, int* o_month, int* o_monthDay, int* o_weekDay,
                          int* o_hour, int* o_minute, int* o_second);

  // Seconds since the epoch.
  static std::time_t GetCurrentTime();

  // The instant of a local date and time, in seconds since the epoch. The month counts from 1 here; a year
  // below 1900 counts as 1900.
  static std::time_t GetCustomTime(int year, int month, int day, int hour, int minute, int second);

  // Splits a number of seconds into hours, minutes and seconds. Null pointers are skipped.
  static void FormatSeconds(unsigned long total, unsigned long* o_hours, unsigned char* o_minutes,
                            unsigned char* o_seconds);

  // The wall clock: seconds and microseconds since the epoch, each in 32 bits.
  static void GetTime(unsigned long* o_seconds, long* o_microseconds);

  // The wall clock in milliseconds, in 32 bits. It wraps every 49.7 days, so take differences in unsigned
  // 32-bit arithmetic.
  static unsigned long GetTime();
};

}  // namespace tavon
