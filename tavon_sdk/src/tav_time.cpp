#include "tav_time.h"

#include "shared/vcalendar.h"
#include "vtime.h"

namespace tavon {

tavString tavTime::GetDateTime() {
  return tavString(vlib::LocalTimeText(GetCurrentTime()).data()).append("\n");
}

void tavTime::GetDateTime(int* o_year, int* o_yearDay, int* o_month, int* o_monthDay, int* o_weekDay,
                          int* o_hour, int* o_minute, int* o_second) {
  vlib::StoreLocalTime(GetCurrentTime(), o_year, o_yearDay, o_month, o_monthDay, o_weekDay, o_hour, o_minute,
                       o_second);
}

std::time_t tavTime::GetCurrentTime() { return std::time(nullptr); }

std::time_t tavTime::GetCustomTime(int year, int month, int day, int hour, int minute, int second) {
  return vlib::InstantOf(year, month, day, hour, minute, second);
}

void tavTime::FormatSeconds(unsigned long total, unsigned long* o_hours, unsigned char* o_minutes,
                            unsigned char* o_seconds) {
  vlib::SplitSeconds(total, o_hours, o_minutes, o_seconds);
}

void tavTime::GetTime(unsigned long* o_seconds, long* o_microseconds) {
  VTime::Time(o_seconds, o_microseconds);
}

unsigned long tavTime::GetTime() { return VTime::Time(); }

}  // namespace tavon
