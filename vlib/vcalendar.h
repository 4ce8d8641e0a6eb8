#pragma once

#include <ctime>
#include <string>

// Local calendar time for the clock classes of both libraries. Internal to them.
//
// Any thread may ask at any time: the C library's data on the zone is used under a lock.
namespace vlib {

// The local date and time of an instant. A change of the machine's time zone is noticed. An instant that the
// calendar cannot express gives all fields zero.
std::tm LocalTime(std::time_t instant);

// The same as text, such as "Tue Apr  8 10:15:02 2014" with a line feed at its end.
std::string LocalTimeText(std::time_t instant);

// The parts of the local time `now`, each written where its pointer is not null. The year is full; day of the
// year, month and day of the week (0 is Sunday) count from 0, the day of the month from 1.
void StoreLocalTime(std::time_t now, int* year, int* yearDay, int* month, int* monthDay, int* weekDay,
                    int* hour, int* minute, int* second);

// The instant of a local date and time. Month and day count from 1; a year below 1900 counts as 1900; whether
// daylight saving is in force is left to the calendar.
std::time_t InstantOf(int year, int month, int day, int hour, int minute, int second);

// Splits a number of seconds; each part is written where its pointer is not null.
template <class Seconds>
void SplitSeconds(Seconds total, Seconds* hours, unsigned char* minutes, unsigned char* seconds) {
  if (hours != nullptr) *hours = total / 3600;
  if (minutes != nullptr) *minutes = static_cast<unsigned char>(total % 3600 / 60);
  if (seconds != nullptr) *seconds = static_cast<unsigned char>(total % 60);
}

}  // namespace vlib
