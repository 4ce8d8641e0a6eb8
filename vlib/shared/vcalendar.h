#pragma once

#include <array>
#include <ctime>

// Local calendar time for the clock classes tavTime and droTime, and for the date of a record.
//
// Any thread may call at any time: a lock guards the C library's data about the time zone.
namespace vlib {

// The local date and time of an instant, in the time zone that the machine has now. All fields are zero when
// the calendar cannot express the instant.
std::tm LocalTime(std::time_t instant);

// A date and time as text, terminated.
using TimeText = std::array<char, 64>;

// The local date and time as text, such as "Tue Apr  8 10:15:02 2014". Needs no memory, since the records of
// a log begin with it.
TimeText LocalTimeText(std::time_t instant);

// The parts of the local time `now`; a pointer may be null when its part is not wanted. The year is full; day
// of the year, month and day of the week (0 is Sunday) count from 0, the day of the month from 1.
void StoreLocalTime(std::time_t now, int* o_year, int* o_yearDay, int* o_month, int* o_monthDay,
                    int* o_weekDay, int* o_hour, int* o_minute, int* o_second);

// The instant of a local date and time. Month and day count from 1; a year below 1900 counts as 1900; the
// calendar decides whether daylight saving time is in force.
std::time_t InstantOf(int year, int month, int day, int hour, int minute, int second);

// Splits a number of seconds; a pointer may be null when its part is not wanted.
template <class Seconds>
void SplitSeconds(Seconds total, Seconds* o_hours, unsigned char* o_minutes, unsigned char* o_seconds) {
  if (o_hours != nullptr) *o_hours = total / 3600;
  if (o_minutes != nullptr) *o_minutes = static_cast<unsigned char>(total % 3600 / 60);
  if (o_seconds != nullptr) *o_seconds = static_cast<unsigned char>(total % 60);
}

}  // namespace vlib
