#include "dro_time.h"

#include <algorithm>

#include "shared/vcalendar.h"
#include "vtime.h"

namespace dro {

std::uint32_t droTime::GetTime() { return static_cast<std::uint32_t>(VTime::Time()); }

void droTime::GetHiResTime(unsigned long long* o_milliseconds) {
  if (o_milliseconds == nullptr) return;
  const std::int64_t extended = static_cast<std::int32_t>(GetTime());
  *o_milliseconds = static_cast<unsigned long long>(extended);
}

void droTime::GetTimePerSecond(unsigned long long* o_rate) {
  if (o_rate != nullptr) *o_rate = 1000000;
}

std::time_t droTime::GetCurrentTime() { return time(nullptr); }

std::time_t droTime::GetCustomTime(int year, int month, int day, int hour, int minute, int second) {
  return vlib::InstantOf(year, month, day, hour, minute, second);
}

droString droTime::GetDateTime() { return vlib::LocalTimeText(GetCurrentTime()).data(); }

void droTime::GetDateTime(int* o_year, int* o_dayOfYear, int* o_month, int* o_day, int* o_dayOfWeek,
                          int* o_hour, int* o_minute, int* o_second) {
  vlib::StoreLocalTime(GetCurrentTime(), o_year, o_dayOfYear, o_month, o_day, o_dayOfWeek, o_hour, o_minute,
                       o_second);
}

void droTime::GetDateTime(droDateTime* o_now) {
  if (o_now == nullptr) return;
  GetDateTime(&o_now->year, &o_now->dayOfYear, &o_now->month, &o_now->day, &o_now->dayOfWeek, &o_now->hour,
              &o_now->minute, &o_now->second);
  ++o_now->dayOfYear;
  ++o_now->month;
  ++o_now->dayOfWeek;
}

void droTime::GetRemainingTimeWithClock(unsigned long* o_milliseconds, EMinutesStep step) {
  if (o_milliseconds == nullptr) return;
  const int stepMinutes = std::max<int>(step, 1);
  const std::time_t now = GetCurrentTime();
  const int second = vlib::LocalTime(now).tm_sec;
  std::time_t target = second == 0 ? now : now + 60 - second;
  // Ends with minute 0 at the latest, which is a multiple of every step.
  while (vlib::LocalTime(target).tm_min % stepMinutes != 0) target += 60;
  const auto remaining = static_cast<std::uint32_t>(target - now) * 1000U;
  *o_milliseconds = remaining != 0 ? remaining : static_cast<std::uint32_t>(stepMinutes) * 60000U;
}

void droTime::FormatSeconds(unsigned int total, unsigned int* o_hours, unsigned char* o_minutes,
                            unsigned char* o_seconds) {
  vlib::SplitSeconds(total, o_hours, o_minutes, o_seconds);
}

}  // namespace dro
